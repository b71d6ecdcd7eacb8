// Residuals in columns as wide as a vector. A level gives, before, the samples of a size and its registers' state:
//
//     SamplesOf<size>::Type   a row of a block, or a part of it
//     Registers               held while a block is made
//
// The contract allows a roundControl of 0 and 1; any other is served sample by sample, so that all levels agree.
#pragma once

#include "video/difference_scalar.h"
#include "video/half_pel_samples.h"

namespace rux::RUX_LEVEL {
namespace {

template <int size, bool keepsPrediction, typename Samples, typename Rows>
inline void subtractRows(Rows rows, Reference src, WordBlock residual, WordBlock prediction)
{
#pragma GCC unroll 2
    for (int32_t y = 0; y < size; ++y) {
        const auto p = asWords(rows.next());
        if (keepsPrediction) {
            p.store(prediction.row);
            prediction.row += prediction.stride;
        }
        (widened(Samples::load(src.samples)) - p).store(residual.row);
        src.samples += src.stride;
        residual.row += residual.stride;
    }
}

template <int size, int mode, typename Rounding>
void subtractVector(Reference src, Reference reference, WordBlock residual, WordBlock prediction)
{
    using Samples = typename SamplesOf<size>::Type;
    for (int32_t column = 0; column < size; column += static_cast<int32_t>(Samples::size)) {
        const auto rows = exactSampleRows<mode, Samples, Rounding>(reference);
        if (prediction.row) {
            subtractRows<size, true, Samples>(rows, src, residual, prediction);
            prediction.row += 2 * Samples::size;
        } else {
            subtractRows<size, false, Samples>(rows, src, residual, prediction);
        }
        src.samples += Samples::size;
        reference.samples += Samples::size;
        residual.row += 2 * Samples::size;
    }
}

// (2s - pf - pb) >> 1 is s - ((pf + pb + 1) >> 1).
template <int size, int forwardMode, int backwardMode, typename Rounding>
void subtractBothVector(Reference src, Reference forward, Reference backward, WordBlock residual)
{
    using Samples = typename SamplesOf<size>::Type;
    for (int32_t column = 0; column < size; column += static_cast<int32_t>(Samples::size)) {
        auto forwardRows = exactSampleRows<forwardMode, Samples, Rounding>({forward.samples + column, forward.stride});
        auto backwardRows =
            exactSampleRows<backwardMode, Samples, Rounding>({backward.samples + column, backward.stride});
        const uint8_t* at = src.samples + column;
        uint8_t* to = residual.row + 2 * column;
#pragma GCC unroll 2
        for (int32_t y = 0; y < size; ++y) {
            const Samples p = average(asSamples(forwardRows.next()), asSamples(backwardRows.next()));
            (widened(Samples::load(at)) - widened(p)).store(to);
            at += src.stride;
            to += residual.stride;
        }
    }
}

using Kernel = void (*)(Reference, Reference, WordBlock, WordBlock);
using KernelBoth = void (*)(Reference, Reference, Reference, WordBlock);

template <int size, typename Rounding>
constexpr Kernel kernels[4] = {subtractVector<size, 0, Rounding>, subtractVector<size, 1, Rounding>,
                               subtractVector<size, 2, Rounding>, subtractVector<size, 3, Rounding>};

// [backward][forward]
template <int size, typename Rounding>
constexpr KernelBoth kernelsBoth[4][4] = {
    {subtractBothVector<size, 0, 0, Rounding>, subtractBothVector<size, 1, 0, Rounding>,
     subtractBothVector<size, 2, 0, Rounding>, subtractBothVector<size, 3, 0, Rounding>},
    {subtractBothVector<size, 0, 1, Rounding>, subtractBothVector<size, 1, 1, Rounding>,
     subtractBothVector<size, 2, 1, Rounding>, subtractBothVector<size, 3, 1, Rounding>},
    {subtractBothVector<size, 0, 2, Rounding>, subtractBothVector<size, 1, 2, Rounding>,
     subtractBothVector<size, 2, 2, Rounding>, subtractBothVector<size, 3, 2, Rounding>},
    {subtractBothVector<size, 0, 3, Rounding>, subtractBothVector<size, 1, 3, Rounding>,
     subtractBothVector<size, 2, 3, Rounding>, subtractBothVector<size, 3, 3, Rounding>},
};

template <int size>
void subtract(Reference src, Reference reference, int mode, WordBlock residual, WordBlock prediction,
              int32_t roundControl)
{
    if (roundControl & ~1) {
        scalarKernels<size>[mode](src, reference, residual, prediction, roundControl);
        return;
    }
    [[maybe_unused]] const Registers state{};
    const Kernel kernel = roundControl ? kernels<size, ExactDown>[mode] : kernels<size, ExactUp>[mode];
    kernel(src, reference, residual, prediction);
}

template <int size>
void subtractBoth(Reference src, Reference forward, int forwardMode, Reference backward, int backwardMode,
                  WordBlock residual, int32_t roundControl)
{
    if (roundControl & ~1) {
        scalarKernelsBoth<size>[backwardMode][forwardMode](src, forward, backward, residual, roundControl);
        return;
    }
    [[maybe_unused]] const Registers state{};
    const KernelBoth kernel = roundControl ? kernelsBoth<size, ExactDown>[backwardMode][forwardMode]
                                           : kernelsBoth<size, ExactUp>[backwardMode][forwardMode];
    kernel(src, forward, backward, residual);
}

}
}
