// libavcodec's DCT, where it is installed: it works in place, so a block is brought in and taken out.
#pragma once

#ifdef RUX_WITH_AVCODEC
#include <cstring>
#include <memory>
#include <stdexcept>

extern "C" {
#include <libavcodec/avdct.h>
#include <libavutil/mem.h>
}

#include "video_blocks.h"

namespace rux::bench {

inline std::shared_ptr<AVDCT> avcodecDct()
{
    std::shared_ptr<AVDCT> dct(avcodec_dct_alloc(), [](AVDCT* context) { av_free(context); });
    if (!dct || avcodec_dct_init(dct.get()) < 0) throw std::runtime_error("libavcodec has no DCT");
    return dct;
}

inline Work avcodecForward(Size size)
{
    const auto dct = avcodecDct();
    const Blocks source(size), destination(size);
    return {2 * source.bytes(), [=] {
                for (size_t i = 0; i < source.count(); ++i) {
                    std::memcpy(destination.block(i), source.block(i), sizeof(int16_t) * blockElements);
                    dct->fdct(destination.block(i));
                }
            }};
}

inline Work avcodecForwardOfBytes(Size size)
{
    const auto dct = avcodecDct();
    const Image<uint8_t> source(size);
    const Blocks destination(size);
    return {source.bytes() + destination.bytes(), [=] {
                int16_t* block = destination.block(0);
                forBlocks(size, {blockSide, blockSide}, [&](int32_t x, int32_t y) {
                    dct->get_pixels(block, source.data() + static_cast<size_t>(y) * source.step() + x, source.step());
                    dct->fdct(block);
                    block += blockElements;
                });
            }};
}

inline Work avcodecInverse(Size size)
{
    const auto dct = avcodecDct();
    const Blocks source(size), permuted(size), destination(size);
    for (size_t i = 0; i < source.count(); ++i)
        for (int32_t k = 0; k < blockElements; ++k) permuted.block(i)[dct->idct_permutation[k]] = source.block(i)[k];
    return {2 * source.bytes(), [=] {
                for (size_t i = 0; i < permuted.count(); ++i) {
                    std::memcpy(destination.block(i), permuted.block(i), sizeof(int16_t) * blockElements);
                    dct->idct(destination.block(i));
                }
            }};
}

}
#define RUX_AVCODEC(work) "avcodec", work
#else
#define RUX_AVCODEC(work) "", nullptr
#endif
