// Residuals sample by sample, for any roundControl.
#pragma once

#include "video/difference.h"
#include "video/half_pel_scalar.h"

namespace rux::RUX_LEVEL {
namespace {

template <int size, int mode>
void subtractScalar(Reference src, Reference reference, WordBlock residual, WordBlock prediction, int32_t roundControl)
{
    for (int32_t y = 0; y < size; ++y) {
        for (int32_t x = 0; x < size; ++x) {
            const int32_t p = exactPrediction<mode>(reference.samples + x, reference.stride, roundControl);
            if (prediction.row) store(prediction.row + 2 * x, static_cast<int16_t>(p));
            store(residual.row + 2 * x, static_cast<int16_t>(src.samples[x] - p));
        }
        src.samples += src.stride;
        reference.samples += reference.stride;
        residual.row += residual.stride;
        if (prediction.row) prediction.row += prediction.stride;
    }
}

template <int size, int forwardMode, int backwardMode>
void subtractBothScalar(Reference src, Reference forward, Reference backward, WordBlock residual, int32_t roundControl)
{
    for (int32_t y = 0; y < size; ++y) {
        for (int32_t x = 0; x < size; ++x) {
            const int32_t first = exactPrediction<forwardMode>(forward.samples + x, forward.stride, roundControl);
            const int32_t second = exactPrediction<backwardMode>(backward.samples + x, backward.stride, roundControl);
            store(residual.row + 2 * x, static_cast<int16_t>((2 * src.samples[x] - first - second) >> 1));
        }
        src.samples += src.stride;
        forward.samples += forward.stride;
        backward.samples += backward.stride;
        residual.row += residual.stride;
    }
}

using ScalarKernel = void (*)(Reference, Reference, WordBlock, WordBlock, int32_t);
using ScalarKernelBoth = void (*)(Reference, Reference, Reference, WordBlock, int32_t);

template <int size>
constexpr ScalarKernel scalarKernels[4] = {
    subtractScalar<size, 0>, subtractScalar<size, 1>, subtractScalar<size, 2>, subtractScalar<size, 3>};

// [backward][forward]
template <int size>
constexpr ScalarKernelBoth scalarKernelsBoth[4][4] = {
    {subtractBothScalar<size, 0, 0>, subtractBothScalar<size, 1, 0>, subtractBothScalar<size, 2, 0>,
     subtractBothScalar<size, 3, 0>},
    {subtractBothScalar<size, 0, 1>, subtractBothScalar<size, 1, 1>, subtractBothScalar<size, 2, 1>,
     subtractBothScalar<size, 3, 1>},
    {subtractBothScalar<size, 0, 2>, subtractBothScalar<size, 1, 2>, subtractBothScalar<size, 2, 2>,
     subtractBothScalar<size, 3, 2>},
    {subtractBothScalar<size, 0, 3>, subtractBothScalar<size, 1, 3>, subtractBothScalar<size, 2, 3>,
     subtractBothScalar<size, 3, 3>},
};

}
}
