// Comparison 16 bytes at a time.
#include "lanes/sixteen_byte_elements.h"

#include "arith/compare_bytes.h"
#include "arith/compare_floats.h"

namespace rux::w7 {
namespace {

// A result is 0 or -1 in each lane: it stays so when it is packed with saturation.
inline void storeSixteen(uint8_t* dst, FourFloats a, FourFloats b, FourFloats c, FourFloats d)
{
    const __m128i low = _mm_packs_epi32(_mm_castps_si128(a.value), _mm_castps_si128(b.value));
    const __m128i high = _mm_packs_epi32(_mm_castps_si128(c.value), _mm_castps_si128(d.value));
    SixteenBytes{_mm_packs_epi16(low, high)}.store(dst);
}

template <ruxCmpOp cmpOp>
void compareByteRow(const uint8_t* src, uint8_t value, uint8_t* dst, size_t width)
{
    transformRow<SixteenBytes>(ByteComparison<SixteenBytes, cmpOp>(value), src, dst, width);
}

}
}
