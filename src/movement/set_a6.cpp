// Fill in 8-byte non-temporal stores, whatever the image's size.
#include <xmmintrin.h>

#include "frame/mmx_state.h"
#include "movement/fill_pattern.h"
#include "movement/set.h"

namespace rux::a6 {
namespace {

inline __m64 pattern64(uint32_t pattern)
{
    return _mm_set1_pi32(static_cast<int32_t>(pattern));
}

template <typename Element>
[[gnu::noinline]] void fillRun(uint8_t* dst, Element value, size_t bytes, bool)
{
    const MmxState state;
    uint32_t pattern = pattern32(value);
    if (bytes >= 8) {
        store(dst, pattern64(pattern));
        const size_t head = bytesToBoundary(dst, 8);
        pattern = pattern32After(pattern, head);
        dst += head, bytes -= head;

        const __m64 eight = pattern64(pattern);
        for (; bytes >= 64; dst += 64, bytes -= 64)
            for (int i = 0; i < 8; ++i) _mm_stream_pi(reinterpret_cast<__m64*>(dst) + i, eight);
        for (; bytes >= 8; dst += 8, bytes -= 8) _mm_stream_pi(reinterpret_cast<__m64*>(dst), eight);
        _mm_sfence();
    }
    fillSmall(dst, pattern, bytes);
}

}
}
