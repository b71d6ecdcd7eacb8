#include "motion_code.h"

#include <cstdlib>

namespace {

struct ComponentCode {
    int code;       // -16 to 16
    int residual;   // of fCode - 1 bits, where the code is not 0
};

ComponentCode componentCode(int fCode, int difference)
{
    const int residualBits = fCode - 1, limit = 16 << residualBits;
    if (difference < -limit) difference += 2 * limit;
    if (difference >= limit) difference -= 2 * limit;
    if (difference == 0) return {0, 0};
    const int magnitude = std::abs(difference) - 1;
    const int code = (magnitude >> residualBits) + 1;
    return {difference < 0 ? -code : code, magnitude & ((1 << residualBits) - 1)};
}

int componentLength(const EncodeTables& tables, int fCode, int difference)
{
    const int code = componentCode(fCode, difference).code;
    return tables.motionCode[size_t(code + 16)].length + (code != 0 ? fCode - 1 : 0);
}

void writeComponent(BitWriter& bits, const EncodeTables& tables, int fCode, int difference)
{
    const ComponentCode component = componentCode(fCode, difference);
    bits.put(tables.motionCode[size_t(component.code + 16)]);
    if (component.code != 0) bits.put(uint32_t(component.residual), fCode - 1);
}

}

int fCodeFor(int reach)
{
    int fCode = 1;
    while (reach > (16 << (fCode - 1)) - 1) ++fCode;
    return fCode;
}

int vectorLength(const EncodeTables& tables, const int (&fCode)[2], MotionVector vector, MotionVector predicted)
{
    return componentLength(tables, fCode[0], vector.x - predicted.x) +
           componentLength(tables, fCode[1], vector.y - predicted.y);
}

void writeVector(BitWriter& bits, const EncodeTables& tables, const int (&fCode)[2], MotionVector vector,
                 MotionVector predicted)
{
    writeComponent(bits, tables, fCode[0], vector.x - predicted.x);
    writeComponent(bits, tables, fCode[1], vector.y - predicted.y);
}
