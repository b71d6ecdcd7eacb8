// The row pass: blocks of outputs in vectors of four floats, the outputs around them in double.
#pragma once

#include "geometry/wavelet_forward.h"
#include "geometry/wavelet_sse.h"

namespace rux::RUX_LEVEL {
namespace {

// Pairs of reversed taps, each pair twice, an odd last tap beside 0.0. Such a vector meets the samples of two outputs,
// which lie two apart, and gives each the sums of its even and of its odd positions:
//   r[0] r[1] r[0] r[1] * s[0] s[1] s[2] s[3], then r[2] r[3] r[2] r[3] * s[2] s[3] s[4] s[5] ...
float* makeReversedTaps(const PickedTaps& from)
{
    float* const taps = makeRecords<float>((static_cast<int64_t>(from.count) + 1) / 2 * 4);
    if (taps)
        for (ptrdiff_t i = 0; i < from.count; ++i)
            for (ptrdiff_t copy = 0; copy < 4; copy += 2)
                store(taps + (i & ~ptrdiff_t(1)) * 2 + copy + (i & 1), from[from.count - 1 - static_cast<int32_t>(i)]);
    return taps;
}

inline void filterSingly(const float* src, const ruxWTRowTaps& filter, uint8_t* dst, int32_t outputs)
{
    for (; outputs > 0; --outputs, src += 2, dst += 4) {
        double sum = 0.0;
        const float* sample = src + filter.count;
        for (int32_t t = 0; t < filter.count; ++t) sum += static_cast<double>(filter.taps[t]) * *--sample;
        store(dst, roundedToSingle(sum));
    }
}

// Blocks of four outputs side by side.
template <int blocks>
inline void filterBlocks(const float* src, const ruxWTRowTaps& filter, uint8_t* dst)
{
    __m128 sums[blocks * 2];
#pragma GCC unroll 8
    for (__m128& sum : sums) sum = _mm_setzero_ps();
    const float* pair = filter.reversed;
    forEachTap((filter.count + 1) / 2, [&]() __attribute__((always_inline)) {
        const __m128 taps = _mm_load_ps(pair);
#pragma GCC unroll 8
        for (int v = 0; v < blocks * 2; ++v)
            sums[v] = _mm_add_ps(sums[v], _mm_mul_ps(_mm_loadu_ps(src + v * 4), taps));
        pair += 4;
        src += 2;
    });
#pragma GCC unroll 4
    for (int b = 0; b < blocks; ++b) {
        const __m128 even = _mm_shuffle_ps(sums[b * 2], sums[b * 2 + 1], _MM_SHUFFLE(2, 0, 2, 0));
        const __m128 odd = _mm_shuffle_ps(sums[b * 2], sums[b * 2 + 1], _MM_SHUFFLE(3, 1, 3, 1));
        _mm_store_ps(reinterpret_cast<float*>(dst) + b * 4, _mm_add_ps(even, odd));
    }
}

// Singly up to the first output at a 16-byte boundary, blocks of four as long as more than four are left, singly the
// last one to four.
void filterRow(const float* src, const ruxWTRowTaps& filter, uint8_t* dst, int32_t width)
{
    const int32_t head = outputsToBoundary(dst, width);
    filterSingly(src, filter, dst, head);
    src += 2 * static_cast<ptrdiff_t>(head);
    dst += 4 * static_cast<ptrdiff_t>(head);
    width -= head;
    constexpr int blocks = widest / 2;
    for (; width > blocks * 4; width -= blocks * 4, src += blocks * 8, dst += blocks * 16)
        filterBlocks<blocks>(src, filter, dst);
    for (; width > 4; width -= 4, src += 8, dst += 16) filterBlocks<1>(src, filter, dst);
    filterSingly(src, filter, dst, width);
}

}
}
