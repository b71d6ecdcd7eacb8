// Canny edges, the magnitudes pixel by pixel.
#include "filter/canny_directions.h"

namespace rux::px {
namespace {

void magnitudeRow(const uint8_t* dx, const uint8_t* dy, uint8_t* magnitudes, int32_t width, int32_t limit)
{
    for (ptrdiff_t x = 0; x < width; ++x) magnitudePixel(dx, dy, magnitudes, x, limit);
}

}
}
