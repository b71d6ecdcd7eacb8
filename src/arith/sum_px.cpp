// The sum, byte by byte: a row in two 32-bit numbers, for the even and the odd columns, the rows in double.
#include "arith/sum.h"

namespace rux::px {
namespace {

double sumImage(const uint8_t* src, int32_t srcStep, ruxiSize roiSize)
{
    double sum = 0.0;
    for (int32_t y = 0; y < roiSize.height; ++y, src += srcStep) {
        int32_t even = 0;
        int32_t odd = 0;
        const uint8_t* row = src;
        for (int32_t pairs = roiSize.width / 2; pairs > 0; --pairs, row += 2) {
            even += row[0];
            odd += row[1];
        }
        if (roiSize.width % 2 != 0) even += row[0];
        sum += even + odd;
    }
    return sum;
}

}
}
