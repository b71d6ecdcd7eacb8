// Row filter in SSE2: the fast path, and short kernels on the general one, in blocks of 16 pixels; the others in groups
// of four.
#include "lanes/pixel_words8.h"

namespace rux::w7 {
namespace {

using Words = SaturatingWords8;

}
}

#include "filter/row_lanes.h"
#include "filter/row_sse.h"
#include "frame/rounding.h"

namespace rux::w7 {
namespace {

class Shifted {
public:
    explicit Shifted(int32_t count) : count(_mm_cvtsi32_si128(count)) {}
    Words operator()(Words sums) const { return {_mm_sra_epi32(sums.value, count)}; }

private:
    __m128i count;
};

class ScaledToNearest {
public:
    explicit ScaledToNearest(float factor) : factor(_mm_set1_ps(factor)) {}
    Words operator()(Words sums) const
    {
        return {_mm_cvtps_epi32(scaledFloats(_mm_cvtepi32_ps(sums.value), factor))};
    }

private:
    __m128 factor;
};

// The finishes of the general path for four sums, each beside the one for a single sum.
class UndividedFour : public Undivided, public Whole {
public:
    using Undivided::operator();
    using Whole::operator();
};

class ShiftedFour : public ShiftedFromOne {
public:
    explicit ShiftedFour(int32_t shift) : ShiftedFromOne{shift}, count(_mm_cvtsi32_si128(shift)) {}
    using ShiftedFromOne::operator();
    Words operator()(Words sums) const
    {
        const __m128i shifted = _mm_srl_epi32(_mm_add_epi32(sums.value, _mm_set1_epi32(1)), count);
        return {_mm_and_si128(shifted, _mm_cmpgt_epi32(sums.value, _mm_setzero_si128()))};
    }

private:
    __m128i count;
};

class TruncatedFour : public Truncated {
public:
    explicit TruncatedFour(float factor) : Truncated{factor}, factors(_mm_set1_ps(factor)) {}
    using Truncated::operator();
    Words operator()(Words sums) const
    {
        return {_mm_cvttps_epi32(scaledFloats(_mm_cvtepi32_ps(sums.value), factors))};
    }

private:
    __m128 factors;
};

// Products of four pixels and a tap of any size: with the tap's words, p * tap = p * low + 2^16 * p * high, of which
// only the low word of p * high stays in 32 bits.
inline __m128i productsOfFour(const uint8_t* pixels, __m128i tap)
{
    const __m128i zero = _mm_setzero_si128();
    const __m128i words = _mm_unpacklo_epi8(_mm_cvtsi32_si128(load<int32_t>(pixels)), zero);
    const __m128i low = _mm_mullo_epi16(_mm_unpacklo_epi16(words, words), tap);
    const __m128i high = _mm_mulhi_epu16(_mm_unpacklo_epi16(words, zero), tap);
    return _mm_add_epi32(low, _mm_slli_epi32(high, 16));
}

template <typename Finish>
inline void filterRowGenerally(Finish finish, const uint8_t* src, uint8_t* dst, int32_t width, const Kernel& kernel)
{
    int32_t x = 0;
    for (; width - x >= 4; x += 4) {
        __m128i sums = _mm_setzero_si128();
        for (int32_t t = 0; t < kernel.size; ++t)
            sums = _mm_add_epi32(sums, productsOfFour(src + x + t, _mm_set1_epi32(kernel.tap(t))));
        const __m128i words = _mm_packs_epi32(finish(Words{sums}).value, _mm_setzero_si128());
        store<int32_t>(dst + x, _mm_cvtsi128_si32(_mm_packus_epi16(words, words)));
    }
    filterSingly(finish, src, dst, x, width, kernel);
}

void filterGenerally(const RowImages& images, const Kernel& kernel, const Divisor& divisor)
{
    const auto filterWith = [&](auto finish) {
        forEachRow(images, [&](const uint8_t* src, uint8_t* dst) {
            filterRowGenerally(finish, src, dst, images.roiSize.width, kernel);
        });
    };
    switch (divisor.division) {
    case Division::none: return filterWith(UndividedFour());
    case Division::shift: return filterWith(ShiftedFour(divisor.shift));
    case Division::factor: return filterWith(TruncatedFour(divisor.factor));
    }
}

void filterShort(const RowImages& images, const Kernel& kernel, const Divisor& divisor)
{
    TapPairs steps[shortKernel];
    filterImageInLanes<ShiftedFour, TruncatedFour>(images, kernel, divisor, steps);
}

void filterImage(const RowImages& images, const Kernel& kernel, const Divisor& divisor)
{
    const int32_t width = images.roiSize.width;
    const FastPath fastPath(kernel, width);
    if (!fastPath) {
        const int32_t inLanes = pixelsInLanes(kernel, width);
        if (inLanes > 0) filterShort(columnsOf(images, 0, inLanes), kernel, divisor);
        if (inLanes < width) filterGenerally(columnsOf(images, inLanes, width), kernel, divisor);
        return;
    }

    const VectorRounding rounding(Rounding::nearest);
    filterImageInLanes<Shifted, ScaledToNearest>(images, kernel, divisor, fastPath.steps());
}

}
}
