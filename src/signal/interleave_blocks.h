// Interleaving in tiles: as many frames as a vector holds samples, of eight, four or two channels.
//
// The level gives the tiles, and the loops over two channels, whose frames follow each other without a
// gap. A channel that is left alone goes sample by sample.
#pragma once

#include "signal/interleave_scalar.h"

namespace rux::RUX_LEVEL {
namespace {

// A tile from channels at an offset in bytes, onto frames; and back.
template <size_t width>
void interleaveTile(const SourceChannels& src, size_t channel, size_t offset, uint8_t* dst, size_t frameBytes);
template <size_t width>
void deinterleaveTile(const uint8_t* src, size_t frameBytes, const DestinationChannels& dst, size_t channel,
                      size_t offset);

// Blocks: eight frames of 16-byte vectors, four of 8-byte ones.
constexpr size_t blockFrames = thisLevel == w7::number ? 8 : 4;

// Whole blocks; where they are MMX's, the level holds its state around interleaveBlocks.
void interleaveWhole(const SourceChannels& src, uint8_t* dst, size_t frames);
void deinterleaveWhole(const uint8_t* src, const DestinationChannels& dst, size_t frames);
void interleaveTwo(const uint8_t* first, const uint8_t* second, uint8_t* dst, size_t frames);
void deinterleaveTwo(const uint8_t* src, uint8_t* first, uint8_t* second, size_t frames);

inline void interleaveBlocks(const SourceChannels& src, uint8_t* dst, size_t frames)
{
    const size_t channels = src.count();
    const size_t frameBytes = channels * 2;
    if (channels == 2) return interleaveTwo(src[0], src[1], dst, frames);

    for (size_t frame = 0; frame < frames; frame += blockFrames, dst += blockFrames * frameBytes) {
        size_t c = 0;
        if constexpr (blockFrames == 8)
            for (; channels - c >= 8; c += 8) interleaveTile<8>(src, c, frame * 2, dst + c * 2, frameBytes);
        for (; channels - c >= 4; c += 4) interleaveTile<4>(src, c, frame * 2, dst + c * 2, frameBytes);
        for (; channels - c >= 2; c += 2) interleaveTile<2>(src, c, frame * 2, dst + c * 2, frameBytes);
        if (c < channels) moveSamples(src[c] + frame * 2, 2, dst + c * 2, frameBytes, blockFrames);
    }
}

inline void deinterleaveBlocks(const uint8_t* src, const DestinationChannels& dst, size_t frames)
{
    const size_t channels = dst.count();
    const size_t frameBytes = channels * 2;
    if (channels == 2) return deinterleaveTwo(src, dst[0], dst[1], frames);

    for (size_t frame = 0; frame < frames; frame += blockFrames, src += blockFrames * frameBytes) {
        size_t c = 0;
        if constexpr (blockFrames == 8)
            for (; channels - c >= 8; c += 8) deinterleaveTile<8>(src + c * 2, frameBytes, dst, c, frame * 2);
        for (; channels - c >= 4; c += 4) deinterleaveTile<4>(src + c * 2, frameBytes, dst, c, frame * 2);
        for (; channels - c >= 2; c += 2) deinterleaveTile<2>(src + c * 2, frameBytes, dst, c, frame * 2);
        if (c < channels) moveSamples(src + c * 2, frameBytes, dst[c] + frame * 2, 2, blockFrames);
    }
}

void interleave(const SourceChannels& src, uint8_t* dst, size_t frames)
{
    if (src.count() == 1) return copyVector(src[0], dst, frames * 2);
    const size_t whole = frames & ~(blockFrames - 1);
    interleaveWhole(src, dst, whole);
    interleaveSingly(src, dst, whole, frames);
}

void deinterleave(const uint8_t* src, const DestinationChannels& dst, size_t frames)
{
    if (dst.count() == 1) return copyVector(src, dst[0], frames * 2);
    const size_t whole = frames & ~(blockFrames - 1);
    deinterleaveWhole(src, dst, whole);
    deinterleaveSingly(src, dst, whole, frames);
}

}
}
