#include "model/power.h"

#include <cmath>
#include <limits>

namespace rux::model {
namespace {

constexpr float infinity = std::numeric_limits<float>::infinity();
constexpr ruxStatus singularity = 18, outsideTheDomain = 19;

bool isInteger(float y)
{
    return std::isfinite(y) && y == std::trunc(y);
}

bool isOdd(float y)
{
    return isInteger(y) && std::fabs(y) < 16777216 && std::fmod(y, 2.0f) != 0;
}

Power exactly(float value, ruxStatus event = ruxStatusOk)
{
    return {true, value, 0, false, event};
}

Power computed(Level level, float x, float y)
{
    const bool negative = std::signbit(x) && isOdd(y);
    const long double t = y * std::log2(std::fabs(static_cast<long double>(x)));
    if (t > 513) return exactly(negative ? -infinity : infinity);
    const bool plainZero = t < -511;   // positive below -512, whatever the sign
    if (t < -513 && (level != w7 || !negative)) return exactly(0);
    const long double real = std::exp2(t);
    return {false, 0, negative ? -real : real, negative && (level == w7 || plainZero), ruxStatusOk};
}

}

bool isVectored(const float* elements, int count, float y)
{
    bool ordinary = std::isfinite(y);
    for (int i = 0; i < count; i++) {
        const auto bits = load<uint32_t>(elements + i);
        ordinary = ordinary && bits > 0x7FFFFF && bits < 0x7F800000;
    }
    return ordinary;
}

Power powerOf(Level level, float x, float y, bool vectored)
{
    const bool odd = isOdd(y), below = y < 0, shortcuts = level != w7;
    const float size = std::fabs(x), nan = load<float>("\x00\x00\xC0\xFF");
    if (vectored) return computed(level, x, y);
    if (y == 0) return exactly(1);
    if (y == 1 && shortcuts) return exactly(x);
    if (x == 1 && (shortcuts || !std::isfinite(y))) return exactly(1);
    if (level == w7 && std::isnan(x)) return exactly(x);
    if (std::isnan(y)) return exactly(y);
    if (std::isnan(x)) return exactly(x);
    if (x == infinity) return exactly(below ? 0 : infinity);
    if (x == -infinity) return exactly(below ? (odd ? -0.0f : 0.0f) : odd ? -infinity : infinity);
    if (std::isinf(y) && size == 1) return exactly(1);
    if (y == infinity) return exactly(size > 1 ? infinity : 0);
    if (y == -infinity && x == 0) return exactly(infinity, singularity);
    if (y == -infinity) return exactly(size > 1 ? 0 : infinity);
    if (std::signbit(x) && y == -1 && shortcuts) {
        return exactly(static_cast<float>(1.0 / x), x == 0 ? singularity : ruxStatusOk);
    }
    if (std::signbit(x) && x == 0) {
        if (!below) return exactly(odd ? -0.0f : 0.0f);
        return exactly(odd ? -infinity : infinity, singularity);
    }
    if (x < 0 && !isInteger(y)) return exactly(nan, outsideTheDomain);
    if (x == 0) return exactly(below ? infinity : 0, below ? singularity : ruxStatusOk);
    if (size == 1 && shortcuts) return exactly(odd ? -1.0f : 1.0f);
    return computed(level, x, y);
}

bool isWithinClass(const Power& power, float result)
{
    if (power.exact) return load<uint32_t>(&result) == load<uint32_t>(&power.value);
    const long double greatest = std::numeric_limits<float>::max(), class11 = 1.0L / 2048;
    const long double size = std::fabs(power.real);
    if (std::isnan(result)) return false;
    if (std::signbit(result) != std::signbit(power.real) && !(result == 0 && power.anySignOfZero)) return false;
    if (std::isinf(result)) return size >= greatest * (1 - class11);
    const long double subnormal = std::numeric_limits<float>::denorm_min();
    return std::fabs(result - power.real) <= std::fmax(size * class11, subnormal);
}

}
