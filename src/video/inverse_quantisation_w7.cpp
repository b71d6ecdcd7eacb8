// Inverse quantisation in SSE2.
#include "lanes/saturating_words8.h"

#include "video/inverse_quantisation_vector.h"

namespace rux::w7 {
namespace {

int32_t reconstructIntra(uint8_t* coefficients, int32_t quantScale, const uint8_t* matrix)
{
    return reconstructIntraWords<SaturatingWords8>(coefficients, quantScale, matrix);
}

int32_t reconstruct(uint8_t* coefficients, int32_t quantScale, const uint8_t* matrix)
{
    return reconstructWords<SaturatingWords8, true>(coefficients, quantScale, matrix);
}

int32_t reconstructFlat(uint8_t* coefficients, int32_t quantScale)
{
    return reconstructWords<SaturatingWords8, false>(coefficients, quantScale, nullptr);
}

}
}
