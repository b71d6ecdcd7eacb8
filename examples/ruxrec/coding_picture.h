// One picture in coding, and what coding its macroblocks needs to know.
#pragma once

#include <vector>

#include "encode_tables.h"
#include "macroblock.h"

// One vector for each macroblock, in raster order.
using MotionField = std::vector<MotionVector>;

struct CodingPicture : PredictedFrame {
    const Sequence& sequence;
    const EncodeTables& tables;
    const Frame& source;
    PictureHeader header;
    MotionField motion[2];   // forward, backward: the best vectors; empty where there is no reference

    int across() const { return sequence.macroblocksAcross(); }
    int down() const { return sequence.macroblocksDown(); }
    size_t index(int x, int y) const { return size_t(y) * size_t(across()) + size_t(x); }

    // Macroblock (x, y) of a plane of the source.
    const uint8_t* sourceAt(int plane, int x, int y) const
    {
        const int side = plane == 0 ? 16 : 8;
        return source[plane].samples + int64_t(y) * side * source[plane].step + x * side;
    }
};

constexpr int largestQuantiser = 31;

inline int16_t quantiserScale(int quantiser)
{
    return quantiserScales[0][quantiser];
}
