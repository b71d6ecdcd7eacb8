// Conversion in vectors, 8 elements at a time, stored past the caches.
#include "arith/convert_sse.h"
#include "frame/mmx_state.h"

namespace rux::a6 {
namespace {

template <typename Access>
inline size_t floatsFromBlocks(const uint8_t* src, uint8_t* dst, size_t from, size_t to)
{
    const __m64 zero = _mm_setzero_si64();
    for (; to - from >= 8; from += 8) {
        _mm_prefetch(reinterpret_cast<const char*>(src + from) + 64, _MM_HINT_NTA);
        const __m64 bytes = load<__m64>(src + from);
        Access::store(dst + from * 4, _mm_cvtpu16_ps(_mm_unpacklo_pi8(bytes, zero)));
        Access::store(dst + from * 4 + 16, _mm_cvtpu16_ps(_mm_unpackhi_pi8(bytes, zero)));
    }
    return from;
}

[[gnu::noinline]] void floatsFromBytes(const uint8_t* src, uint8_t* dst, size_t elements, bool)
{
    const MmxState state;
    const size_t head = floatsToBoundary(dst, elements);
    floatsFromBytesSingly(src, dst, 0, head);
    const size_t done = isAligned(dst, 4) ? floatsFromBlocks<StreamedFloats>(src, dst, head, elements)
                                          : floatsFromBlocks<UnalignedFloats>(src, dst, head, elements);
    floatsFromBytesSingly(src, dst, done, elements);
    _mm_sfence();
}

// Four integers of 0 to 255 as words, rounded in the vector unit's mode.
inline __m64 wordsFromFour(const uint8_t* from)
{
    const __m128 clamped = clampToBytes(loadFour(from));
    return _mm_packs_pi32(_mm_cvtps_pi32(clamped), _mm_cvtps_pi32(_mm_movehl_ps(clamped, clamped)));
}

void convertRow(const uint8_t* src, uint8_t* dst, size_t elements)
{
    size_t i = 0;
    for (; elements - i >= 8; i += 8)
        _mm_stream_pi(reinterpret_cast<__m64*>(dst + i),
                      _mm_packs_pu16(wordsFromFour(src + i * 4), wordsFromFour(src + i * 4 + 16)));
    bytesFromFloatsSingly(src, dst, i, elements);
}

[[gnu::noinline]] void bytesFromFloats(Rounding rounding, const Rows& rows)
{
    const MmxState state;
    const VectorRounding guard(rounding);
    forEachRow(rows, convertRow);
    _mm_sfence();
}

}
}
