// Inverse quantisation in MMX, with the minimum and maximum of SSE.
#include "lanes/saturating_words4_a6.h"

#include "frame/mmx_state.h"
#include "video/inverse_quantisation_vector.h"

namespace rux::a6 {
namespace {

int32_t reconstructIntra(uint8_t* coefficients, int32_t quantScale, const uint8_t* matrix)
{
    const MmxState state;
    return reconstructIntraWords<SaturatingWords4>(coefficients, quantScale, matrix);
}

int32_t reconstruct(uint8_t* coefficients, int32_t quantScale, const uint8_t* matrix)
{
    const MmxState state;
    return reconstructWords<SaturatingWords4, true>(coefficients, quantScale, matrix);
}

int32_t reconstructFlat(uint8_t* coefficients, int32_t quantScale)
{
    const MmxState state;
    return reconstructWords<SaturatingWords4, false>(coefficients, quantScale, nullptr);
}

}
}
