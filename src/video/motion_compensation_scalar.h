// Motion compensation sample by sample, with the exact prediction.
#pragma once

#include "video/half_pel_scalar.h"
#include "video/motion_compensation.h"

namespace rux::RUX_LEVEL {
namespace {

inline uint8_t saturatedByte(int32_t value)
{
    return static_cast<uint8_t>(value < 0 ? 0 : value > 255 ? 255 : value);
}

template <int width, int height, int mode>
void rebuild(Reference reference, Block block, int32_t roundControl)
{
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const int32_t prediction = exactPrediction<mode>(reference.samples + x, reference.stride, roundControl);
            block.result[x] = saturatedByte(prediction + load<int16_t>(block.residual + 2 * x));
        }
        reference.samples += reference.stride;
        block.residual += block.residualStride;
        block.result += block.resultStride;
    }
}

// The residual enters the average: (pf + pb + 2 e + 1) >> 1 is e + ((pf + pb + 1) >> 1).
template <int width, int height, int forwardMode, int backwardMode>
void rebuildBoth(Reference forward, Reference backward, Block block, int32_t roundControl)
{
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const int32_t first = exactPrediction<forwardMode>(forward.samples + x, forward.stride, roundControl);
            const int32_t second = exactPrediction<backwardMode>(backward.samples + x, backward.stride, roundControl);
            const int32_t residual = load<int16_t>(block.residual + 2 * x);
            block.result[x] = saturatedByte((first + second + 2 * residual + 1) >> 1);
        }
        forward.samples += forward.stride;
        backward.samples += backward.stride;
        block.residual += block.residualStride;
        block.result += block.resultStride;
    }
}

using Kernel = void (*)(Reference, Block, int32_t);
using KernelBoth = void (*)(Reference, Reference, Block, int32_t);

template <int width, int height>
constexpr Kernel kernels[4] = {
    rebuild<width, height, 0>, rebuild<width, height, 1>, rebuild<width, height, 2>, rebuild<width, height, 3>};

// [backward][forward]
template <int width, int height>
constexpr KernelBoth kernelsBoth[4][4] = {
    {rebuildBoth<width, height, 0, 0>, rebuildBoth<width, height, 1, 0>, rebuildBoth<width, height, 2, 0>,
     rebuildBoth<width, height, 3, 0>},
    {rebuildBoth<width, height, 0, 1>, rebuildBoth<width, height, 1, 1>, rebuildBoth<width, height, 2, 1>,
     rebuildBoth<width, height, 3, 1>},
    {rebuildBoth<width, height, 0, 2>, rebuildBoth<width, height, 1, 2>, rebuildBoth<width, height, 2, 2>,
     rebuildBoth<width, height, 3, 2>},
    {rebuildBoth<width, height, 0, 3>, rebuildBoth<width, height, 1, 3>, rebuildBoth<width, height, 2, 3>,
     rebuildBoth<width, height, 3, 3>},
};

template <int width, int height>
void compensate(int mode, Reference reference, const Block& block, int32_t roundControl)
{
    kernels<width, height>[mode](reference, block, roundControl);
}

template <int width, int height>
void compensateBoth(int forwardMode, Reference forward, int backwardMode, Reference backward,
                    const Block& block, int32_t roundControl)
{
    kernelsBoth<width, height>[backwardMode][forwardMode](forward, backward, block, roundControl);
}

}
}
