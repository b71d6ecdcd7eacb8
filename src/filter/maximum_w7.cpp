// Maximum filter in SSE2.
#include "lanes/sixteen_byte_elements.h"

namespace rux::w7 {
namespace {

using Lane = SixteenBytes;

}
}

#include "filter/maximum_lanes.h"

namespace rux::w7 {
namespace {

void copyImage(const MaximumImages& images)
{
    copyImageInLanes(images);
}

void filterRowsInState(const MaximumImages& images, size_t maskWidth, int32_t maskHeight, const MaximumWork& work)
{
    filterRows(images, maskWidth, maskHeight, work);
}

}
}
