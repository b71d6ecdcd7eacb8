// Row filter: the fast path in MMX registers with the floats of SSE, the general one in groups of four pixels.
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

[[gnu::noinline]] void filterFast(const RowImages& images, const Kernel& kernel, const Divisor& divisor,
                                 TapPairs* steps)
{
    const MmxState state;
    filterImageFast<Shifted, ScaledToNearest>(images, kernel, divisor, steps);
}

void filterImage(const RowImages& images, const Kernel& kernel, const Divisor& divisor)
{
    const FastPath fastPath(kernel, images.roiSize.width);
    if (!fastPath) return filterInFours<Truncated>(images, kernel, divisor);

    const VectorRounding rounding(Rounding::nearest);
    filterFast(images, kernel, divisor, fastPath.steps());
}

}
}
