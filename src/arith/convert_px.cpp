// Conversion, element by element; the rounding is arithmetic of its own and asks no processor mode.
#include "arith/convert_scalar.h"
#include "frame/float_environment.h"

namespace rux::px {
namespace {

// x + 0.5 without its fraction; a tie has none, and an odd result then steps down to the even neighbour.
inline int32_t nearestInteger(float x)
{
    const double sum = static_cast<double>(x) + 0.5;
    const int32_t whole = static_cast<int32_t>(sum);
    return (whole & 1) && whole == sum ? whole - 1 : whole;
}

inline int32_t truncated(float x)
{
    return static_cast<int32_t>(x);
}

// A NaN is neither at or above 255 nor above 0.
template <int32_t toInteger(float)>
void convertRow(const uint8_t* src, uint8_t* dst, size_t elements)
{
    for (size_t i = 0; i < elements; ++i) {
        const float x = load<float>(src + i * 4);
        dst[i] = x >= 255.0f ? 255 : x > 0.0f ? static_cast<uint8_t>(toInteger(x)) : 0;
    }
}

void bytesFromFloats(Rounding rounding, const Rows& rows)
{
    const DoublePrecision precision;
    forEachRow(rows, rounding == Rounding::nearest ? convertRow<nearestInteger> : convertRow<truncated>);
}

}
}
