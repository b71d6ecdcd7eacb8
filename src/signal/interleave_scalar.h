// Interleaving sample by sample.
#pragma once

#include "signal/interleave.h"

namespace rux::RUX_LEVEL {
namespace {

// Samples from one distance in bytes to another.
inline void moveSamples(const uint8_t* src, size_t srcDistance, uint8_t* dst, size_t dstDistance, size_t samples)
{
    for (; samples > 0; --samples, src += srcDistance, dst += dstDistance) store(dst, load<uint16_t>(src));
}

// The frames from one on.
inline void interleaveSingly(const SourceChannels& src, uint8_t* dst, size_t from, size_t to)
{
    const size_t frameBytes = src.count() * 2;
    for (size_t c = 0; c < src.count(); ++c)
        moveSamples(src[c] + from * 2, 2, dst + from * frameBytes + c * 2, frameBytes, to - from);
}

inline void deinterleaveSingly(const uint8_t* src, const DestinationChannels& dst, size_t from, size_t to)
{
    const size_t frameBytes = dst.count() * 2;
    for (size_t c = 0; c < dst.count(); ++c)
        moveSamples(src + from * frameBytes + c * 2, frameBytes, dst[c] + from * 2, 2, to - from);
}

}
}
