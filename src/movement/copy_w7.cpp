// Copy in 16-byte moves; large images go past the caches.
#include <emmintrin.h>

#include "movement/copy.h"
#include "movement/run_copy_w7.h"

namespace rux::w7 {
namespace {

template <typename Element>
void copyRun(const uint8_t* src, uint8_t* dst, size_t bytes, bool streaming)
{
    copyBytes(src, dst, bytes, streaming);
}

void copyMaskedRun(const uint8_t* src, uint8_t* dst, const uint8_t* mask, size_t count)
{
    size_t head = bytesToBoundary(dst, 16);
    if (head > count) head = count;
    copyMaskedBytes(src, dst, mask, head);

    const __m128i raise = _mm_set1_epi8(0x7F);
    size_t x = head;
    for (; count - x >= 16; x += 16) {
        // A mask byte of 1 to 255 plus 127, saturated, has its top bit set; 0 plus 127 has not.
        const __m128i raised = _mm_adds_epu8(loadSixteen(mask + x), raise);
        const int chosen = _mm_movemask_epi8(raised);
        if (chosen == 0) continue;
        __m128i value = loadSixteen(src + x);
        __m128i* const to = reinterpret_cast<__m128i*>(dst + x);
        if (chosen != 0xFFFF) {
            const __m128i take = _mm_cmplt_epi8(raised, _mm_setzero_si128());
            value = _mm_or_si128(_mm_and_si128(take, value), _mm_andnot_si128(take, _mm_load_si128(to)));
        }
        _mm_store_si128(to, value);
    }
    copyMaskedBytes(src + x, dst + x, mask + x, count - x);
}

}
}
