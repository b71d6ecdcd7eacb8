// Kernels of motion compensation over vectors of a block's width.
#pragma once

#include "video/half_pel_exact_rows.h"
#include "video/motion_compensation.h"

namespace rux::RUX_LEVEL {
namespace {

using Kernel = void (*)(Reference, const Block&, int32_t height, int32_t roundControl);
using KernelBoth = void (*)(Reference, Reference, const Block&, int32_t height);

Words8 loadResidual(const uint8_t* from, Samples8);
Words16 loadResidual(const uint8_t* from, Samples16);
void storeResult(Samples8 result, uint8_t* to);
void storeResult(Samples16 result, uint8_t* to);

// A sum that saturates at 16 bits and then at 8 is the sum in 32 bits saturated at 8.
template <typename Samples, typename Prediction>
inline void rebuildRow(Prediction prediction, Block& rest)
{
    storeResult(packed(asWords(prediction) + loadResidual(rest.residual, Samples())), rest.result);
    rest.residual += rest.residualStride;
    rest.result += rest.resultStride;
}

template <typename Samples, typename Rows>
inline void rebuildRows(Rows& rows, Block& rest, int32_t count)
{
    for (; count > 0; --count) rebuildRow<Samples>(rows.next(), rest);
}

template <int mode, typename Samples>
void rebuildExact(Reference reference, const Block& block, int32_t height, int32_t roundControl)
{
    auto rows = exactHalfPelRows<mode, Samples>(reference, roundControl);
    Block rest = block;
    rebuildRows<Samples>(rows, rest, height);
}

template <int mode, typename Samples, typename Rounding>
void rebuildAveraged(Reference reference, const Block& block, int32_t height, int32_t)
{
    auto rows = halfPelRows<mode, Samples, Rounding>(reference);
    Block rest = block;
    rebuildRows<Samples>(rows, rest, height);
}

// The contract's (max(t, 0) + 1) >> 1 with t = pf + e + e + pb is e + avg(pf, pb) where t is not negative; elsewhere
// it is 0, and e + avg(pf, pb) is not positive and saturates to 0 as well. Where a sum of t saturates at 16 bits, e is
// so large that both saturate to the same byte.
template <int forwardMode, int backwardMode, typename Samples, typename Rounding>
class AverageOfRows {
public:
    AverageOfRows(Reference first, Reference second)
        : forward(halfPelRows<forwardMode, Samples, Rounding>(first)),
          backward(halfPelRows<backwardMode, Samples, Rounding>(second))
    {
    }
    Samples next() { return average(forward.next(), backward.next()); }

private:
    decltype(halfPelRows<forwardMode, Samples, Rounding>(Reference())) forward;
    decltype(halfPelRows<backwardMode, Samples, Rounding>(Reference())) backward;
};

template <int forwardMode, int backwardMode, typename Samples, typename Rounding>
void rebuildBoth(Reference forward, Reference backward, const Block& block, int32_t height)
{
    AverageOfRows<forwardMode, backwardMode, Samples, Rounding> rows(forward, backward);
    Block rest = block;
    rebuildRows<Samples>(rows, rest, height);
}

template <typename Samples>
constexpr Kernel exactKernels[4] = {
    rebuildExact<0, Samples>, rebuildExact<1, Samples>, rebuildExact<2, Samples>, rebuildExact<3, Samples>};

template <typename Samples, typename Rounding>
constexpr Kernel averagingKernels[4] = {
    rebuildAveraged<0, Samples, Rounding>, rebuildAveraged<1, Samples, Rounding>,
    rebuildAveraged<2, Samples, Rounding>, rebuildAveraged<3, Samples, Rounding>};

// [backward][forward]
template <typename Samples, typename Rounding>
constexpr KernelBoth kernelsBoth[4][4] = {
    {rebuildBoth<0, 0, Samples, Rounding>, rebuildBoth<1, 0, Samples, Rounding>,
     rebuildBoth<2, 0, Samples, Rounding>, rebuildBoth<3, 0, Samples, Rounding>},
    {rebuildBoth<0, 1, Samples, Rounding>, rebuildBoth<1, 1, Samples, Rounding>,
     rebuildBoth<2, 1, Samples, Rounding>, rebuildBoth<3, 1, Samples, Rounding>},
    {rebuildBoth<0, 2, Samples, Rounding>, rebuildBoth<1, 2, Samples, Rounding>,
     rebuildBoth<2, 2, Samples, Rounding>, rebuildBoth<3, 2, Samples, Rounding>},
    {rebuildBoth<0, 3, Samples, Rounding>, rebuildBoth<1, 3, Samples, Rounding>,
     rebuildBoth<2, 3, Samples, Rounding>, rebuildBoth<3, 3, Samples, Rounding>},
};

// One reference: P0 one lower before it meets P1.
struct DecrementAbove : RoundUp {
    template <typename Samples>
    static Samples above(Samples p0)
    {
        return decremented(p0);
    }
};

// Two references and an even roundControl: P1 one lower, floored at 0.
struct RoundEven : RoundUp {
    template <typename Samples>
    static Samples below(Samples p1)
    {
        return subtractSaturated(p1, broadcastByte<Samples>(1));
    }
};

// Two references and an odd roundControl: a one lower and P1 two, floored at 0.
struct RoundOdd : RoundUp {
    template <typename Samples>
    static Samples half(Samples a, Samples b)
    {
        return average(subtractSaturated(a, broadcastByte<Samples>(1)), b);
    }
    template <typename Samples>
    static Samples below(Samples p1)
    {
        return subtractSaturated(p1, broadcastByte<Samples>(2));
    }
};

}
}
