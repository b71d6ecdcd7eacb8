// Variable-length codes; a new structure is filled in 16-byte stores.
#include <emmintrin.h>

#include "video/huffman.h"

namespace rux::w7 {
namespace {

void fillWords(uint32_t* block, int32_t words, uint32_t value)
{
    const __m128i four = _mm_set1_epi32(static_cast<int32_t>(value));
    for (int32_t i = 0; i < words; i += 4) _mm_store_si128(reinterpret_cast<__m128i*>(block + i), four);
}

}
}
