// Motion compensation in MMX with the byte average of SSE.
//
// One reference: 16 wide is exact; 8 wide is exact for an odd roundControl and averages bytes for an even one. Two
// references: all sizes average bytes.
#include <type_traits>

#include "lanes/samples_a6.h"

#include "frame/mmx_state.h"
#include "video/motion_compensation_vector.h"

namespace rux::a6 {
namespace {

inline Words8 loadResidual(const uint8_t* from, Samples8)
{
    return Words8::load(from);
}

inline Words16 loadResidual(const uint8_t* from, Samples16)
{
    return Words16::load(from);
}

inline void storeResult(Samples8 result, uint8_t* to)
{
    result.store(to);
}

inline void storeResult(Samples16 result, uint8_t* to)
{
    result.store(to);
}

template <int width, int height>
void compensate(int mode, Reference reference, const Block& block, int32_t roundControl)
{
    const MmxState state;
    const Kernel kernel = width == 16 ? exactKernels<Samples16>[mode]
                          : roundControl & 1 ? exactKernels<Samples8>[mode]
                                             : averagingKernels<Samples8, DecrementAbove>[mode];
    kernel(reference, block, height, roundControl);
}

template <int width, int height>
void compensateBoth(int forwardMode, Reference forward, int backwardMode, Reference backward,
                    const Block& block, int32_t roundControl)
{
    using Samples = std::conditional_t<width == 16, Samples16, Samples8>;
    const MmxState state;
    const KernelBoth kernel = roundControl & 1 ? kernelsBoth<Samples, RoundOdd>[backwardMode][forwardMode]
                                               : kernelsBoth<Samples, RoundEven>[backwardMode][forwardMode];
    kernel(forward, backward, block, height);
}

}
}
