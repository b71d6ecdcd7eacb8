#include "prediction.h"

#include "errors.h"

namespace {

using OneDirection = decltype(&ruxiMC16x16_8u_C1);
using TwoDirections = decltype(&ruxiMC16x16B_8u_C1);

struct Kernel {
    ruxiSize block;
    OneDirection one;
    TwoDirections two;
};

const Kernel luma[2] = {   // a frame's block, a field's block
    {{16, 16}, ruxiMC16x16_8u_C1, ruxiMC16x16B_8u_C1},
    {{16, 8}, ruxiMC16x8_8u_C1, ruxiMC16x8B_8u_C1},
};
const Kernel chroma420[2] = {
    {{8, 8}, ruxiMC8x8_8u_C1, ruxiMC8x8B_8u_C1},
    {{8, 4}, ruxiMC8x4_8u_C1, ruxiMC8x4B_8u_C1},
};
const Kernel chroma422[2] = {
    {{8, 16}, ruxiMC8x16_8u_C1, ruxiMC8x16B_8u_C1},
    {{8, 8}, ruxiMC8x8_8u_C1, ruxiMC8x8B_8u_C1},
};

// A prediction's source: a vector into a frame or into one of its fields.
struct Reference {
    const Frame* frame;
    int lines;
    MotionVector vector;
};

class Predictor {
public:
    Predictor(const PredictedFrame& picture, const Macroblock& macroblock, const Residual& residual)
        : picture_(picture), macroblock_(macroblock), residual_(residual)
    {
    }

    // One prediction, or the average of two, of all lines or those of one field.
    void run(int lines, const Reference& first, const Reference* second)
    {
        for (int plane = 0; plane < 3; ++plane) runPlane(plane, lines, first, second);
    }

private:
    MotionVector vectorOf(int plane, MotionVector vector) const
    {
        return plane == 0 ? vector : chromaVector(vector, picture_.chromaFormat);
    }

    void runPlane(int plane, int lines, const Reference& first, const Reference* second)
    {
        const bool fields = lines != wholeFrame;
        const Kernel* const shapes =
            plane == 0 ? luma : picture_.chromaFormat == ChromaFormat::yuv420 ? chroma420 : chroma422;
        const Kernel& kernel = shapes[fields];
        const int x = macroblock_.x * kernel.block.width;
        const int y = macroblock_.y * kernel.block.height;
        const Plane& target = (*picture_.frame)[plane];
        const int32_t step = fields ? 2 * target.step : target.step;
        uint8_t* const dst = target.samples + int64_t(y) * step + x + (lines == 1 ? target.step : 0);
        const int32_t rowStep = Residual::step(plane);
        const int16_t* const diff = residual_.samples[plane] + (lines == 1 ? rowStep / 2 : 0);
        const int32_t diffStep = fields ? 2 * rowStep : rowStep;

        const PredictionSource a =
            placeBlock((*first.frame)[plane], first.lines, x, y, kernel.block, vectorOf(plane, first.vector));
        if (!second) {
            kernel.one(a.samples, step, diff, diffStep, dst, step, a.mode, 0);
            return;
        }
        const PredictionSource b =
            placeBlock((*second->frame)[plane], second->lines, x, y, kernel.block, vectorOf(plane, second->vector));
        kernel.two(a.samples, step, a.mode, b.samples, step, b.mode, diff, diffStep, dst, step, 0);
    }

    const PredictedFrame& picture_;
    const Macroblock& macroblock_;
    const Residual& residual_;
};

const Residual noResidual = {};

const Frame* existing(const Frame* reference)
{
    if (!reference) throw Damage("a prediction from a picture that the stream does not hold");
    return reference;
}

}

PredictionSource placeBlock(const Plane& plane, int lines, int x, int y, ruxiSize block, MotionVector vector)
{
    const int halfX = vector.x & 1, halfY = vector.y & 1;
    x += vector.x >> 1;
    y += vector.y >> 1;
    const bool fields = lines != wholeFrame;
    const int height = fields ? plane.height / 2 : plane.height;
    if (x < 0 || y < 0 || x + block.width + halfX > plane.width || y + block.height + halfY > height)
        throw Damage("a motion vector points outside the picture");
    const int64_t row = fields ? 2 * int64_t(y) + lines : y;
    return {plane.samples + row * plane.step + x, halfX * mcHalfHorz + halfY * mcHalfVert};
}

void predict(const PredictedFrame& picture, const Macroblock& macroblock, const Residual* residual)
{
    Predictor predictor(picture, macroblock, residual ? *residual : noResidual);
    if (macroblock.motionType == MotionType::dualPrime) {
        const Frame* const frame = existing(picture.reference[0]);
        for (int field = 0; field < 2; ++field) {
            const Reference other = {frame, 1 - field, macroblock.opposite[field]};
            predictor.run(field, {frame, field, macroblock.vector[0][0]}, &other);
        }
        return;
    }
    const bool fields = macroblock.motionType == MotionType::field;
    for (int which = 0; which < (fields ? 2 : 1); ++which) {
        Reference references[2];
        int count = 0;
        for (int direction = 0; direction < 2; ++direction)
            if (macroblock.predicted[direction])
                references[count++] = {existing(picture.reference[direction]),
                                       fields ? int(macroblock.fromBottom[which][direction]) : wholeFrame,
                                       macroblock.vector[which][direction]};
        predictor.run(fields ? which : wholeFrame, references[0], count == 2 ? &references[1] : nullptr);
    }
}
