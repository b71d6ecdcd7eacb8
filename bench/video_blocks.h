// Blocks to time with: those of coefficients, and those of pictures and what predicts them.
#pragma once

#include "image.h"
#include "ruxlib.h"

namespace rux::bench {

constexpr int32_t blockSide = 8, blockElements = 64;

// As many blocks of coefficients as an image of the size holds, one after another: few and small values away from the
// DC, as coded pictures have them.
class Blocks {
public:
    explicit Blocks(Size size)
        : count_(static_cast<size_t>(size.width / blockSide) * (size.height / blockSide)),
          image({blockElements, static_cast<int32_t>(count_)})
    {
        for (size_t i = 0; i < count_; ++i)
            for (int32_t k = 0; k < blockElements; ++k) {
                const int32_t frequency = k / blockSide + k % blockSide, range = 256 >> frequency;
                int16_t& value = block(i)[k];
                value = static_cast<int16_t>(range > 1 ? value % range : 0);
            }
    }

    size_t count() const { return count_; }
    size_t bytes() const { return image.bytes(); }
    int16_t* block(size_t i) const { return image.data() + i * blockElements; }

private:
    size_t count_;
    Image<int16_t> image;
};

// Calls `each` with the top-left column and row of every whole block of an image, in raster order.
template <typename Each>
void forBlocks(Size size, Size block, Each each)
{
    for (int32_t y = 0; y + block.height <= size.height; y += block.height)
        for (int32_t x = 0; x + block.width <= size.width; x += block.width) each(x, y);
}

template <typename Sample>
inline size_t offset(const Image<Sample>& image, int32_t x, int32_t y)
{
    return static_cast<size_t>(y) * (image.step() / sizeof(Sample)) + x;
}

// A reference image with room for half-pel neighbours; vectors point away from any boundary.
inline Size referenceSize(Size size)
{
    return {size.width + 16, size.height + 1};
}
constexpr int32_t forwardVector = 5, backwardVector = 10;

struct Mode {
    const char* name;
    ruxHalfPelMode value;
};
inline constexpr Mode modes[] = {
    {" full", mcFullPel}, {" half vert", mcHalfVert}, {" half horz", mcHalfHorz}, {" half both", mcHalfBoth}};

}
