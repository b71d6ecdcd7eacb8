// Halving a plane in MMX.
#include "lanes/eight_bytes.h"

namespace rux::m6 {
namespace {

// Neighbours of a row added, each sum in a word.
inline __m64 sumOfPairs(const uint8_t* row)
{
    const __m64 bytes = load<__m64>(row);
    return _mm_add_pi16(_mm_and_si64(bytes, _mm_set1_pi16(255)), _mm_srli_pi16(bytes, 8));
}

inline __m64 means(const uint8_t* upper, const uint8_t* lower)
{
    const __m64 sums = _mm_add_pi16(sumOfPairs(upper), sumOfPairs(lower));
    return _mm_srli_pi16(_mm_add_pi16(sums, _mm_set1_pi16(3)), 2);
}

}
}

#include "video/sample_down_mmx.h"
