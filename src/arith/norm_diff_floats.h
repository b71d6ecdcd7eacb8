// Norms of floats in single precision: lanes within a row, whose total is added in double or, under a mask, in single
// precision. A row has two vectors of four lanes, three vectors where there are three channels.
//
// The level gives masksOf.
#pragma once

#include "arith/norm_diff.h"
#include "lanes/four_floats.h"
#include "lanes/partial_bytes.h"

namespace rux::RUX_LEVEL {
namespace {

struct EightMasks {
    FourFloats low;
    FourFloats high;
};

// All bits set where one of eight bytes is not 0.
EightMasks masksOf(const uint8_t* bytes);

inline FourFloats operator+(FourFloats a, FourFloats b)
{
    return {_mm_add_ps(a.value, b.value)};
}

// |a - b|: the sign bit is cleared.
inline FourFloats absoluteDifference(FourFloats a, FourFloats b)
{
    return {_mm_andnot_ps(_mm_set1_ps(-0.0f), _mm_sub_ps(a.value, b.value))};
}

inline FourFloats differenceAt(const uint8_t* a, const uint8_t* b, size_t at)
{
    return absoluteDifference(FourFloats::load(a + at), FourFloats::load(b + at));
}

// Fewer than four floats, and zeros for the rest.
inline FourFloats lastDifferenceAt(const uint8_t* a, const uint8_t* b, size_t at, size_t bytes)
{
    return absoluteDifference(loadPartial<FourFloats>(a + at, bytes), loadPartial<FourFloats>(b + at, bytes));
}

// The sum of four lanes, in the lowest.
inline FourFloats reduced(FourFloats sums)
{
    const __m128 pairs = _mm_add_ps(sums.value, _mm_movehl_ps(sums.value, sums.value));
    return {_mm_add_ss(pairs, _mm_shuffle_ps(pairs, pairs, 1))};
}

struct RowTotals {
    uint8_t floats[16];
};

inline RowTotals sumRow1(const uint8_t* a, const uint8_t* b, size_t bytes)
{
    FourFloats low = {_mm_setzero_ps()};
    FourFloats high = low;
    size_t at = 0;
    for (; bytes - at >= 32; at += 32) {
        low = low + differenceAt(a, b, at);
        high = high + differenceAt(a, b, at + 16);
    }
    if (bytes - at >= 16) {
        low = low + differenceAt(a, b, at);
        at += 16;
    }
    if (at < bytes) high = high + lastDifferenceAt(a, b, at, bytes - at);

    RowTotals totals;
    reduced(low + high).storeOne(totals.floats);
    return totals;
}

// Four pixels of three channels stand in three vectors as x y z x, y z x y, z x y z.
inline RowTotals sumRow3(const uint8_t* a, const uint8_t* b, size_t bytes)
{
    FourFloats sums[3] = {{_mm_setzero_ps()}, {_mm_setzero_ps()}, {_mm_setzero_ps()}};
    size_t at = 0;
    for (; bytes - at >= 48; at += 48) {
        sums[0] = sums[0] + differenceAt(a, b, at);
        sums[1] = sums[1] + differenceAt(a, b, at + 16);
        sums[2] = sums[2] + differenceAt(a, b, at + 32);
    }
    for (int i = 0; at < bytes; at += 16, ++i)
        sums[i] = sums[i] + (bytes - at >= 16 ? differenceAt(a, b, at) : lastDifferenceAt(a, b, at, bytes - at));

    // Twelve lanes and one more: channel c is in the lanes c, c + 3, c + 6 and c + 9.
    uint8_t lanes[52] = {};
    for (int i = 0; i < 3; ++i) sums[i].store(lanes + i * 16);
    RowTotals totals;
    const FourFloats first = FourFloats::load(lanes) + FourFloats::load(lanes + 12);
    const FourFloats second = FourFloats::load(lanes + 24) + FourFloats::load(lanes + 36);
    (first + second).store(totals.floats);
    return totals;
}

inline RowTotals sumRow4(const uint8_t* a, const uint8_t* b, size_t bytes)
{
    FourFloats low = {_mm_setzero_ps()};
    FourFloats high = low;
    size_t at = 0;
    for (; bytes - at >= 32; at += 32) {
        low = low + differenceAt(a, b, at);
        high = high + differenceAt(a, b, at + 16);
    }
    if (at < bytes) low = low + differenceAt(a, b, at);

    RowTotals totals;
    (low + high).store(totals.floats);
    return totals;
}

template <Layout layout>
void sumFloatsFast(const ImagePair& images, double* norm)
{
    constexpr int channels = channelsOf(layout);
    constexpr int summed = summedChannelsOf(layout);
    const size_t bytes = static_cast<size_t>(images.roiSize.width) * channels * 4;
    double totals[summed] = {};
    images.forEachRow([&](const uint8_t* a, const uint8_t* b) {
        const RowTotals row = channels == 1 ? sumRow1(a, b, bytes) : channels == 3 ? sumRow3(a, b, bytes)
                                                                                   : sumRow4(a, b, bytes);
        for (int c = 0; c < summed; ++c) totals[c] += load<float>(row.floats + c * 4);
    });
    for (int c = 0; c < summed; ++c) store<double>(norm + c, totals[c]);
}

inline FourFloats sumMaskedRow(const uint8_t* a, const uint8_t* b, const uint8_t* m, size_t pixels)
{
    FourFloats low = {_mm_setzero_ps()};
    FourFloats high = low;
    size_t x = 0;
    for (; pixels - x >= 8; x += 8) {
        const EightMasks masks = masksOf(m + x);
        low = low + (differenceAt(a, b, x * 4) & masks.low);
        high = high + (differenceAt(a, b, x * 4 + 16) & masks.high);
    }
    if (x < pixels) {
        size_t left = pixels - x;
        uint8_t lastMasks[8] = {};
        copyFewBytes<8>(m + x, lastMasks, left);
        EightMasks masks = masksOf(lastMasks);
        if (left >= 4) {
            low = low + (differenceAt(a, b, x * 4) & masks.low);
            x += 4, left -= 4;
            masks.low = masks.high;
        }
        if (left > 0) high = high + (lastDifferenceAt(a, b, x * 4, left * 4) & masks.low);
    }
    return reduced(low + high);
}

// The total over the image is one single-precision number.
inline void sumMaskedImages(const ImagePair& images, Mask mask, float* total)
{
    __m128 sum = _mm_setzero_ps();
    const uint8_t* m = mask.mask;
    images.forEachRow([&](const uint8_t* a, const uint8_t* b) {
        sum = _mm_add_ss(sum, sumMaskedRow(a, b, m, static_cast<size_t>(images.roiSize.width)).value);
        m += mask.maskStep;
    });
    _mm_store_ss(total, sum);
}

}
}
