// Conversion, element by element; the floating-point stack rounds, in the mode that its control word is given.
#include "arith/convert_scalar.h"

namespace rux::m6 {
namespace {

// From the last element to the first. A NaN is neither above 255 nor above 0.
void convertRow(const uint8_t* src, uint8_t* dst, size_t elements)
{
    for (size_t i = elements; i-- > 0;) {
        const float x = load<float>(src + i * 4);
        dst[i] = x > 255.0f ? 255 : x > 0.0f ? static_cast<uint8_t>(roundOnStack(x)) : 0;
    }
}

void bytesFromFloats(Rounding rounding, const Rows& rows)
{
    const StackRounding guard(rounding);
    forEachRow(rows, convertRow);
}

}
}
