// Motion compensation of a macroblock with its residual (ISO/IEC 13818-2, 7.6.4 to 7.6.8).
#pragma once

#include <cstdint>

#include "macroblock.h"

constexpr int wholeFrame = -1;   // or 0, 1: the lines of the top, the bottom field

// Where a prediction reads.
struct PredictionSource {
    const uint8_t* samples;
    ruxHalfPelMode mode;
};

// Places a block in its reference plane. x and y are the block's own place, y in lines of frame or field; throws Damage
// when the vector leaves the plane.
PredictionSource placeBlock(const Plane& plane, int lines, int x, int y, ruxiSize block, MotionVector vector);

// The residual of the three planes in raster order: 16 wide for luma, 8 wide and as high as need be for chroma.
struct Residual {
    alignas(16) int16_t samples[3][16 * 16];

    static int32_t step(int plane) { return plane == 0 ? 32 : 16; }
};

// Predicts as the macroblock says and adds the residual, if there is one (null stands for none); throws Damage when a
// vector leaves the reference.
void predict(const PredictedFrame& picture, const Macroblock& macroblock, const Residual* residual);
