// The column pass in vectors of four floats, product and sum rounded at each tap.
#pragma once

#include "geometry/wavelet_filters.h"
#include "lanes/four_floats.h"

namespace rux::RUX_LEVEL {
namespace {

// Each tap four times, from the last to the first: a vector of its own in the order of the rows.
float* makeColumnTaps(const PickedTaps& from)
{
    return reversedTaps<4>(from);
}

// Asks for the next row's columns ahead of time: in a block of columns each row lies in pages of its own.
inline void prefetchRow(const uint8_t* row, int32_t columns)
{
    for (int32_t x = 0; x < columns; x += 16)
        _mm_prefetch(reinterpret_cast<const char*>(row) + static_cast<ptrdiff_t>(x) * 4, _MM_HINT_T0);
}

template <int vectors>
struct WholeColumns {
    static constexpr int count = vectors;
    static __m128 load(const uint8_t* from) { return FourFloats::load(from).value; }
    static void store(uint8_t* to, __m128 value) { FourFloats{value}.store(to); }
};

// One to three columns, and zeros beside them.
template <int columns>
struct PartColumns {
    static constexpr int count = 1;

    static __m128 load(const uint8_t* from)
    {
        if (columns == 1) return FourFloats::loadOne(from).value;
        const __m128 two = _mm_loadl_pi(_mm_setzero_ps(), reinterpret_cast<const __m64*>(from));
        return columns == 2 ? two : _mm_movelh_ps(two, FourFloats::loadOne(from + 8).value);
    }

    static void store(uint8_t* to, __m128 value)
    {
        if (columns == 1) FourFloats{value}.storeOne(to);
        if (columns == 2) _mm_storel_pi(reinterpret_cast<__m64*>(to), value);
        if (columns == 3) FourFloats{value}.storeThree(to);
    }
};

// Vectors side by side in a pass: as many sums as there are registers for.
constexpr int widest = sizeof(void*) == 8 ? 8 : 4;

template <int count, typename Step>
[[gnu::always_inline]] inline void stepThrough(Step step)
{
#pragma GCC unroll 9
    for (int i = 0; i < count; ++i) step();
}

// A step for each tap. Up to 9 taps the steps stand one behind the other, without the turns of a loop.
template <typename Step>
[[gnu::always_inline]] inline void forEachTap(int32_t taps, Step step)
{
    switch (taps) {
    case 1: return stepThrough<1>(step);
    case 2: return stepThrough<2>(step);
    case 3: return stepThrough<3>(step);
    case 4: return stepThrough<4>(step);
    case 5: return stepThrough<5>(step);
    case 6: return stepThrough<6>(step);
    case 7: return stepThrough<7>(step);
    case 8: return stepThrough<8>(step);
    case 9: return stepThrough<9>(step);
    default:
        for (; taps > 0; --taps) step();
    }
}

// The outputs of a row before its first one at a 16-byte boundary. A destination off a multiple of 4 meets none.
inline int32_t outputsToBoundary(const uint8_t* dst, int32_t outputs)
{
    const int32_t before = static_cast<int32_t>(bytesToBoundary(dst, 16) / 4);
    return isAligned(dst, 4) && before < outputs ? before : outputs;
}

// A few columns through all taps of an input. Always inlined, so that the sums stay in registers.
template <typename Columns>
[[gnu::always_inline]] inline void addInput(const ColumnInput& input, ptrdiff_t offset, __m128* sums)
{
    const uint8_t* src = input.src + offset;
    const float* tap = input.filter->taps;
    const auto step = [&]() __attribute__((always_inline)) {
        const __m128 g = _mm_load_ps(tap);
#pragma GCC unroll 8
        for (int v = 0; v < Columns::count; ++v)
            sums[v] = _mm_add_ps(sums[v], _mm_mul_ps(Columns::load(src + v * 16), g));
        tap += 4;
        src += input.step;
    };
    if (Columns::count == widest)
        forEachTap(input.filter->count, step);
    else
        for (int32_t taps = input.filter->count; taps > 0; --taps) step();
}

// A sum starts from 0.0.
template <typename Columns, typename... Inputs>
inline void filterSomeColumns(float* dst, int32_t from, const Inputs&... inputs)
{
    __m128 sums[Columns::count];
#pragma GCC unroll 8
    for (__m128& sum : sums) sum = _mm_setzero_ps();
    (addInput<Columns>(inputs, static_cast<ptrdiff_t>(from) * 4, sums), ...);
#pragma GCC unroll 8
    for (int v = 0; v < Columns::count; ++v) Columns::store(bytesOf(dst + from + v * 4), sums[v]);
}

template <typename... Inputs>
void filterColumns(float* dst, int32_t columns, const Inputs&... inputs)
{
    int32_t x = 0;
    for (; x + widest * 4 <= columns; x += widest * 4) filterSomeColumns<WholeColumns<widest>>(dst, x, inputs...);
    for (; x + 4 <= columns; x += 4) filterSomeColumns<WholeColumns<1>>(dst, x, inputs...);
    switch (columns - x) {
    case 1: return filterSomeColumns<PartColumns<1>>(dst, x, inputs...);
    case 2: return filterSomeColumns<PartColumns<2>>(dst, x, inputs...);
    case 3: return filterSomeColumns<PartColumns<3>>(dst, x, inputs...);
    }
}

}
}
