// Norms of floats where the level has no float vectors: in double precision, whatever the hint.
#pragma once

#include "arith/norm_diff_double.h"

namespace rux::RUX_LEVEL {
namespace {

template <Layout layout>
void sumFloats(const ImagePair& images, double* norm, int32_t)
{
    sumInDouble<layout>(images, norm);
}

// A difference under a zero mask byte is not looked at: it may be a NaN.
inline double maskedDifference(const uint8_t* a, const uint8_t* b, const uint8_t* mask, int x)
{
    return mask[x] ? floatDifference(a + x * 4, b + x * 4) : 0.0;
}

// Four pixels are added up first, the rest of a row goes singly; the result is up to date after each addition.
void sumMaskedFloats(const ImagePair& images, Mask mask, double* norm)
{
    store<double>(norm, 0.0);
    const uint8_t* maskRow = mask.mask;
    images.forEachRow([&](const uint8_t* a, const uint8_t* b) {
        const uint8_t* m = maskRow;
        int32_t left = images.roiSize.width;
        for (; left >= 4; left -= 4, a += 16, b += 16, m += 4) {
            const double four = maskedDifference(a, b, m, 0) + maskedDifference(a, b, m, 1) +
                                maskedDifference(a, b, m, 2) + maskedDifference(a, b, m, 3);
            store<double>(norm, load<double>(norm) + four);
        }
        for (; left > 0; --left, a += 4, b += 4, ++m)
            store<double>(norm, load<double>(norm) + maskedDifference(a, b, m, 0));
        maskRow += mask.maskStep;
    });
}

}
}
