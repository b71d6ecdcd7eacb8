// Lowpass filter in SSE2.
#include "lanes/pixel_words8.h"

namespace rux::w7 {
namespace {

using Words = SaturatingWords8;

}
}

#include "filter/lowpass_lanes.h"

namespace rux::w7 {
namespace {

template <int size>
void filterRowsInState(const MaskedImages& images, uint16_t* columns)
{
    filterRows<size>(images, columns);
}

}
}
