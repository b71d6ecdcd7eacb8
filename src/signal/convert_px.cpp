// Conversion by the floating-point stack's integer load.
#include "signal/convert.h"

namespace rux::px {
namespace {

void floatsFromWords(const uint8_t* src, uint8_t* dst, size_t samples)
{
    floatsFromWordsSingly(src, dst, samples);
}

}
}
