// The sum in four single-precision lanes, or accurately in eight double-precision ones, as the hint asks.
#include <emmintrin.h>

#include "signal/sum_fast.h"

namespace rux::w7 {
namespace {

// Two neighbouring elements as doubles.
inline __m128d loadTwo(const uint8_t* from)
{
    return _mm_cvtps_pd(_mm_castpd_ps(_mm_set_sd(load<double>(from))));
}

// The lower one added first.
inline double addBoth(double total, __m128d sums)
{
    return total + _mm_cvtsd_f64(sums) + _mm_cvtsd_f64(_mm_unpackhi_pd(sums, sums));
}

// Element i goes to accumulator i modulo 8; the eight are added up in their order, and the tail of fewer than eight,
// in an accumulator of its own, is added last.
double sumAccurately(const uint8_t* src, size_t elements)
{
    __m128d a = _mm_setzero_pd();
    __m128d b = a;
    __m128d c = a;
    __m128d d = a;
    for (; elements >= 8; elements -= 8, src += 32) {
        a = _mm_add_pd(a, loadTwo(src));
        b = _mm_add_pd(b, loadTwo(src + 8));
        c = _mm_add_pd(c, loadTwo(src + 16));
        d = _mm_add_pd(d, loadTwo(src + 24));
    }
    return addBoth(addBoth(addBoth(addBoth(0, a), b), c), d) + sumSingly(src, elements, 0);
}

double sumOf(const uint8_t* src, size_t elements, int32_t hint)
{
    return hint == 1 ? sumFast(src, elements) : sumAccurately(src, elements);
}

}
}
