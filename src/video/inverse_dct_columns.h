// The column stage of the vector levels' inverse DCT, on as many columns as a vector holds.
#pragma once

#include "video/dct_coefficients.h"

namespace rux::RUX_LEVEL {
namespace {

// value * (1 + factor / 65536): a factor above 1/2 does not fit a signed word, so it is stored less one.
template <typename Words>
inline Words productOnePlus(Words value, int16_t factor)
{
    return highProduct(value, factor) + value;
}

// rows[r] holds the values of row r; every sum saturates. The final shift truncates: the rounding was added by the row
// stage.
template <typename Words>
inline void inverseColumns(Words (&rows)[8])
{
    const Words c = productOnePlus(rows[5], tangent3LessOne) + rows[3];
    const Words d = rows[5] - productOnePlus(rows[3], tangent3LessOne);
    const Words e = highProduct(rows[7], tangent1) + rows[1];
    const Words f = highProduct(rows[1], tangent1) - rows[7];
    const Words odd0 = c + e;
    const Words odd3 = f + d;
    const Words n = e - c;
    const Words o = f - d;
    const Words odd1 = productOnePlus(n + o, cosine4LessOne);
    const Words odd2 = productOnePlus(n - o, cosine4LessOne);

    const Words g = highProduct(rows[6], tangent2) + rows[2];
    const Words h = highProduct(rows[2], tangent2) - rows[6];
    const Words s = rows[0] + rows[4];
    const Words t = rows[0] - rows[4];
    const Words even0 = s + g;
    const Words even3 = s - g;
    const Words even1 = t + h;
    const Words even2 = t - h;

    rows[0] = shiftedRight<5>(even0 + odd0);
    rows[7] = shiftedRight<5>(even0 - odd0);
    rows[1] = shiftedRight<5>(even1 + odd1);
    rows[6] = shiftedRight<5>(even1 - odd1);
    rows[2] = shiftedRight<5>(even2 + odd2);
    rows[5] = shiftedRight<5>(even2 - odd2);
    rows[3] = shiftedRight<5>(even3 + odd3);
    rows[4] = shiftedRight<5>(even3 - odd3);
}

}
}
