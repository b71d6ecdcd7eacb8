// Row filter: the fast path, and short kernels on the general one, in MMX registers with the floats of SSE; the others
// in groups of four pixels.
#include "lanes/pixel_words4.h"

namespace rux::a6 {
namespace {

using Words = SaturatingWords4;

}
}

#include "filter/row_lanes.h"
#include "filter/row_sse.h"
#include "frame/mmx_state.h"
#include "frame/rounding.h"

namespace rux::a6 {
namespace {

class Shifted {
public:
    explicit Shifted(int32_t count) : count(_mm_cvtsi32_si64(count)) {}
    Words operator()(Words sums) const { return {_mm_sra_pi32(sums.value, count)}; }

private:
    __m64 count;
};

class ScaledToNearest {
public:
    explicit ScaledToNearest(float factor) : factor(_mm_set1_ps(factor)) {}
    Words operator()(Words sums) const
    {
        return {_mm_cvtps_pi32(scaledFloats(_mm_cvtpi32_ps(_mm_setzero_ps(), sums.value), factor))};
    }

private:
    __m128 factor;
};

// The general path's divisions.
class ShiftedFromOneInLanes {
public:
    explicit ShiftedFromOneInLanes(int32_t count) : count(_mm_cvtsi32_si64(count)) {}
    Words operator()(Words sums) const
    {
        const __m64 shifted = _mm_srl_pi32(_mm_add_pi32(sums.value, _mm_set1_pi32(1)), count);
        return {_mm_and_si64(shifted, _mm_cmpgt_pi32(sums.value, _mm_setzero_si64()))};
    }

private:
    __m64 count;
};

class TruncatedInLanes {
public:
    explicit TruncatedInLanes(float factor) : factor(_mm_set1_ps(factor)) {}
    Words operator()(Words sums) const
    {
        return {_mm_cvttps_pi32(scaledFloats(_mm_cvtpi32_ps(_mm_setzero_ps(), sums.value), factor))};
    }

private:
    __m128 factor;
};

[[gnu::noinline]] void filterFast(const RowImages& images, const Kernel& kernel, const Divisor& divisor,
                                 TapPairs* steps)
{
    const MmxState state;
    filterImageInLanes<Shifted, ScaledToNearest>(images, kernel, divisor, steps);
}

[[gnu::noinline]] void filterShort(const RowImages& images, const Kernel& kernel, const Divisor& divisor)
{
    const MmxState state;
    TapPairs steps[shortKernel];
    filterImageInLanes<ShiftedFromOneInLanes, TruncatedInLanes>(images, kernel, divisor, steps);
}

void filterImage(const RowImages& images, const Kernel& kernel, const Divisor& divisor)
{
    const int32_t width = images.roiSize.width;
    const FastPath fastPath(kernel, width);
    if (!fastPath) {
        const int32_t inLanes = pixelsInLanes(kernel, width);
        if (inLanes > 0) filterShort(columnsOf(images, 0, inLanes), kernel, divisor);
        if (inLanes < width) filterInFours<Truncated>(columnsOf(images, inLanes, width), kernel, divisor);
        return;
    }

    const VectorRounding rounding(Rounding::nearest);
    filterFast(images, kernel, divisor, fastPath.steps());
}

}
}
