// Half-pel predictions of the vector levels, row after row.
//
// Each class gives a row's prediction by next(), and has read by then what the mode names up to that row: a row below,
// a column to the right, and nothing else. What is shared by neighbouring rows is read and averaged once.
//
// With a, b to its right, c below and d below b, P0 = avg(a, b) and P1 = avg(c, d), where avg rounds up. A Rounding
// says how two neighbours meet, half(), and how the averages are brought lower before they do: above() on P0, below()
// on P1.
#pragma once

#include "video/half_pel.h"

namespace rux::RUX_LEVEL {
namespace {

// A row's prediction comes as samples or as words.
inline Samples8 asSamples(Samples8 row)
{
    return row;
}

inline Samples16 asSamples(Samples16 row)
{
    return row;
}

inline Samples8 asSamples(Words8 row)
{
    return packed(row);
}

inline Samples16 asSamples(Words16 row)
{
    return packed(row);
}

inline Words8 asWords(Samples8 row)
{
    return widened(row);
}

inline Words16 asWords(Samples16 row)
{
    return widened(row);
}

inline Words8 asWords(Words8 row)
{
    return row;
}

inline Words16 asWords(Words16 row)
{
    return row;
}

// The averages as they are.
struct RoundUp {
    template <typename Samples>
    static Samples half(Samples a, Samples b)
    {
        return average(a, b);
    }
    template <typename Samples>
    static Samples above(Samples p0)
    {
        return p0;
    }
    template <typename Samples>
    static Samples below(Samples p1)
    {
        return p1;
    }
};

template <typename Samples>
class FullPelRows {
public:
    explicit FullPelRows(Reference reference) : at(reference) {}
    Samples next()
    {
        const Samples a = Samples::load(at.samples);
        at.samples += at.stride;
        return a;
    }

private:
    Reference at;
};

template <typename Samples, typename Rounding>
class HalfHorizontalRows {
public:
    explicit HalfHorizontalRows(Reference reference) : at(reference) {}
    Samples next()
    {
        const Samples a = Samples::load(at.samples);
        const Samples b = Samples::load(at.samples + 1);
        at.samples += at.stride;
        return Rounding::half(a, b);
    }

private:
    Reference at;
};

template <typename Samples, typename Rounding>
class HalfVerticalRows {
public:
    explicit HalfVerticalRows(Reference reference) : at(reference), a(Samples::load(reference.samples)) {}
    Samples next()
    {
        at.samples += at.stride;
        const Samples c = Samples::load(at.samples);
        const Samples prediction = Rounding::half(a, c);
        a = c;
        return prediction;
    }

private:
    Reference at;
    Samples a;
};

template <typename Samples, typename Rounding>
class HalfBothRows {
public:
    explicit HalfBothRows(Reference reference) : at(reference), p0(averageOfRow()) {}
    Samples next() { return nextRounded<Rounding>(); }

    // A row with a rounding of its own.
    template <typename OwnRounding>
    Samples nextRounded()
    {
        at.samples += at.stride;
        const Samples p1 = averageOfRow();
        const Samples prediction = average(OwnRounding::above(p0), OwnRounding::below(p1));
        p0 = p1;
        return prediction;
    }

private:
    Samples averageOfRow() const { return average(Samples::load(at.samples), Samples::load(at.samples + 1)); }

    Reference at;
    Samples p0;
};

template <int mode, typename Samples, typename Rounding>
inline auto halfPelRows(Reference reference)
{
    if constexpr (mode == modeIndex(mcHalfVert)) return HalfVerticalRows<Samples, Rounding>(reference);
    else if constexpr (mode == modeIndex(mcHalfHorz)) return HalfHorizontalRows<Samples, Rounding>(reference);
    else if constexpr (mode == modeIndex(mcHalfBoth)) return HalfBothRows<Samples, Rounding>(reference);
    else return FullPelRows<Samples>(reference);
}

}
}
