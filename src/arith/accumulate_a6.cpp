// Accumulation in vectors of four; the bytes are widened in MMX registers.
#include "arith/accumulate_sse.h"
#include "frame/mmx_state.h"

namespace rux::a6 {
namespace {

inline EightFloats convertEight(const uint8_t* from)
{
    const __m64 bytes = load<__m64>(from);
    const __m64 zero = _mm_setzero_si64();
    return {_mm_cvtpu16_ps(_mm_unpacklo_pi8(bytes, zero)), _mm_cvtpu16_ps(_mm_unpackhi_pi8(bytes, zero))};
}

template <typename Weight>
[[gnu::noinline]] void accumulateRow(Weight weight, const uint8_t* src, uint8_t* srcDst, size_t elements)
{
    const MmxState state;
    accumulateElements(weight, src, srcDst, elements);
}

}
}
