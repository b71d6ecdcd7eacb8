// Canny edges, the magnitudes in MMX registers, four pixels at a time.
#include "filter/canny_directions.h"
#include "frame/mmx_state.h"
#include "lanes/eight_byte_elements.h"
#include "lanes/spread.h"

namespace rux::m6 {
namespace {

// |a| of signed words as unsigned words: (a ^ m) - m negates where m is all ones.
inline EightBytes absolute16(EightBytes a)
{
    const EightBytes negative = greater16({_mm_setzero_si64()}, a);
    return subtract16(a ^ negative, negative);
}

[[gnu::noinline]] void magnitudeRow(const uint8_t* dx, const uint8_t* dy, uint8_t* magnitudes, int32_t width,
                                    int32_t limit)
{
    const MmxState state;
    const EightBytes limits = spread<EightBytes>(limit);
    const auto aboveLimit = [&](EightBytes a) { return a & greater32(a, limits); };
    ptrdiff_t x = 0;
    for (; width - x >= 4; x += 4) {
        const EightBytes across = absolute16(EightBytes::load(dx + 2 * x));
        const EightBytes down = absolute16(EightBytes::load(dy + 2 * x));
        aboveLimit(add32(widenLow16(across), widenLow16(down))).store(magnitudes + 4 * x);
        aboveLimit(add32(widenHigh16(across), widenHigh16(down))).store(magnitudes + 4 * x + 8);
    }
    for (; x < width; ++x) magnitudePixel(dx, dy, magnitudes, x, limit);
}

}
}
