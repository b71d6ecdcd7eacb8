// The box filter over vectors of words: column sums in words where the mask's area allows, in double words elsewhere.
//
// The level gives, before it includes this header, the lane Words and
//   runningSums(w)              w0, w0 + w1, w0 + w1 + w2, ...; runningSums32 the same in double words
//   lastWord(w)                 the last word everywhere; lastDoubleWord the same
//   HighProduct(factor)(w)      high words of the unsigned products with a factor of at most 16 bits
//   ShiftWords(count)(w)        words shifted right, and .arithmetic(w)
//   firstInt32(w)               the first double word
#pragma once

#include "filter/box_scalar.h"
#include "filter/word_sums.h"

namespace rux::RUX_LEVEL {
namespace {

inline uint16_t* wordSums(const Columns& columns)
{
    return reinterpret_cast<uint16_t*>(columns.sums);
}

// (s * factor) >> shift for sums of one word. Up to a shift of 16, s * factor / 2^shift is
// s * (factor * 2^(16 - shift)) / 2^16; above, the rest is shifted after. factor / 2^shift is about 1 / area with an
// area of 4 or more, so no factor becomes more than 2^14.
class WordMean {
public:
    explicit WordMean(Reciprocal reciprocal)
        : reciprocal(reciprocal), product(static_cast<uint16_t>(reciprocal.factor << places(16 - reciprocal.shift))),
          shift(places(reciprocal.shift - 16))
    {
    }
    Words operator()(Words sums) const { return shift.logical(product(sums)); }
    uint8_t operator()(int32_t sum) const { return meanOf(sum, reciprocal); }

private:
    static int32_t places(int32_t count) { return count > 0 ? count : 0; }

    Reciprocal reciprocal;
    HighProduct product;
    ShiftWords shift;
};

// (s * factor) >> shift for sums of double words, at a shift from 16 to 31: the low 8 bits come from the product's
// high word, high(low word of s * factor) + low(high word of s * factor), which wraps as the product does.
class DoubleWordMean {
public:
    explicit DoubleWordMean(Reciprocal reciprocal)
        : product(static_cast<uint16_t>(reciprocal.factor)),
          factor(Words::broadcast(static_cast<int16_t>(reciprocal.factor))),
          shift(reciprocal.shift - 16)
    {
    }
    static bool fits(Reciprocal reciprocal) { return reciprocal.shift >= 16 && reciprocal.shift <= 31; }

