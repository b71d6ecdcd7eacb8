// Rows of float arithmetic in vectors of four, two a turn.
#pragma once

#include <xmmintrin.h>

#include "arith/arithmetic.h"
#include "arith/float_lanes.h"

namespace rux::RUX_LEVEL {
namespace {

template <Combine combine>
inline __m128 combineFour(__m128 a, __m128 b)
{
    if (combine == Combine::sum) return _mm_add_ps(a, b);
    if (combine == Combine::difference) return _mm_sub_ps(a, b);
    return _mm_mul_ps(a, b);
}

template <Combine combine>
inline __m128 combineOne(__m128 a, __m128 b)
{
    if (combine == Combine::sum) return _mm_add_ss(a, b);
    if (combine == Combine::difference) return _mm_sub_ss(a, b);
    return _mm_mul_ss(a, b);
}

// The source as it stands.
struct AllChannels {
    __m128 four(__m128 src) const { return src; }
    __m128 one(__m128 src, size_t) const { return src; }
    void skip(size_t) {}
};

// The source with a neutral operand in place of each fourth element, so that alpha is stored again as alpha + 0,
// alpha - 0 or alpha * 1. The pattern rotates with each element that is passed singly.
template <Combine combine>
class ThreeOfFourChannels {
public:
    __m128 four(__m128 src) const { return _mm_or_ps(_mm_and_ps(src, keep), neutral); }
    __m128 one(__m128 src, size_t index) const
    {
        const bool isAlpha = (index & 3) == 3;
        return _mm_or_ps(_mm_and_ps(src, floatFromBits(isAlpha ? 0 : 0xFFFFFFFF)),
                         floatFromBits(isAlpha ? neutralBits : 0));
    }
    void skip(size_t elements)
    {
        for (; elements > 0; --elements) {
            keep = _mm_shuffle_ps(keep, keep, _MM_SHUFFLE(0, 3, 2, 1));
            neutral = _mm_shuffle_ps(neutral, neutral, _MM_SHUFFLE(0, 3, 2, 1));
        }
    }

private:
    static constexpr uint32_t neutralBits = combine == Combine::product ? 0x3F800000 : 0;   // 1.0 or 0.0
    __m128 keep = floatsFromBits(0xFFFFFFFF, 0xFFFFFFFF, 0xFFFFFFFF, 0);
    __m128 neutral = floatsFromBits(0, 0, 0, neutralBits);
};

template <Combine combine, typename Channels>
inline void combineSingly(const Channels& channels, const uint8_t* src, uint8_t* srcDst, size_t from, size_t to)
{
    for (size_t i = from; i < to; ++i)
        storeOne(srcDst + i * 4,
                 combineOne<combine>(loadOne(srcDst + i * 4), channels.one(loadOne(src + i * 4), i)));
}

template <Combine combine, typename Access, typename Channels>
inline void combineEight(const Channels& channels, const uint8_t* src, uint8_t* srcDst)
{
    const __m128 low = combineFour<combine>(Access::load(srcDst), channels.four(loadFour(src)));
    const __m128 high = combineFour<combine>(Access::load(srcDst + 16), channels.four(loadFour(src + 16)));
    Access::store(srcDst, low);
    Access::store(srcDst + 16, high);
}

// Blocks of eight elements, two a turn while they last; returns the first element that is left.
template <Combine combine, typename Access, typename Channels>
inline size_t combineBlocks(const Channels& channels, const uint8_t* src, uint8_t* srcDst, size_t from, size_t to)
{
    for (; to - from >= 16; from += 16) {
        _mm_prefetch(reinterpret_cast<const char*>(src + from * 4) + 64, _MM_HINT_T0);
        combineEight<combine, Access>(channels, src + from * 4, srcDst + from * 4);
        combineEight<combine, Access>(channels, src + from * 4 + 32, srcDst + from * 4 + 32);
    }
    if (to - from >= 8) {
        combineEight<combine, Access>(channels, src + from * 4, srcDst + from * 4);
        from += 8;
    }
    return from;
}

template <Combine combine, typename Channels>
void combineElements(Channels channels, const uint8_t* src, uint8_t* srcDst, size_t elements)
{
    size_t done = 0;
    if (elements >= 11) {
        if (isAligned(srcDst, 4)) {
            const size_t head = bytesToBoundary(srcDst, 16) / 4;
            combineSingly<combine>(channels, src, srcDst, 0, head);
            channels.skip(head);
            done = combineBlocks<combine, AlignedFloats>(channels, src, srcDst, head, elements);
        } else {
            done = combineBlocks<combine, UnalignedFloats>(channels, src, srcDst, 0, elements);
        }
    }
    combineSingly<combine>(channels, src, srcDst, done, elements);
}

template <Combine combine>
void combineRow(const uint8_t* src, uint8_t* srcDst, size_t elements)
{
    combineElements<combine>(AllChannels(), src, srcDst, elements);
}

template <Combine combine>
void combineAlphaRow(const uint8_t* src, uint8_t* srcDst, size_t pixels)
{
    combineElements<combine>(ThreeOfFourChannels<combine>(), src, srcDst, pixels * 4);
}

}
}
