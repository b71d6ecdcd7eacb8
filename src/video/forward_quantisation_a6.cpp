// Quantisation in single precision, one coefficient at a time.
#include <xmmintrin.h>

#include "video/forward_quantisation_scalar.h"

namespace rux::a6 {
namespace {

class TruncatedProduct {
public:
    explicit TruncatedProduct(int32_t quantScale) : reciprocal(_mm_div_ss(_mm_set_ss(1.0f), single(quantScale))) {}
    int32_t operator()(int32_t units, const uint8_t* weight) const
    {
        const __m128 product = _mm_mul_ss(single(units), reciprocal);
        return _mm_cvttss_si32(_mm_mul_ss(product, _mm_load_ss(reinterpret_cast<const float*>(weight))));
    }

private:
    static __m128 single(int32_t value) { return _mm_cvtsi32_ss(_mm_setzero_ps(), value); }

    __m128 reciprocal;
};

void quantiseIntra(uint8_t* coefficients, int32_t quantScale, const uint8_t* matrix, int32_t* count)
{
    quantiseBlock<TruncatedProduct, IntraLevel>(1, coefficients, quantScale, matrix, count);
}

void quantise(uint8_t* coefficients, int32_t quantScale, const uint8_t* matrix, int32_t* count)
{
    quantiseBlock<TruncatedProduct, NonIntraLevel>(0, coefficients, quantScale, matrix, count);
}

}
}
