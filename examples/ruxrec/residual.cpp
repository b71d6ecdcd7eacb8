#include "residual.h"

bool isInsideReferences(const CodingPicture& picture, const Macroblock& macroblock)
{
    for (int direction = 0; direction < 2; ++direction) {
        if (!macroblock.predicted[direction]) continue;
        const Plane& plane = (*picture.reference[direction])[0];
        const MotionVector vector = macroblock.vector[0][direction];
        const int x = 32 * macroblock.x + vector.x, y = 32 * macroblock.y + vector.y;   // in half samples
        if (x < 0 || y < 0 || x > 2 * (plane.width - 16) || y > 2 * (plane.height - 16)) return false;
    }
    return true;
}

void makeResidual(const CodingPicture& picture, const Macroblock& macroblock, Residual& residual)
{
    for (int plane = 0; plane < 3; ++plane) {
        const int side = plane == 0 ? 16 : 8;
        PredictionSource sources[2];
        int32_t steps[2];
        int count = 0;
        for (int direction = 0; direction < 2; ++direction) {
            if (!macroblock.predicted[direction]) continue;
            const Plane& reference = (*picture.reference[direction])[plane];
            const MotionVector vector = macroblock.vector[0][direction];
            sources[count] = placeBlock(reference, wholeFrame, macroblock.x * side, macroblock.y * side, {side, side},
                                        plane == 0 ? vector : chromaVector(vector, picture.chromaFormat));
            steps[count++] = reference.step;
        }
        const uint8_t* const block = picture.sourceAt(plane, macroblock.x, macroblock.y);
        const int32_t step = picture.source[plane].step, targetStep = Residual::step(plane);
        int16_t* const target = residual.samples[plane];
        if (count == 2) {
            const auto difference = plane == 0 ? ruxiGetDiff16x16B_8u16s_C1 : ruxiGetDiff8x8B_8u16s_C1;
            difference(block, step, sources[0].samples, steps[0], sources[0].mode, sources[1].samples, steps[1],
                       sources[1].mode, target, targetStep, 0);
        } else {
            const auto difference = plane == 0 ? ruxiGetDiff16x16_8u16s_C1 : ruxiGetDiff8x8_8u16s_C1;
            difference(block, step, sources[0].samples, steps[0], target, targetStep, nullptr, 0, sources[0].mode, 0);
        }
    }
}
