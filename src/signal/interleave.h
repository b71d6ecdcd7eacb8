// Channels of 16-bit samples to frames and back.
//
// The operations stand here once; each level's file gives the routines that move the samples.
#pragma once

#include "frame/bytes.h"
#include "frame/checks.h"

namespace rux::RUX_LEVEL {
namespace {

// The host's array of channels, which may stand at any address.
template <typename Byte>
class Channels {
public:
    Channels(const void* array, int32_t count) : array(bytesOf(array)), number(static_cast<size_t>(count)) {}

    size_t count() const { return number; }
    Byte* operator[](size_t channel) const { return load<Byte*>(array + channel * sizeof(Byte*)); }

    bool isComplete() const
    {
        for (size_t channel = 0; channel < number; ++channel)
            if (!(*this)[channel]) return false;
        return true;
    }

    // The work is done at any address; whether all stand on 16-byte boundaries is only told.
    ruxStatus alignment(const void* interleaved) const
    {
        bool aligned = isAligned(interleaved, 16);
        for (size_t channel = 0; channel < number; ++channel) aligned = aligned && isAligned((*this)[channel], 16);
        return aligned ? ruxStatusOk : ruxStatusMisaligned;
    }

private:
    const uint8_t* array;
    size_t number;
};

using SourceChannels = Channels<const uint8_t>;
using DestinationChannels = Channels<uint8_t>;

void interleave(const SourceChannels& src, uint8_t* dst, size_t frames);
void deinterleave(const uint8_t* src, const DestinationChannels& dst, size_t frames);

inline ruxStatus channelChecks(const void* array, const void* interleaved, int32_t channels, int32_t frameLen)
{
    return firstFailure(pointers(array, interleaved), require(channels >= 1 && frameLen >= 1, ruxStatusSizeError));
}

}

ruxStatus RUXCALL ruxsInterleave_16s(const int16_t* const* src, int32_t channels, int32_t frameLen, int16_t* dst)
{
    if (auto failure = channelChecks(src, dst, channels, frameLen)) return failure;
    const SourceChannels from(src, channels);
    if (!from.isComplete()) return ruxStatusNullPointer;

    interleave(from, bytesOf(dst), static_cast<size_t>(frameLen));
    return from.alignment(dst);
}

ruxStatus RUXCALL ruxsDeinterleave_16s(const int16_t* src, int32_t channels, int32_t frameLen, int16_t* const* dst)
{
    if (auto failure = channelChecks(dst, src, channels, frameLen)) return failure;
    const DestinationChannels to(dst, channels);
    if (!to.isComplete()) return ruxStatusNullPointer;

    deinterleave(bytesOf(src), to, static_cast<size_t>(frameLen));
    return to.alignment(src);
}

}
