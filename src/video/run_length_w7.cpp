// Run-length encoding, eight coefficients in an SSE2 register.
#include <emmintrin.h>

#include "video/run_length.h"

namespace rux::w7 {
namespace {

template <int lane, int32_t k>
inline __m128i inserted(__m128i words, const int16_t* block, const int32_t* scanTable)
{
    return k == 0 ? words : _mm_insert_epi16(words, coefficient(block, scanTable, k), lane);
}

// Words of all bits set where one of eight coefficients is 0.
template <int32_t k>
inline __m128i zerosOfEight(const int16_t* block, const int32_t* scanTable)
{
    __m128i words = _mm_setzero_si128();
    words = inserted<0, k>(words, block, scanTable);
    words = inserted<1, k + 1>(words, block, scanTable);
    words = inserted<2, k + 2>(words, block, scanTable);
    words = inserted<3, k + 3>(words, block, scanTable);
    words = inserted<4, k + 4>(words, block, scanTable);
    words = inserted<5, k + 5>(words, block, scanTable);
    words = inserted<6, k + 6>(words, block, scanTable);
    words = inserted<7, k + 7>(words, block, scanTable);
    return _mm_cmpeq_epi16(words, _mm_setzero_si128());
}

template <int32_t k>
inline uint32_t zerosOfSixteen(const int16_t* block, const int32_t* scanTable)
{
    return static_cast<uint32_t>(_mm_movemask_epi8(
        _mm_packs_epi16(zerosOfEight<k>(block, scanTable), zerosOfEight<k + 8>(block, scanTable))));
}

template <int32_t first>
inline uint32_t nonZeros(const int16_t* block, const int32_t* scanTable)
{
    return ~(zerosOfSixteen<first>(block, scanTable) | zerosOfSixteen<first + 16>(block, scanTable) << 16);
}

}
}
