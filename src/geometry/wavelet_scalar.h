// The column pass in double, each element rounded to float after each tap.
#pragma once

#include "geometry/wavelet_filters.h"

namespace rux::RUX_LEVEL {
namespace {

float* makeColumnTaps(const PickedTaps& from)
{
    return copiedTaps(from);
}

float* makeReversedTaps(const PickedTaps& from)
{
    return reversedTaps<1>(from);
}

inline void prefetchRow(const uint8_t*, int32_t) {}

// A product of floats is exact in double; storing the element is what rounds it.
inline void addTap(const uint8_t* src, double tap, float* dst, int32_t columns)
{
    for (int32_t x = 0; x < columns; ++x, src += 4) dst[x] = static_cast<float>(dst[x] + load<float>(src) * tap);
}

inline void putTap(const uint8_t* src, double tap, float* dst, int32_t columns)
{
    for (int32_t x = 0; x < columns; ++x, src += 4) dst[x] = static_cast<float>(load<float>(src) * tap);
}

template <typename... Inputs>
void filterColumns(float* dst, int32_t columns, const Inputs&... inputs)
{
    auto passTap = putTap;
    const auto passTaps = [&](const ColumnInput& input) {
        const uint8_t* row = input.src;
        for (int32_t k = input.filter->count - 1; k >= 0; --k, row += input.step, passTap = addTap)
            passTap(row, input.filter->taps[k], dst, columns);
    };
    (passTaps(inputs), ...);
}

}
}
