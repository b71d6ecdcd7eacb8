// The column stage of the vector levels' inverse DCT, on as many columns as a vector holds.
#pragma once

#include "video/dct_coefficients.h"

namespace rux::RUX_LEVEL {
namespace {

// A row of zeros, known when the code is compiled: what is summed with it or multiplied by it costs nothing.
struct ZeroRow {};

inline ZeroRow highProduct(ZeroRow, int16_t)
{
    return {};
}

inline ZeroRow operator+(ZeroRow, ZeroRow)
{
    return {};
}

template <typename Words>
inline Words operator+(Words a, ZeroRow)
{
    return a;
}

template <typename Words>
inline Words operator+(ZeroRow, Words a)
{
    return a;
}

template <typename Words>
inline Words operator-(Words a, ZeroRow)
{
    return a;
}

template <typename Words>
inline Words operator-(ZeroRow, Words a)
{
    return Words::broadcast(0) - a;
}

// From rows 0 to 3, and rows 4 to 7 as words or as rows of zeros, to all rows of samples. Every sum saturates. The
// final shift truncates: the rounding was added by the row stage.
template <typename Words, typename Lower>
inline void inverseColumns(Words (&rows)[8], Lower row4, Lower row5, Lower row6, Lower row7)
{
    const Words c = productOnePlus(row5, tangent3LessOne) + rows[3];
    const Words d = row5 - productOnePlus(rows[3], tangent3LessOne);
    const Words e = highProduct(row7, tangent1) + rows[1];
    const Words f = highProduct(rows[1], tangent1) - row7;
    const Words odd0 = c + e;
    const Words odd3 = f + d;
    const Words n = e - c;
    const Words o = f - d;
    const Words odd1 = productOnePlus(n + o, cosine4LessOne);
    const Words odd2 = productOnePlus(n - o, cosine4LessOne);

    const Words g = highProduct(row6, tangent2) + rows[2];
    const Words h = highProduct(rows[2], tangent2) - row6;
    const Words s = rows[0] + row4;
    const Words t = rows[0] - row4;
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

template <typename Words>
inline void inverseColumns(Words (&rows)[8])
{
    inverseColumns(rows, rows[4], rows[5], rows[6], rows[7]);
}

// Where rows 4 to 7 of the block are zeros.
template <typename Words>
inline void inverseUpperColumns(Words (&rows)[8])
{
    inverseColumns(rows, ZeroRow(), ZeroRow(), ZeroRow(), ZeroRow());
}

}
}
