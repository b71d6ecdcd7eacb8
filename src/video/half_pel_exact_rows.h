// Exact half-pel predictions of the vector levels, row after row, in words.
//
// next() and what it reads are as in video/half_pel_rows.h. Sums of four samples and 2 stay within words.
#pragma once

#include "video/half_pel_rows.h"

namespace rux::RUX_LEVEL {
namespace {

template <typename Samples>
using WordsOf = decltype(widened(Samples()));

// (a + b + 1 - r) >> 1
template <typename Samples>
class ExactHorizontalRows {
    using Words = WordsOf<Samples>;

public:
    ExactHorizontalRows(Reference reference, int32_t roundControl)
        : at(reference), addend(Words::broadcast(static_cast<int16_t>(1 - roundControl)))
    {
    }
    Words next()
    {
        const Words a = widened(Samples::load(at.samples));
        const Words b = widened(Samples::load(at.samples + 1));
        at.samples += at.stride;
        return shiftedRight<1>(a + b + addend);
    }

private:
    Reference at;
    Words addend;
};

// (a + c + 1 - r) >> 1
template <typename Samples>
class ExactVerticalRows {
    using Words = WordsOf<Samples>;

public:
    ExactVerticalRows(Reference reference, int32_t roundControl)
        : at(reference), addend(Words::broadcast(static_cast<int16_t>(1 - roundControl))),
          a(widened(Samples::load(reference.samples)))
    {
    }
    Words next()
    {
        at.samples += at.stride;
        const Words c = widened(Samples::load(at.samples));
        const Words prediction = shiftedRight<1>(a + c + addend);
        a = c;
        return prediction;
    }

private:
    Reference at;
    Words addend;
    Words a;
};

// (a + b + c + d + 2 - r) >> 2
template <typename Samples>
class ExactBothRows {
    using Words = WordsOf<Samples>;

public:
    ExactBothRows(Reference reference, int32_t roundControl)
        : at(reference), addend(Words::broadcast(static_cast<int16_t>(2 - roundControl))), above(sumOfRow())
    {
    }
    Words next()
    {
        at.samples += at.stride;
        const Words below = sumOfRow();
        const Words prediction = shiftedRight<2>(above + below + addend);
        above = below;
        return prediction;
    }

private:
    Words sumOfRow() const
    {
        return widened(Samples::load(at.samples)) + widened(Samples::load(at.samples + 1));
    }

    Reference at;
    Words addend;
    Words above;
};

template <int mode, typename Samples>
inline auto exactHalfPelRows(Reference reference, int32_t roundControl)
{
    if constexpr (mode == modeIndex(mcHalfVert)) return ExactVerticalRows<Samples>(reference, roundControl);
    else if constexpr (mode == modeIndex(mcHalfHorz)) return ExactHorizontalRows<Samples>(reference, roundControl);
    else if constexpr (mode == modeIndex(mcHalfBoth)) return ExactBothRows<Samples>(reference, roundControl);
    else return FullPelRows<Samples>(reference);
}

}
}
