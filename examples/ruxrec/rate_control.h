// Which quantiser each macroblock gets.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

#include "syntax.h"

class RateControl {
public:
    virtual ~RateControl() = default;

    // The quantiser that the picture begins with, 1 to 31.
    virtual int beginPicture(PictureType type) = 0;

    // Of a slice that begins with the macroblock, and of a macroblock within it.
    virtual int sliceQuantiser(size_t macroblock, size_t bitsOfPicture) = 0;
    virtual int macroblockQuantiser(size_t macroblock, size_t bitsOfPicture) = 0;
    virtual void endPicture(size_t bits) = 0;
};

struct GroupShape {
    int length = 0;      // pictures from one I picture to the next
    int bPictures = 0;   // between reference pictures
};

std::unique_ptr<RateControl> constantQuantiser(int quantiser);

// bitRate in bits a second.
std::unique_ptr<RateControl> targetRate(int64_t bitRate, const Sequence& sequence, GroupShape shape);
