// Motion compensation in SSE2.
//
// One reference: 16 wide averages bytes and does not read roundControl; 8 wide is exact for an odd roundControl and
// averages bytes for an even one. Two references: bytes are averaged, 16 wide always as for an even roundControl.
#include <type_traits>

#include "lanes/samples_w7.h"

#include "video/motion_compensation_vector.h"

namespace rux::w7 {
namespace {

inline Words8 loadResidual(const uint8_t* from, Samples8)
{
    return Words8::load(from);
}

inline void storeResult(Samples8 result, uint8_t* to)
{
    result.store(to);
}

// 16 wide, residual and result stand on 16-byte boundaries with strides that keep them there.
inline Words16 loadResidual(const uint8_t* from, Samples16)
{
    return Words16::loadAligned(from);
}

inline void storeResult(Samples16 result, uint8_t* to)
{
    result.storeAligned(to);
}

// P0 one lower before it meets P1, but not below 0.
struct DecrementAboveZero : RoundUp {
    template <typename Samples>
    static Samples above(Samples p0)
    {
        return decrementedAboveZero(p0);
    }
};

// All rows but the last are brought lower; what is carried to the next row is not.
void rebuildBothWide(Reference reference, const Block& block, int32_t height, int32_t)
{
    HalfBothRows<Samples16, DecrementAboveZero> rows(reference);
    Block rest = block;
    rebuildRows<Samples16>(rows, rest, height - 1);
    rebuildRow<Samples16>(rows.nextRounded<RoundUp>(), rest);
}

constexpr Kernel wideKernels[4] = {
    rebuildAveraged<0, Samples16, RoundUp>,
    rebuildAveraged<1, Samples16, RoundUp>,
    rebuildAveraged<2, Samples16, RoundUp>,
    rebuildBothWide,
};

template <int height>
using Narrow = std::conditional_t<height == 16, DecrementAbove, DecrementAboveZero>;

template <int width, int height>
void compensate(int mode, Reference reference, const Block& block, int32_t roundControl)
{
    const Kernel kernel = width == 16        ? wideKernels[mode]
                          : roundControl & 1 ? exactKernels<Samples8>[mode]
                                             : averagingKernels<Samples8, Narrow<height>>[mode];
    kernel(reference, block, height, roundControl);
}

template <int width, int height>
void compensateBoth(int forwardMode, Reference forward, int backwardMode, Reference backward,
                    const Block& block, int32_t roundControl)
{
    const KernelBoth kernel = width == 16        ? kernelsBoth<Samples16, RoundEven>[backwardMode][forwardMode]
                              : roundControl & 1 ? kernelsBoth<Samples8, RoundOdd>[backwardMode][forwardMode]
                                                 : kernelsBoth<Samples8, RoundEven>[backwardMode][forwardMode];
    kernel(forward, backward, block, height);
}

}
}
