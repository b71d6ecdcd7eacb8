// Sobel derivatives in SSE2 registers, 16 pixels of four rows at a time.
#include "lanes/sixteen_byte_elements.h"

#include "filter/sobel_bands.h"

namespace rux::w7 {
namespace {

template <typename Kernel>
void sobelImage(const SobelImages& images)
{
    sobelBands<Kernel, SixteenBytes>(images);
}

}
}
