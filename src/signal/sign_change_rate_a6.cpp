// Zero crossings: integers in MMX registers, floats by products in single precision, four at a time.
#include "lanes/four_floats.h"
#include "signal/sign_change_rate_mmx.h"

namespace rux::a6 {
namespace {

// So many vectors keep each lane's count exact.
constexpr size_t countedVectors32f = size_t{1} << 23;

// 1 in each lane whose product is not at or above 0: a NaN counts, a product that underflows to -0 does not.
inline __m128 changes(FourFloats before, FourFloats at, __m128 one)
{
    return _mm_and_ps(_mm_cmpnge_ps(_mm_mul_ps(before.value, at.value), _mm_setzero_ps()), one);
}

int32_t addLanes(__m128 counts)
{
    uint8_t lanes[FourFloats::size];
    FourFloats{counts}.store(lanes);
    int32_t count = 0;
    for (int at = 0; at < 16; at += 4) count += static_cast<int32_t>(load<float>(lanes + at));
    return count;
}

int32_t countChanges32f(const uint8_t* src, size_t samples)
{
    const __m128 one = _mm_set1_ps(1.0f);
    size_t places = samples - 1;
    int32_t count = 0;
    src += 4;
    while (places > 0) {
        size_t vectors = places / 4 < countedVectors32f ? places / 4 : countedVectors32f;
        places -= vectors * 4;
        __m128 counts = _mm_setzero_ps();
        for (; vectors > 0; --vectors, src += 16)
            counts = _mm_add_ps(counts, changes(FourFloats::load(src - 4), FourFloats::load(src), one));
        if (places < 4)
            for (; places > 0; --places, src += 4)   // zeros in the other lanes: their products are not below 0
                counts = _mm_add_ps(counts, changes(FourFloats::loadOne(src - 4), FourFloats::loadOne(src), one));
        count += addLanes(counts);
    }
    return count;
}

}
}
