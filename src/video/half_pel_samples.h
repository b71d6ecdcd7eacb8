// Exact half-pel predictions of the vector levels for a roundControl of 0 and 1, row after row.
//
// next() and what it reads are as in video/half_pel_rows.h. A level includes video/half_pel_pairs_bytes.h or
// half_pel_pairs_words.h before: Pairs are a row's neighbours brought together, and quarterUp and quarterDown make a
// prediction of two rows of them, in samples or in words.
#pragma once

#include "video/half_pel_rows.h"

namespace rux::RUX_LEVEL {
namespace {

// roundControl 0
struct ExactUp : RoundUp {
    template <typename Pairs>
    static auto quarter(Pairs above, Pairs below)
    {
        return quarterUp(above, below);
    }
};

// roundControl 1. (a + b) >> 1 is the average of a and b less the bit in which they differ.
struct ExactDown : RoundUp {
    template <typename Samples>
    static Samples half(Samples a, Samples b)
    {
        return wrappingDifference(average(a, b), (a ^ b) & broadcastByte<Samples>(1));
    }
    template <typename Pairs>
    static auto quarter(Pairs above, Pairs below)
    {
        return quarterDown(above, below);
    }
};

template <typename Samples, typename Rounding>
class ExactPairRows {
public:
    explicit ExactPairRows(Reference reference) : at(reference), above(pairsOfRow()) {}
    auto next()
    {
        at.samples += at.stride;
        const auto below = pairsOfRow();
        const auto prediction = Rounding::quarter(above, below);
        above = below;
        return prediction;
    }

private:
    using Pairs = PairsOf<Samples>;

    Pairs pairsOfRow() const { return pairsOf(Samples::load(at.samples), Samples::load(at.samples + 1)); }

    Reference at;
    Pairs above;
};

template <int mode, typename Samples, typename Rounding>
inline auto exactSampleRows(Reference reference)
{
    if constexpr (mode == modeIndex(mcHalfBoth)) return ExactPairRows<Samples, Rounding>(reference);
    else return halfPelRows<mode, Samples, Rounding>(reference);
}

}
}
