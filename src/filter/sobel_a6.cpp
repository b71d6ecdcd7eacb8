// Sobel derivatives in MMX registers, 8 pixels of four rows at a time.
#include "lanes/eight_byte_elements.h"

#include "filter/sobel_bands.h"
#include "frame/mmx_state.h"

namespace rux::a6 {
namespace {

template <typename Kernel>
[[gnu::noinline]] void sobelImage(const SobelImages& images)
{
    const MmxState state;
    sobelBands<Kernel, EightBytes>(images);
}

}
}
