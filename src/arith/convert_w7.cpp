// Conversion in vectors, 16 elements at a time.
#include <emmintrin.h>

#include "arith/convert_sse.h"

namespace rux::w7 {
namespace {

// Blocks of 16, then of 4.
template <typename Access>
inline size_t floatsFromBlocks(const uint8_t* src, uint8_t* dst, size_t from, size_t to)
{
    const __m128i zero = _mm_setzero_si128();
    for (; to - from >= 16; from += 16) {
        const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(src + from));
        const __m128i low = _mm_unpacklo_epi8(bytes, zero);
        const __m128i high = _mm_unpackhi_epi8(bytes, zero);
        Access::store(dst + from * 4, _mm_cvtepi32_ps(_mm_unpacklo_epi16(low, zero)));
        Access::store(dst + from * 4 + 16, _mm_cvtepi32_ps(_mm_unpackhi_epi16(low, zero)));
        Access::store(dst + from * 4 + 32, _mm_cvtepi32_ps(_mm_unpacklo_epi16(high, zero)));
        Access::store(dst + from * 4 + 48, _mm_cvtepi32_ps(_mm_unpackhi_epi16(high, zero)));
    }
    for (; to - from >= 4; from += 4) {
        const __m128i words = _mm_unpacklo_epi8(_mm_cvtsi32_si128(load<int32_t>(src + from)), zero);
        Access::store(dst + from * 4, _mm_cvtepi32_ps(_mm_unpacklo_epi16(words, zero)));
    }
    return from;
}

void floatsFromBytes(const uint8_t* src, uint8_t* dst, size_t elements, bool streaming)
{
    const size_t head = floatsToBoundary(dst, elements);
    floatsFromBytesSingly(src, dst, 0, head);
    size_t done;
    if (!isAligned(dst, 4)) {
        done = floatsFromBlocks<UnalignedFloats>(src, dst, head, elements);
    } else if (streaming) {
        done = floatsFromBlocks<StreamedFloats>(src, dst, head, elements);
        _mm_sfence();
    } else {
        done = floatsFromBlocks<AlignedFloats>(src, dst, head, elements);
    }
    floatsFromBytesSingly(src, dst, done, elements);
}

// Four integers, rounded in the vector unit's mode; one that has no 32 bits becomes the lowest of all, -2^31.
struct Unclamped {
    static __m128i integers(__m128 floats) { return _mm_cvtps_epi32(floats); }
};

struct Clamped {
    static __m128i integers(__m128 floats) { return _mm_cvtps_epi32(clampToBytes(floats)); }
};

struct SixteenWords {
    __m128i low;
    __m128i high;
};

template <typename Access, typename Range>
inline SixteenWords wordsFromSixteen(const uint8_t* from)
{
    return {_mm_packs_epi32(Range::integers(Access::load(from)), Range::integers(Access::load(from + 16))),
            _mm_packs_epi32(Range::integers(Access::load(from + 32)), Range::integers(Access::load(from + 48)))};
}

// Packing words and then bytes with saturation does what clamping does, but for a NaN or a number of 2^31 and more:
// they become -2^31 and, as words, -32768. Where a word is that, the block is converted again from clamped floats.
template <typename Access>
inline __m128i bytesFromSixteen(const uint8_t* from)
{
    SixteenWords words = wordsFromSixteen<Access, Unclamped>(from);
    const __m128i lowest = _mm_cmpeq_epi16(_mm_min_epi16(words.low, words.high), _mm_set1_epi16(-32768));
    if (__builtin_expect(_mm_movemask_epi8(lowest) != 0, 0)) words = wordsFromSixteen<Access, Clamped>(from);
    return _mm_packus_epi16(words.low, words.high);
}

// Blocks of 16, then of 4.
template <typename Access>
inline size_t bytesFromBlocks(const uint8_t* src, uint8_t* dst, size_t from, size_t to)
{
    for (; to - from >= 16; from += 16)
        _mm_storeu_si128(reinterpret_cast<__m128i*>(dst + from), bytesFromSixteen<Access>(src + from * 4));
    for (; to - from >= 4; from += 4) {
        const __m128i integers = Clamped::integers(Access::load(src + from * 4));
        const __m128i words = _mm_packs_epi32(integers, integers);
        store<int32_t>(dst + from, _mm_cvtsi128_si32(_mm_packus_epi16(words, words)));
    }
    return from;
}

void convertRow(const uint8_t* src, uint8_t* dst, size_t elements)
{
    const size_t head = floatsToBoundary(src, elements);
    bytesFromFloatsSingly(src, dst, 0, head);
    const size_t done = isAligned(src, 4) ? bytesFromBlocks<AlignedFloats>(src, dst, head, elements)
                                          : bytesFromBlocks<UnalignedFloats>(src, dst, head, elements);
    bytesFromFloatsSingly(src, dst, done, elements);
}

void bytesFromFloats(Rounding rounding, const Rows& rows)
{
    const VectorRounding guard(rounding);
    forEachRow(rows, convertRow);
}

}
}
