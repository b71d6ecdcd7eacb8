// Halving a plane in MMX with the word average of SSE.
//
// (sum + 3) >> 2 is the sum's quarter rounded up, which is the half rounded up of its half rounded up.
#include <xmmintrin.h>

#include "lanes/eight_bytes.h"

namespace rux::a6 {
namespace {

// Neighbours of a row added, each sum in a word.
inline __m64 sumOfPairs(const uint8_t* row)
{
    const __m64 bytes = load<__m64>(row);
    return _mm_add_pi16(_mm_and_si64(bytes, _mm_set1_pi16(255)), _mm_srli_pi16(bytes, 8));
}

inline __m64 means(const uint8_t* upper, const uint8_t* lower)
{
    return _mm_avg_pu16(_mm_avg_pu16(sumOfPairs(upper), sumOfPairs(lower)), _mm_setzero_si64());
}

}
}

#include "video/sample_down_mmx.h"
