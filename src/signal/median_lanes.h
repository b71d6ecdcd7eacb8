// Medians in vectors of samples: networks for masks 3 and 5, a sorted window that shifts in vectors for the others.
//
// The level gives Lanes, its vector of words with smaller and larger, and how its words move by one place. In place,
// what the next vector needs of the samples that an output overwrites is read before that output is stored.
#pragma once

#include "signal/median.h"
#include "signal/median_window.h"

namespace rux::RUX_LEVEL {
namespace {

// Words 1 and up of a vector, and word 0 of the one after it; the last word of the vector before, and words 0 and up.
Lanes advanced(Lanes vector, Lanes next);
Lanes retarded(Lanes previous, Lanes vector);

constexpr size_t lanes = Lanes::count;

inline void medianOfThreeInLanes(const uint8_t* src, uint8_t* dst, size_t samples)
{
    const Sample first = sampleAt(src, 0);
    Sample before = first;
    size_t i = 1;
    if (samples - i > lanes) {
        Lanes left = Lanes::load(src);
        for (bool more = true; more;) {
            uint8_t* const to = dst + i * 2;
            const Lanes medians = median(left, Lanes::load(src + i * 2), Lanes::load(src + i * 2 + 2));
            i += lanes;
            more = samples - i > lanes;
            before = sampleAt(src, i - 1);
            if (more) left = Lanes::load(src + i * 2 - 2);
            medians.store(to);
        }
    }
    medianOfThreeSingly(src, dst, i, samples, before);
    putSample(dst, 0, first);
}

// Place 1 singly: the place two before it reads as the first sample.
inline void medianOfFiveInLanes(const uint8_t* src, uint8_t* dst, size_t samples)
{
    const Sample first = sampleAt(src, 0);
    Sample second = first;
    Sample before = first;
    size_t i = 1;
    if (samples >= lanes + 4) {
        const Sample one = median(first, first, sampleAt(src, 2), sampleAt(src, 3), sampleAt(src, 1));
        Lanes left = Lanes::load(src);
        Lanes nearLeft = Lanes::load(src + 2);
        putSample(dst, 1, one);
        i = 2;
        for (bool more = true; more;) {
            const uint8_t* const from = src + i * 2;
            uint8_t* const to = dst + i * 2;
            const Lanes medians =
                median(left, nearLeft, Lanes::load(from + 2), Lanes::load(from + 4), Lanes::load(from));
            i += lanes;
            more = samples - i >= lanes + 2;
            second = sampleAt(src, i - 2);
            before = sampleAt(src, i - 1);
            if (more) {
                left = Lanes::load(src + i * 2 - 4);
                nearLeft = Lanes::load(src + i * 2 - 2);
            }
            medians.store(to);
        }
    }
    medianOfFiveSingly(src, dst, i, samples, second, before);
    putSample(dst, 0, first);
}

// The window in order, and above it the greatest word up to a whole vector.
//
// For a leaving o and an entering n: without o the window reads r[k] = s[k] where s[k] < o, else s[k + 1]; with n it
// is max(r[k - 1], min(n, r[k])). Beyond its ends stand the smallest and the greatest word. An o of the greatest word
// may leave from above the window: the words are the same.
class Replacement {
public:
    Replacement(Sample leaving, Sample entering)
        : leaving(Lanes::broadcast(leaving)), entering(Lanes::broadcast(entering)), before(Lanes::broadcast(INT16_MIN))
    {
    }

    // The vectors of a window one by one, from the lowest on.
    Lanes apply(Lanes vector, Lanes next)
    {
        const Lanes stays = isGreater(leaving, vector);
        const Lanes left = (vector & stays) | andNot(stays, advanced(vector, next));
        const Lanes replaced = larger(retarded(before, left), smaller(entering, left));
        before = left;
        return replaced;
    }

private:
    Lanes leaving;
    Lanes entering;
    Lanes before;
};

// Its words at first: the value, and above the window's end the greatest word.
inline void fillWindow(uint8_t* words, size_t count, size_t rounded, Sample value)
{
    for (size_t i = 0; i < rounded; ++i) putSample(words, i, i < count ? value : INT16_MAX);
}

// A window of one or two vectors, in registers. Its middle is in the first.
template <size_t vectors>
class ShortWindow {
public:
    ShortWindow(size_t count, Sample value) : middleWord(count / 2)
    {
        uint8_t words[vectors * sizeof(Lanes)];
        fillWindow(words, count, vectors * lanes, value);
        low = Lanes::load(words);
        high = vectors == 2 ? Lanes::load(words + sizeof words - sizeof(Lanes)) : Lanes::broadcast(INT16_MAX);
    }

    void replace(Sample leaving, Sample entering)
    {
        Replacement replacement(leaving, entering);
        low = replacement.apply(low, high);
        if (vectors == 2) high = replacement.apply(high, Lanes::broadcast(INT16_MAX));
    }

    Sample middle() const
    {
        uint8_t words[sizeof(Lanes)];
        low.store(words);
        return sampleAt(words, middleWord);
    }

private:
    Lanes low;
    Lanes high;
    size_t middleWord;
};

// A window of many, in memory; loaded and stored on the same places, so that no load waits for a store.
class LongWindow {
public:
    LongWindow(uint8_t* memory, size_t count, Sample value)
        : sorted(memory), last(memory + (count - 1) / lanes * sizeof(Lanes)), middleWord(count / 2)
    {
        fillWindow(sorted, count, (count + lanes - 1) / lanes * lanes, value);
    }

    void replace(Sample leaving, Sample entering)
    {
        Replacement replacement(leaving, entering);
        Lanes vector = Lanes::load(sorted);
        for (uint8_t* at = sorted; at != last; at += sizeof(Lanes)) {
            const Lanes next = Lanes::load(at + sizeof(Lanes));
            replacement.apply(vector, next).store(at);
            vector = next;
        }
        replacement.apply(vector, Lanes::broadcast(INT16_MAX)).store(last);
    }

    Sample middle() const { return sampleAt(sorted, middleWord); }

private:
    uint8_t* sorted;
    uint8_t* last;
    size_t middleWord;
};

inline void medianOfManyInLanes(uint8_t* dst, size_t samples, size_t mask, uint8_t* window, uint8_t* ring)
{
    const Sample first = sampleAt(dst, 0);
    if (mask <= lanes)
        slideMedian<int16_t>(dst, samples, mask, ShortWindow<1>(mask, first), ring);
    else if (mask <= 2 * lanes)
        slideMedian<int16_t>(dst, samples, mask, ShortWindow<2>(mask, first), ring);
    else
        slideMedian<int16_t>(dst, samples, mask, LongWindow(window, mask, first), ring);
}

}
}
