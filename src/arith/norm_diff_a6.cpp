// Norms of differences in MMX registers for integers and in vectors of four for floats.
#include "lanes/eight_byte_elements_a6.h"

#include "arith/norm_diff_double.h"
#include "arith/norm_diff_floats.h"
#include "arith/norm_diff_mmx.h"

namespace rux::a6 {
namespace {

template <Layout layout>
void sumFloats(const ImagePair& images, double* norm, int32_t hint)
{
    if (hint == hintAccurate)
        sumInDouble<layout>(images, norm);
    else
        sumFloatsFast<layout>(images, norm);
}

// The mask bytes become floats, which are compared with 0.
inline EightMasks masksOf(const uint8_t* bytes)
{
    const EightBytes eight = EightBytes::load(bytes);
    const __m128 zero = _mm_setzero_ps();
    return {{_mm_cmpneq_ps(_mm_cvtpu16_ps(widenLow8(eight).value), zero)},
            {_mm_cmpneq_ps(_mm_cvtpu16_ps(widenHigh8(eight).value), zero)}};
}

[[gnu::noinline]] void sumMaskedWithMmx(const ImagePair& images, Mask mask, float* total)
{
    const MmxState state;
    sumMaskedImages(images, mask, total);
}

void sumMaskedFloats(const ImagePair& images, Mask mask, double* norm)
{
    float total;
    sumMaskedWithMmx(images, mask, &total);
    store<double>(norm, total);
}

}
}
