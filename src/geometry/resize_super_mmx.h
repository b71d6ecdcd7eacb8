// Supersampling over whole boxes in MMX: integer sums, two lanes at a time.
#pragma once

#include "frame/mmx_state.h"
#include "geometry/resize_super.h"
#include "geometry/resize_super_steps.h"

namespace rux::RUX_LEVEL {
namespace {

// Rows that words can hold the sum of: 255 * 257 = 65535.
constexpr int32_t rowsInWords = 257;

inline void addWords(uint32_t* sums, __m64 words)
{
    const __m64 zero = _mm_setzero_si64();
    store(sums, _mm_add_pi32(load<__m64>(sums), _mm_unpacklo_pi16(words, zero)));
    store(sums + 2, _mm_add_pi32(load<__m64>(sums + 2), _mm_unpackhi_pi16(words, zero)));
}

// Eight columns at a time down all rows, in words.
[[gnu::noinline]] void addRows(uint32_t* sums, const uint8_t* src, int32_t srcStep, int32_t rows, int32_t columns)
{
    const MmxState state;
    const __m64 zero = _mm_setzero_si64();
    for (int32_t left = rows; left > 0; left -= rowsInWords) {
        const int32_t now = left < rowsInWords ? left : rowsInWords;
        int32_t j = 0;
        for (; j + 8 <= columns; j += 8) {
            __m64 low = zero;
            __m64 high = zero;
            const uint8_t* row = src + j;
            for (int32_t i = 0; i < now; ++i, row += srcStep) {
                const __m64 bytes = load<__m64>(row);
                low = _mm_add_pi16(low, _mm_unpacklo_pi8(bytes, zero));
                high = _mm_add_pi16(high, _mm_unpackhi_pi8(bytes, zero));
            }
            addWords(sums + j, low);
            addWords(sums + j + 4, high);
        }
        for (; j < columns; ++j)
            for (int32_t i = 0; i < now; ++i) sums[j] += src[static_cast<ptrdiff_t>(i) * srcStep + j];
        src += static_cast<ptrdiff_t>(now) * srcStep;
    }
}

[[gnu::noinline]] void compactWhole(uint32_t* sums, int32_t columns, int32_t whole, int32_t boxes)
{
    const MmxState state;
    for (int32_t k = 0, first = 0; k < boxes && first < columns; ++k) {
        const int32_t end = whole < columns - first ? first + whole : columns;
        __m64 pairs = _mm_setzero_si64();
        for (; first + 2 <= end; first += 2) pairs = _mm_add_pi32(pairs, load<__m64>(sums + first));
        if (first < end) pairs = _mm_add_pi32(pairs, _mm_cvtsi32_si64(load<int32_t>(sums + first++)));
        store(sums + k, _mm_cvtsi64_si32(_mm_add_pi32(pairs, _mm_unpackhi_pi32(pairs, pairs))));
    }
}

void reduceWholeRow(const Reduction& reduction, uint32_t* sums, int32_t columns, const uint8_t* src, int32_t srcStep,
                    uint8_t* dst)
{
    reduceInSteps(reduction, sums, columns, src, srcStep, dst);
}

}
}