    Words operator()(Words sums) const
    {
        const Words high = wrappingSum(product(sums), highWordsDown(lowProduct(sums, factor)));
        return shift.arithmetic(high) & lowBytesOfDoubleWords();
    }

private:
    HighProduct product;
    Words factor;
    ShiftWords shift;
};

// A change fits a signed word.
inline void changeDoubleWords(int32_t* sums, Words change)
{
    const Words sign = shiftedRight<15>(change);
    const Words low = interleaveLowWords(change, sign);
    const Words high = interleaveHighWords(change, sign);
    constexpr int half = Words::count / 2;
    doubleWordSum(Words::load(sums), low).store(sums);
    doubleWordSum(Words::load(sums + half), high).store(sums + half);
}

template <typename Change>
inline size_t changeDoubleWordSums(int32_t* sums, size_t count, Change change)
{
    size_t i = 0;
    for (; i + stepPixels <= count; i += stepPixels) {
        const auto changes = change(i);
        changeDoubleWords(sums + i, changes.low);
        changeDoubleWords(sums + i + Words::count, changes.high);
    }
    return i;
}

inline void addRowInLanes(const Columns& columns, const uint8_t* row)
{
    if (columns.fitWords) return addToWordSums(wordSums(columns), row, columns.count);
    const size_t done = changeDoubleWordSums(columns.sums, columns.count, [=](size_t i) { return widened(row + i); });
    addFrom(columns.sums, row, done, columns.count);
}

inline void exchangeRowInLanes(const Columns& columns, const uint8_t* entering, const uint8_t* leaving)
{
    if (columns.fitWords) return exchangeInWordSums(wordSums(columns), entering, leaving, columns.count);
    const size_t done = changeDoubleWordSums(columns.sums, columns.count, [=](size_t i) {
        return difference(widened(entering + i), widened(leaving + i));
    });
    exchangeFrom(columns.sums, entering, leaving, done, columns.count);
}

// A step costs more than so many pixels singly.
constexpr ptrdiff_t fewPixels = 8;

// The mask's sum moves on by the column that enters less the one that leaves: from the sum of one pixel, the next
// ones' are that sum and the running sums of these differences. So the first pixel stands alone, and a step reads no
// column beyond the last. From lane to lane only the running sums' last is carried. The last step may lie over its
// neighbour: the sum goes back to where it begins.
inline void filterWordSums(const Columns& columns, const uint16_t* sums, uint8_t* dst)
{
    const WordMean mean(columns.reciprocal);
    const uint16_t* const entering = sums + columns.maskWidth;
    int32_t sum = sumOfFirstMask(columns, sums);
    dst[0] = mean(sum);

    Words last = Words::broadcast(static_cast<int16_t>(sum));
    const auto nextMeans = [&](ptrdiff_t x) {
        const Words running = runningSums(wrappingDifference(Words::load(entering + x), Words::load(sums + x)));
        const Words maskSums = wrappingSum(last, running);
        last = wrappingSum(last, lastWord(running));
        return mean(maskSums);
    };
    const ptrdiff_t end = columns.width - stepPixels;
    ptrdiff_t x = 0;
    for (; x < end; x += stepPixels) {
        const Words low = nextMeans(x);
        const Words high = nextMeans(x + Words::count);
        packBytes(low, high).store(dst + x + 1);
    }
    sum = firstInt32(last) & 0xFFFF;
    if (stepPixels <= fewPixels || x == 0 || columns.width - 1 - x <= fewPixels)
        return filterBehind(columns, sums, dst, static_cast<int32_t>(x), sum);

    for (; x >= end; --x) sum += sums[x - 1] - entering[x - 1];
    last = Words::broadcast(static_cast<int16_t>(sum));
    const Words low = nextMeans(x);
    const Words high = nextMeans(x + Words::count);
    packBytes(low, high).store(dst + x + 1);
}

inline void filterDoubleWordSums(const Columns& columns, const int32_t* sums, uint8_t* dst)
{
    const DoubleWordMean mean(columns.reciprocal);
    const int32_t* const entering = sums + columns.maskWidth;
    const int32_t first = sumOfFirstMask(columns, sums);
    dst[0] = meanOf(first, columns.reciprocal);

    Words last = broadcastInt32(first);
    const auto nextMeans = [&](ptrdiff_t x) {
        const Words running = runningSums32(doubleWordDifference(Words::load(entering + x), Words::load(sums + x)));
        const Words maskSums = doubleWordSum(last, running);
        last = doubleWordSum(last, lastDoubleWord(running));
        return mean(maskSums);
    };
    constexpr int lane = Words::count / 2;
    const ptrdiff_t end = columns.width - stepPixels;
    ptrdiff_t x = 0;
    for (; x < end; x += stepPixels) {
        const Words a = nextMeans(x);
        const Words b = nextMeans(x + lane);
        const Words c = nextMeans(x + 2 * lane);
        const Words d = nextMeans(x + 3 * lane);
        packBytes(packWords(a, b), packWords(c, d)).store(dst + x + 1);
    }
    filterBehind(columns, sums, dst, static_cast<int32_t>(x), firstInt32(last));
}

// A narrow mask's columns are added each time: running sums would take longer.
inline void filterWords(const Columns& columns, const uint16_t* sums, uint8_t* dst)
{
    const WordMean mean(columns.reciprocal);
    switch (columns.maskWidth) {
    case 2: return filterNeighbours<2>(mean, sums, dst, columns.width);
    case 3: return filterNeighbours<3>(mean, sums, dst, columns.width);
    case 4: return filterNeighbours<4>(mean, sums, dst, columns.width);
    case 5: return filterNeighbours<5>(mean, sums, dst, columns.width);
    case 6: return filterNeighbours<6>(mean, sums, dst, columns.width);
    default: return filterWordSums(columns, sums, dst);
    }
}

inline void filterColumnsInLanes(const Columns& columns, uint8_t* dst)
{
    if (columns.fitWords)
        filterWords(columns, wordSums(columns), dst);
    else if (DoubleWordMean::fits(columns.reciprocal))
        filterDoubleWordSums(columns, columns.sums, dst);
    else
        filterColumnsSingly(columns, columns.sums, dst);
}

}
}
