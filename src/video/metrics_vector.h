// Measures of a block in columns as wide as a vector. A level gives, before, its sums and the state of its registers:
//
//     AbsoluteSum   add(p, s) adds |p - s| of each byte
//     SquareSum     add(p, s) adds (p - s)^2 of each byte, add(s) its square
//     SampleSum     add(s) adds each byte
//     Registers     held while a block is measured
//
// and, behind, its absolute differences. No sum of a block leaves 32 bits.
#pragma once

#include "video/half_pel_samples.h"
#include "video/metrics.h"

namespace rux::RUX_LEVEL {
namespace {

template <typename Sum, int mode>
ruxStatus measure(Reference src, Reference reference, ptrdiff_t, int32_t* result)
{
    [[maybe_unused]] const Registers state{};
    Sum sum;
    for (int32_t column = 0; column < blockSize; column += static_cast<int32_t>(Samples::size)) {
        auto rows = exactSampleRows<mode, Samples, ExactUp>({reference.samples + column, reference.stride});
        const uint8_t* at = src.samples + column;
#pragma GCC unroll 4
        for (int32_t y = 0; y < blockSize; ++y) {
            sum.add(asSamples(rows.next()), Samples::load(at));
            at += src.stride;
        }
    }
    store(result, sum.total());
    return ruxStatusOk;
}

template <typename Sum>
constexpr Kernel kernels[4] = {measure<Sum, 0>, measure<Sum, 1>, measure<Sum, 2>, measure<Sum, 3>};

inline ruxStatus squares(int mode, Reference src, Reference reference, int32_t* result)
{
    return kernels<SquareSum>[mode](src, reference, reference.stride, result);
}

// Rows of a prediction whose row below is not the next row: nothing is carried from one to the next.
template <int mode>
class RowsAside {
public:
    explicit RowsAside(const Prediction& prediction) : at(prediction) {}
    Samples next()
    {
        const uint8_t* const row = at.reference.samples;
        at.reference.samples += at.reference.stride;
        const Samples a = Samples::load(row);
        if constexpr (mode == modeIndex(mcHalfVert)) return average(a, Samples::load(row + at.below));
        else if constexpr (mode == modeIndex(mcHalfHorz)) return average(a, Samples::load(row + 1));
        else if constexpr (mode == modeIndex(mcHalfBoth))
            return asSamples(quarterUp(pairsOf(a, Samples::load(row + 1)),
                                       pairsOf(Samples::load(row + at.below), Samples::load(row + at.below + 1))));
        else return a;
    }

private:
    Prediction at;
};

template <int mode, bool isNextRow>
inline auto predictedRows(const Prediction& prediction, ptrdiff_t column)
{
    const Reference from = {prediction.reference.samples + column, prediction.reference.stride};
    if constexpr (isNextRow) return exactSampleRows<mode, Samples, ExactUp>(from);
    else return RowsAside<mode>({from, prediction.below});
}

template <int forwardMode, int backwardMode, bool isNextRow>
inline int32_t sumOfBoth(Reference src, const Prediction& forward, const Prediction& backward)
{
    SquareSum sum;
    for (int32_t column = 0; column < blockSize; column += static_cast<int32_t>(Samples::size)) {
        auto forwardRows = predictedRows<forwardMode, isNextRow>(forward, column);
        auto backwardRows = predictedRows<backwardMode, isNextRow>(backward, column);
        const uint8_t* at = src.samples + column;
#pragma GCC unroll 2
        for (int32_t y = 0; y < blockSize; ++y) {
            sum.add(average(asSamples(forwardRows.next()), asSamples(backwardRows.next())), Samples::load(at));
            at += src.stride;
        }
    }
    return sum.total();
}

template <int forwardMode, int backwardMode>
ruxStatus measureBoth(Reference src, const Prediction& forward, const Prediction& backward, int32_t* result)
{
    [[maybe_unused]] const Registers state{};
    constexpr bool readsBelow = ((forwardMode | backwardMode) & modeIndex(mcHalfVert)) != 0;
    const bool isNextRow = forward.below == forward.reference.stride && backward.below == backward.reference.stride;
    store(result, readsBelow && isNextRow ? sumOfBoth<forwardMode, backwardMode, readsBelow>(src, forward, backward)
                                          : sumOfBoth<forwardMode, backwardMode, false>(src, forward, backward));
    return ruxStatusOk;
}

// [backward][forward]
constexpr KernelBoth kernelsBoth[4][4] = {
    {measureBoth<0, 0>, measureBoth<1, 0>, measureBoth<2, 0>, measureBoth<3, 0>},
    {measureBoth<0, 1>, measureBoth<1, 1>, measureBoth<2, 1>, measureBoth<3, 1>},
    {measureBoth<0, 2>, measureBoth<1, 2>, measureBoth<2, 2>, measureBoth<3, 2>},
    {measureBoth<0, 3>, measureBoth<1, 3>, measureBoth<2, 3>, measureBoth<3, 3>},
};

inline KernelBoth squaresBoth(int forwardMode, int backwardMode)
{
    return kernelsBoth[backwardMode][forwardMode];
}

[[gnu::noinline]] void storeSums(Reference src, Sums& sums)
{
    [[maybe_unused]] const Registers state{};
    SampleSum samples;
    SquareSum squares;
    for (int32_t column = 0; column < blockSize; column += static_cast<int32_t>(Samples::size)) {
        const uint8_t* at = src.samples + column;
#pragma GCC unroll 2
        for (int32_t y = 0; y < blockSize; ++y) {
            const Samples s = Samples::load(at);
            samples.add(s);
            squares.add(s);
            at += src.stride;
        }
    }
    store(&sums.samples, static_cast<uint32_t>(samples.total()));
    store(&sums.squares, static_cast<uint32_t>(squares.total()));
}

}
}
