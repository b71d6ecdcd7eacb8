// The column stage of the vector levels' forward DCT, on as many columns as a vector holds.
#pragma once

#include "video/dct_coefficients.h"

namespace rux::RUX_LEVEL {
namespace {

// e0 and e1 of the sums of rows 0 and 7 and of rows 3 and 4, eight times as large. The level says whether it shifts
// before or after it adds: the two saturate at different places.
template <typename Words>
struct OuterSums {
    Words e0;
    Words e1;
};

template <typename Words>
OuterSums<Words> outerSums(Words s07, Words s34);

// rows[r] holds the samples of row r. Every sum saturates; shifts to the left wrap. The lowest bit that is set in rows
// 1, 2 and 6 and in m1 stands against the truncation of the high products.
template <typename Words>
inline void forwardColumns(Words (&rows)[8])
{
    const Words one = Words::broadcast(1);
    const OuterSums<Words> outer = outerSums(rows[0] + rows[7], rows[3] + rows[4]);
    const Words a16 = shiftedLeft<3>(rows[1] + rows[6]);
    const Words a25 = shiftedLeft<3>(rows[2] + rows[5]);
    const Words e2 = a16 + a25;
    const Words e3 = a16 - a25;

    const Words d07 = shiftedLeft<3>(rows[0] - rows[7]);
    const Words d34 = shiftedLeft<3>(rows[3] - rows[4]);
    const Words d16 = shiftedLeft<4>(rows[1] - rows[6]);
    const Words d25 = shiftedLeft<4>(rows[2] - rows[5]);
    const Words m1 = highProduct(d16 + d25, halfCosine4) | one;
    const Words m2 = highProduct(d16 - d25, halfCosine4);
    const Words p = d34 + m2;
    const Words q = d34 - m2;
    const Words u = d07 + m1;
    const Words v = d07 - m1;

    rows[0] = outer.e0 + e2;
    rows[4] = outer.e0 - e2;
    rows[2] = (highProduct(e3, tangent2) + outer.e1) | one;
    rows[6] = (highProduct(outer.e1, tangent2) - e3) | one;
    rows[1] = (highProduct(p, tangent1) + u) | one;
    rows[7] = highProduct(u, tangent1) - p;
    rows[3] = v - productOnePlus(q, tangent3LessOne);
    rows[5] = productOnePlus(v, tangent3LessOne) + q;
}

}
}
