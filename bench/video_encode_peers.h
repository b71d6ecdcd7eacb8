// Peers of the encode road's block operations, where they are installed. A macro gives a peer's name and work, or
// nothing.
#pragma once

#include <stdexcept>

#include "video_blocks.h"

namespace rux::bench {

inline uint64_t measured;   // what measures give, so that no compiler drops them

// Measures of each 16x16 block of a picture against a block of its reference `vector` further to the right; the blocks
// begin `shift` to the right of a boundary.
template <typename Measure>
MakeWork measuring(int32_t shift, int32_t vector, Measure measure)
{
    return [=](Size size) {
        const Image<uint8_t> source(referenceSize(size)), reference(referenceSize(size));
        return Work{2 * static_cast<size_t>(size.width) * size.height, [=] {
                        forBlocks(size, {16, 16}, [&](int32_t x, int32_t y) {
                            measure(source.data() + offset(source, x + shift, y), source.step(),
                                    reference.data() + offset(reference, x + vector, y), reference.step());
                        });
                    }};
    };
}

}

#ifdef RUX_WITH_AVUTIL
extern "C" {
#include <libavutil/pixelutils.h>
}

namespace rux::bench {

// `aligned` tells how many of the two blocks, the source first, begin on a boundary.
inline MakeWork avutilAbsoluteDifferences(int32_t shift, int32_t vector, int aligned)
{
    const av_pixelutils_sad_fn sad = av_pixelutils_get_sad_fn(4, 4, aligned, nullptr);
    if (!sad) throw std::runtime_error("libavutil has no sum of absolute differences");
    return measuring(shift, vector, [sad](auto... arguments) { measured = static_cast<uint64_t>(sad(arguments...)); });
}

}
#define RUX_AVUTIL(...) "avutil", avutilAbsoluteDifferences(__VA_ARGS__)
#else
#define RUX_AVUTIL(...) "", nullptr
#endif

#ifdef RUX_WITH_LIBYUV
#include <libyuv.h>

namespace rux::bench {

inline MakeWork libyuvSquares(int32_t vector)
{
    return measuring(0, vector, [](const uint8_t* source, int step, const uint8_t* reference, int referenceStep) {
        measured = libyuv::ComputeSumSquareErrorPlane(source, step, reference, referenceStep, 16, 16);
    });
}

inline Work libyuvHalving(Size size)
{
    const Size half = {size.width / 2, size.height / 2};
    const Image<uint8_t> source(size), destination(half);
    return {source.bytes() + destination.bytes(), [=] {
                libyuv::ScalePlane(source.data(), source.step(), size.width, size.height, destination.data(),
                                   destination.step(), half.width, half.height, libyuv::kFilterBox);
            }};
}

}
#define RUX_LIBYUV_WORK(...) "libyuv", __VA_ARGS__
#else
#define RUX_LIBYUV_WORK(...) "", nullptr
#endif
