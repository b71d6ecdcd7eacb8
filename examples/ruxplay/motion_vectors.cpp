#include "motion_vectors.h"

#include <cstdlib>

#include "errors.h"

namespace {

// One component: the prediction and the difference in the stream, wrapped into the range of the f_code.
int readComponent(BitReader& bits, const CodedPicture& picture, int fCode, int prediction)
{
    if (fCode < 1 || fCode > 9) throw Damage("a motion vector without a legal f_code");
    const int residualBits = fCode - 1;
    int delta = readCode(bits, picture.codes.motionCode, "motion code", 0);
    if (residualBits > 0 && delta != 0) {
        const int magnitude = ((std::abs(delta) - 1) << residualBits) + int(bits.read(residualBits)) + 1;
        delta = delta < 0 ? -magnitude : magnitude;
    }
    const int limit = 16 << residualBits;
    int component = prediction + delta;
    if (component < -limit) component += 2 * limit;
    if (component >= limit) component -= 2 * limit;
    return component;
}

// Half of a value; quarters of a sample are rounded away from zero.
int half(int value)
{
    return (value + (value > 0)) >> 1;
}

// The vectors of dual prime into the fields of opposite parity. The distance between the two fields that come first
// is one field time, between the others three; a line of the bottom field lies half a line below.
void deriveOpposite(const CodedPicture& picture, MotionVector same, MotionVector difference,
                    Macroblock& macroblock)
{
    const int timesOfTop = picture.header.topFieldFirst ? 1 : 3;
    const int timesOfBottom = 4 - timesOfTop;
    macroblock.opposite[0] = {half(same.x * timesOfTop) + difference.x, half(same.y * timesOfTop) + difference.y - 1};
    macroblock.opposite[1] = {half(same.x * timesOfBottom) + difference.x,
                              half(same.y * timesOfBottom) + difference.y + 1};
}

}

void MotionVectors::read(BitReader& bits, const CodedPicture& picture, int direction, Macroblock& macroblock)
{
    const bool fieldLines = macroblock.motionType != MotionType::frame;
    const bool dualPrime = macroblock.motionType == MotionType::dualPrime;
    const int count = macroblock.motionType == MotionType::field ? 2 : 1;
    const int* const fCode = picture.header.fCode[direction];

    for (int which = 0; which < count; ++which) {
        if (count == 2) macroblock.fromBottom[which][direction] = bits.flag();
        MotionVector& predictor = predictor_[which][direction];
        MotionVector difference;
        MotionVector vector;
        vector.x = readComponent(bits, picture, fCode[0], predictor.x);
        if (dualPrime) difference.x = readCode(bits, picture.codes.dmvector, "dual-prime difference");
        // Predictors count lines of the frame, vectors of fields lines of a field; both shifts round down.
        vector.y = readComponent(bits, picture, fCode[1], fieldLines ? predictor.y >> 1 : predictor.y);
        if (dualPrime) difference.y = readCode(bits, picture.codes.dmvector, "dual-prime difference");
        predictor = {vector.x, fieldLines ? vector.y * 2 : vector.y};
        macroblock.vector[which][direction] = vector;
        if (dualPrime) deriveOpposite(picture, vector, difference, macroblock);
    }
    if (count == 1) predictor_[1][direction] = predictor_[0][direction];
}
