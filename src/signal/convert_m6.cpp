// Conversion by the floating-point stack's integer load: MMX has no floats.
#include "signal/convert.h"

namespace rux::m6 {
namespace {

void floatsFromWords(const uint8_t* src, uint8_t* dst, size_t samples)
{
    floatsFromWordsSingly(src, dst, samples);
}

}
}
