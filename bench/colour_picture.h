// Pictures of the colour conversions: one plane of pixels, or three planes whose chroma is halved.
#pragma once

#include "image.h"
#include "ruxlib.h"

namespace rux::bench {

enum class Layout {
    rgb24,       // three bytes a pixel
    rgb32,       // four
    rgb16,       // a 16-bit word
    packed422,   // Y0, Cb, Y1, Cr for a pair
    planar422,
    planar420
};

class Picture {
public:
    Picture(Layout layout, Size size) : size_(size)
    {
        const int32_t half = (size.width + 1) / 2;
        switch (layout) {
        case Layout::rgb24: addPlane({size.width * 3, size.height}); break;
        case Layout::rgb32: addPlane({size.width * 4, size.height}); break;
        case Layout::rgb16: addPlane({size.width * 2, size.height}); break;
        case Layout::packed422: addPlane({half * 4, size.height}); break;
        case Layout::planar422: addPlanes(half, size.height); break;
        case Layout::planar420: addPlanes(half, (size.height + 1) / 2); break;
        }
    }

    uint8_t* const* planes() const { return planes_; }
    const int32_t* steps() const { return steps_; }
    ruxiSize size() const { return {size_.width, size_.height}; }

    size_t bytes() const
    {
        size_t sum = 0;
        for (const Image<uint8_t>& image : images) sum += image.bytes();
        return sum;
    }

private:
    void addPlane(Size bytes)
    {
        images.emplace_back(bytes);
        planes_[images.size() - 1] = images.back().data();
        steps_[images.size() - 1] = images.back().step();
    }
    void addPlanes(int32_t chromaWidth, int32_t chromaHeight)
    {
        addPlane(size_);
        addPlane({chromaWidth, chromaHeight});
        addPlane({chromaWidth, chromaHeight});
    }

    Size size_;
    std::vector<Image<uint8_t>> images;
    uint8_t* planes_[4] = {};
    int32_t steps_[4] = {};
};

// The work of a conversion: `call` takes the pictures.
template <typename Call>
MakeWork conversion(Layout from, Layout to, Call call)
{
    return [=](Size size) {
        const Picture source(from, size), destination(to, size);
        return Work{source.bytes() + destination.bytes(), [=] { call(source, destination); }};
    };
}

}
