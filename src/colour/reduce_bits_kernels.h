// How error diffusion spreads: each value receives the weighted errors of neighbours done before it.
//
// One formula serves doubles and vectors of floats. A vector of floats rounds each step, so that the order of the steps
// is part of the result there.
#pragma once

#include "frame/level.h"

namespace rux::RUX_LEVEL {
namespace {

//         . 7
//   1 5 3
struct FloydSteinberg {
    static constexpr int rowsAbove = 1;
    static constexpr float scale = 0.0625f;

    static int64_t workFloats(int64_t width) { return 2 * width + 4; }

    // up(i) and upTwo(i): the error i columns to the right, one and two rows up.
    template <typename Up, typename UpTwo>
    static auto fromAbove(Up up, UpTwo)
    {
        return (up(1) * 3.0f + up(-1)) + up(0) * 5.0f;
    }

    template <typename Number>
    static Number withLeft(Number above, Number, Number left)
    {
        return above + left * 7.0f;
    }
};

// Two rows up, one row up, the row itself: the outer and the inner columns have the same weight on both sides.
template <typename Weights>
struct TwoRowKernel : Weights {
    static constexpr int rowsAbove = 2;

    static int64_t workFloats(int64_t width) { return 3 * ((width + 3) & ~int64_t(3)) + 12; }

    template <typename Up, typename UpTwo>
    static auto fromAbove(Up up, UpTwo upTwo)
    {
        const auto fromUpTwo =
            ((upTwo(-2) + upTwo(2)) * Weights::upTwoOuter + (upTwo(-1) + upTwo(1)) * Weights::upTwoInner) +
            upTwo(0) * Weights::upTwoCentre;
        const auto fromUp = ((up(-2) + up(2)) * Weights::upOuter + (up(-1) + up(1)) * Weights::upInner) +
                            up(0) * Weights::upCentre;
        return fromUpTwo + fromUp;
    }

    template <typename Number>
    static Number withLeft(Number above, Number leftTwo, Number left)
    {
        return (above + leftTwo * Weights::leftTwo) + left * Weights::left;
    }
};

struct JarvisJudiceNinkeWeights {
    static constexpr float upTwoOuter = 1, upTwoInner = 3, upTwoCentre = 5;
    static constexpr float upOuter = 3, upInner = 5, upCentre = 7;
    static constexpr float leftTwo = 5, left = 7;
    static constexpr float scale = 0.02083333395421505f;
};

struct StuckiWeights {
    static constexpr float upTwoOuter = 1, upTwoInner = 2, upTwoCentre = 4;
    static constexpr float upOuter = 2, upInner = 4, upCentre = 8;
    static constexpr float leftTwo = 4, left = 8;
    static constexpr float scale = 0.02380952425301075f;
};

using JarvisJudiceNinke = TwoRowKernel<JarvisJudiceNinkeWeights>;
using Stucki = TwoRowKernel<StuckiWeights>;

}
}
