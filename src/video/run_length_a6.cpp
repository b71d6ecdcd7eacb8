// Run-length encoding, four coefficients in an MMX register by the word insertion of SSE.
#include <xmmintrin.h>

#include "frame/mmx_state.h"
#include "video/run_length.h"

namespace rux::a6 {
namespace {

template <int lane, int32_t k>
inline __m64 inserted(__m64 words, const int16_t* block, const int32_t* scanTable)
{
    return k == 0 ? words : _mm_insert_pi16(words, coefficient(block, scanTable, k), lane);
}

// Words of all bits set where one of four coefficients is 0.
template <int32_t k>
inline __m64 zerosOfFour(const int16_t* block, const int32_t* scanTable)
{
    __m64 words = _mm_setzero_si64();
    words = inserted<0, k>(words, block, scanTable);
    words = inserted<1, k + 1>(words, block, scanTable);
    words = inserted<2, k + 2>(words, block, scanTable);
    words = inserted<3, k + 3>(words, block, scanTable);
    return _mm_cmpeq_pi16(words, _mm_setzero_si64());
}

template <int32_t k>
inline uint32_t zerosOfEight(const int16_t* block, const int32_t* scanTable)
{
    return static_cast<uint32_t>(_mm_movemask_pi8(
        _mm_packs_pi16(zerosOfFour<k>(block, scanTable), zerosOfFour<k + 4>(block, scanTable))));
}

template <int32_t first>
[[gnu::noinline]] uint32_t nonZeros(const int16_t* block, const int32_t* scanTable)
{
    const MmxState state;
    return ~(zerosOfEight<first>(block, scanTable) | zerosOfEight<first + 8>(block, scanTable) << 8 |
             zerosOfEight<first + 16>(block, scanTable) << 16 | zerosOfEight<first + 24>(block, scanTable) << 24);
}

}
}
