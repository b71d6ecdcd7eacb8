// Copy in 8-byte non-temporal stores, whatever the image's size.
#include <xmmintrin.h>

#include "frame/mmx_state.h"
#include "movement/copy.h"
#include "movement/mmx_moves.h"

namespace rux::a6 {
namespace {

// How many 8-byte moves; the destination stands on an 8-byte boundary.
template <__m64 loadEight(const uint8_t*)>
void streamEights(const uint8_t* src, uint8_t* dst, size_t count)
{
    __m64* to = reinterpret_cast<__m64*>(dst);
    for (; count >= 8; count -= 8, src += 64, to += 8)
        for (int i = 0; i < 8; ++i) _mm_stream_pi(to + i, loadEight(src + i * 8));
    for (; count > 0; --count, src += 8, ++to) _mm_stream_pi(to, loadEight(src));
}

template <typename Element>
[[gnu::noinline]] void copyRun(const uint8_t* src, uint8_t* dst, size_t bytes, bool)
{
    const MmxState state;
    if (bytes >= 8) {
        store(dst, loadWhole(src));
        const size_t head = bytesToBoundary(dst, 8);
        src += head, dst += head, bytes -= head;

        const size_t eights = bytes / 8;
        if (bytesToBoundary(src, 8) == 4)
            streamEights<loadHalves>(src, dst, eights);
        else
            streamEights<loadWhole>(src, dst, eights);
        src += eights * 8, dst += eights * 8, bytes -= eights * 8;
        _mm_sfence();
    }
    copySmall(src, dst, bytes);
}

void copyMaskedRun(const uint8_t* src, uint8_t* dst, const uint8_t* mask, size_t count)
{
    copyMaskedBytes(src, dst, mask, count);
}

}
}
