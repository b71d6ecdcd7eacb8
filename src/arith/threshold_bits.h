// How px and m6 compare the floats of one channel: by their bits as integers.
//
// For numbers of one sign the order of the bits is the order of the numbers, turned round below zero; across the signs
// a signed comparison puts every set sign bit below every clear one. So the signs of the thresholds choose the tests.
#pragma once

#include "arith/threshold.h"

namespace rux::RUX_LEVEL {
namespace {

enum class Signs { bothBelowZero, lowerBelowZero, noneBelowZero };

// A threshold of -0.0 or NaN is not below zero.
inline bool isBelowZero(uint32_t threshold)
{
    return floatOf(threshold) < 0.0f;
}

template <Signs signs>
struct SignsChosen {
    static constexpr Signs value = signs;
};

template <typename Rows>
inline void chooseSigns(uint32_t thresholdLT, uint32_t thresholdGT, Rows rows)
{
    if (!isBelowZero(thresholdLT))
        rows(SignsChosen<Signs::noneBelowZero>());
    else if (!isBelowZero(thresholdGT))
        rows(SignsChosen<Signs::lowerBelowZero>());
    else
        rows(SignsChosen<Signs::bothBelowZero>());
}

// With a lower threshold alone only its sign matters.
template <typename Rows>
inline void chooseSign(uint32_t threshold, Rows rows)
{
    if (isBelowZero(threshold))
        rows(SignsChosen<Signs::lowerBelowZero>());
    else
        rows(SignsChosen<Signs::noneBelowZero>());
}

}
}
