// Interleaving sample by sample.
#include "signal/interleave_scalar.h"

namespace rux::px {
namespace {

void interleave(const SourceChannels& src, uint8_t* dst, size_t frames)
{
    interleaveSingly(src, dst, 0, frames);
}

void deinterleave(const uint8_t* src, const DestinationChannels& dst, size_t frames)
{
    deinterleaveSingly(src, dst, 0, frames);
}

}
}
