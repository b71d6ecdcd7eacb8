// One level of the inverse wavelet transform.
//
// The operations stand here once; each level's files give the passes down the columns and along the rows.
#pragma once

#include "frame/float_environment.h"
#include "geometry/wavelet_filters.h"

// The taps that meet one parity of output rows, and how far the topmost and the lowest row lie from the output's.
struct ruxWTPhase {
    ruxWTTaps* taps;
    int32_t phaseAnchor;
    int32_t phaseBelow;
};

// Even and odd taps are reversed and laid out as the level's row pass reads them.
struct ruxWTSynthesisRowTaps {
    int32_t count;
    float* taps;
    float* even;
    int32_t evenCount;
    float* odd;
    int32_t oddCount;
};

struct ruxWTSynthesisFilter {
    ruxWTPhase* phaseForEvenRows;
    ruxWTPhase* phaseForOddRows;
    ruxWTSynthesisRowTaps* rowFilter;
    int32_t anchor;
    int32_t leftBorder;
    int32_t rightBorder;
    int32_t rowStart;
};

struct ruxWTInvSpec {
    int32_t magic;
    ruxWTSynthesisFilter* lowFilter;
    ruxWTSynthesisFilter* highFilter;
    int32_t lowBufferLength;    // floats
    int32_t highBufferLength;   // floats
    int32_t lowBufferBytes;     // whole 32-byte units
};

namespace rux::RUX_LEVEL {
namespace {

constexpr int32_t inverseMagic = 47;

// The level's layout of one parity's reversed taps.
float* makeReversedTaps(const PickedTaps& from);

// Every other sample of an output row: sample j is the sum of reversed[k] * src[j + k].
struct RowPhase {
    const float* src;
    const float* reversed;
    int32_t count;
};

// The phases that give the samples of a row in turn.
struct RowPhases {
    RowPhase first;
    RowPhase second;
};

// The pass along a row: the sums replace the samples or are added to them, and rounded once.
template <bool adding>
void filterRow(RowPhases phases, uint8_t* dst, int32_t samples);

inline bool isSound(const ruxWTPhase* phase)
{
    return phase && isSound(phase->taps) && phase->phaseAnchor >= 0 && phase->phaseBelow >= -1;
}

inline bool isSound(const ruxWTSynthesisRowTaps* row)
{
    return row && row->taps && row->count > 0 && row->even && row->evenCount > 0 && (!row->odd || row->oddCount > 0);
}

inline bool isSound(const ruxWTSynthesisFilter* filter)
{
    return filter && isSound(filter->phaseForEvenRows) && isSound(filter->phaseForOddRows) &&
           isSound(filter->rowFilter) && filter->anchor >= 0 && filter->leftBorder >= 0 && filter->rowStart >= 0;
}

inline bool isSound(const ruxWTInvSpec* spec)
{
    return load<int32_t>(&spec->magic) == inverseMagic && isSound(spec->lowFilter) && isSound(spec->highFilter);
}

inline void releasePhase(ruxWTPhase* phase)
{
    if (phase) releaseTaps(phase->taps);
    release(phase);
}

inline void releaseRowTaps(ruxWTSynthesisRowTaps* row)
{
    if (!row) return;
    release(row->taps);
    release(row->even);
    release(row->odd);
    release(row);
}

inline void releaseFilter(ruxWTSynthesisFilter* filter)
{
    if (!filter) return;
    releasePhase(filter->phaseForEvenRows);
    releasePhase(filter->phaseForOddRows);
    releaseRowTaps(filter->rowFilter);
    release(filter);
}

inline void releaseSpec(ruxWTInvSpec* spec)
{
    if (!spec) return;
    releaseFilter(spec->lowFilter);
    releaseFilter(spec->highFilter);
    release(spec);
}

inline PickedTaps evenTaps(const HostFilter& filter)
{
    return {filter.taps, 2, (filter.length + 1) / 2};
}

inline PickedTaps oddTaps(const HostFilter& filter)
{
    return {filter.taps + 1, 2, filter.length / 2};
}

inline ruxWTPhase* makePhase(const PickedTaps& taps, int32_t phaseAnchor)
{
    ruxWTPhase* const phase = makeRecords<ruxWTPhase>(1);
    if (phase) *phase = {makeTaps(taps), phaseAnchor, taps.count - phaseAnchor - 1};
    return phase;
}

inline ruxWTSynthesisRowTaps* makeRowTaps(const HostFilter& host)
{
    ruxWTSynthesisRowTaps* const row = makeRecords<ruxWTSynthesisRowTaps>(1);
    if (!row) return nullptr;
    *row = {host.length,
            copiedTaps(allTaps(host)),
            makeReversedTaps(evenTaps(host)),
            evenTaps(host).count,
            makeReversedTaps(oddTaps(host)),
            oddTaps(host).count};
    if (row->odd) return row;   // a sound filter may lack odd taps, but none that was made here
    releaseRowTaps(row);
    return nullptr;
}

// What cannot be had stays null, which makes the filter unsound. An output row n meets the taps t with n + anchor - t
// even.
inline ruxWTSynthesisFilter* makeFilter(const HostFilter& host)
{
    ruxWTSynthesisFilter* const filter = makeRecords<ruxWTSynthesisFilter>(1);
    if (!filter) return nullptr;
    const bool anchorIsOdd = host.anchor % 2 != 0;
    ruxWTPhase* const even = makePhase(evenTaps(host), (host.anchor + 1) / 2);
    ruxWTPhase* const odd = makePhase(oddTaps(host), host.anchor / 2);
    filter->phaseForEvenRows = anchorIsOdd ? odd : even;
    filter->phaseForOddRows = anchorIsOdd ? even : odd;
    filter->rowFilter = makeRowTaps(host);
    filter->anchor = host.anchor;
    filter->leftBorder = (host.length - host.anchor - 1) >> 1;
    filter->rightBorder = (host.anchor + 1) / 2;
    filter->rowStart = (anchorIsOdd ? host.length / 2 : (host.length + 1) / 2) - 1;
    return filter;
}

inline int32_t rowBufferLength(const ruxWTSynthesisFilter& filter)
{
    return filter.leftBorder + filter.rightBorder + blockColumns;
}

// Null where memory is missing, and where the work buffer would be larger than its size can tell.
inline ruxWTInvSpec* makeInverseSpec(const HostFilter& low, const HostFilter& high)
{
    ruxWTInvSpec* const spec = makeRecords<ruxWTInvSpec>(1);
    if (!spec) return nullptr;
    spec->magic = inverseMagic;
    spec->lowFilter = makeFilter(low);
    spec->highFilter = makeFilter(high);
    if (isSound(spec) && bufferFits(rowBufferLength(*spec->lowFilter), rowBufferLength(*spec->highFilter))) {
        spec->lowBufferLength = rowBufferLength(*spec->lowFilter);
        spec->highBufferLength = rowBufferLength(*spec->highFilter);
        spec->lowBufferBytes = static_cast<int32_t>(paddedBytes(spec->lowBufferLength));
        return spec;
    }
    releaseSpec(spec);
    return nullptr;
}

// The four bands: the first word is the vertical filter, the second the horizontal one.
struct Bands {
    ReadFloats lowLow;
    ReadFloats highLow;
    ReadFloats lowHigh;
    ReadFloats highHigh;
};

// What the vertical phase for output rows of one parity meets of a band, from the column where the row buffer of the
// horizontal filter begins.
inline ColumnInput inputOf(const ReadFloats& band, const ruxWTPhase& vertical, const ruxWTSynthesisFilter& horizontal,
                           int32_t i, int32_t column, int32_t width)
{
    prefetchRow(band.at(ptrdiff_t(i) + vertical.phaseAnchor + 1, column), width);
    return {band.at(ptrdiff_t(i) - vertical.phaseBelow, ptrdiff_t(column) - horizontal.leftBorder), band.step,
            vertical.taps};
}

// From rowStart down lie the elements that an output pair's even and odd taps meet, but with an odd anchor the even
// taps lie one element on; with an even anchor the even taps give the first sample of the pair.
inline RowPhases phasesOf(const float* rowBuffer, const ruxWTSynthesisFilter& horizontal)
{
    const ruxWTSynthesisRowTaps& row = *horizontal.rowFilter;
    const bool anchorIsOdd = horizontal.anchor % 2 != 0;
    const float* const behind = rowBuffer + horizontal.rowStart + 1;
    const RowPhase even = {behind - row.evenCount + (anchorIsOdd ? 1 : 0), row.even, row.evenCount};
    const RowPhase odd = {behind - row.oddCount, row.odd, row.oddCount};
    return anchorIsOdd ? RowPhases{odd, even} : RowPhases{even, odd};
}

// Not inlined: nothing is computed before the caller has set the stack's precision.
[[gnu::noinline]] void transform(const Bands& src, ruxiSize size, const WrittenFloats& dst, const ruxWTInvSpec& spec,
                                 uint8_t* buffer)
{
    const ruxWTSynthesisFilter& low = *spec.lowFilter;
    const ruxWTSynthesisFilter& high = *spec.highFilter;
    float* const lowRow = reinterpret_cast<float*>(buffer);
    float* const highRow = reinterpret_cast<float*>(buffer + spec.lowBufferBytes);
    forEachBlock(size.width, [&](int32_t column, int32_t width) {
        uint8_t* row = dst.at(0, ptrdiff_t(2) * column);
        const auto makeRow = [&](int32_t i, const ruxWTPhase& lowPhase, const ruxWTPhase& highPhase) {
            filterColumns(lowRow, low.leftBorder + low.rightBorder + width,
                          inputOf(src.lowLow, lowPhase, low, i, column, width),
                          inputOf(src.highLow, highPhase, low, i, column, width));
            prefetchRow(row + dst.step, 2 * width);
            filterRow<false>(phasesOf(lowRow, low), row, 2 * width);
            filterColumns(highRow, high.leftBorder + high.rightBorder + width,
                          inputOf(src.lowHigh, lowPhase, high, i, column, width),
                          inputOf(src.highHigh, highPhase, high, i, column, width));
            filterRow<true>(phasesOf(highRow, high), row, 2 * width);
            row += dst.step;
        };
        for (int32_t i = 0; i < size.height; ++i) {
            makeRow(i, *low.phaseForEvenRows, *high.phaseForEvenRows);
            makeRow(i, *low.phaseForOddRows, *high.phaseForOddRows);
        }
    });
}

}

ruxStatus RUXCALL ruxiWTInvInitAlloc_32f_C1R(ruxWTInvSpec** spec, const float* lowTaps, int32_t lowLength,
                                             int32_t lowAnchor, const float* highTaps, int32_t highLength,
                                             int32_t highAnchor)
{
    const HostFilter low = {lowTaps, lowLength, lowAnchor};
    const HostFilter high = {highTaps, highLength, highAnchor};
    if (auto failure = checkFilters(spec, low, high)) return failure;

    *spec = makeInverseSpec(low, high);
    return require(*spec, ruxStatusMemoryAllocated);
}

ruxStatus RUXCALL ruxiWTInvFree_32f_C1R(ruxWTInvSpec* spec)
{
    if (auto failure = firstFailure(pointers(spec))) return failure;
    if (auto failure = require(isSound(spec), ruxStatusContextMismatch)) return failure;

    releaseSpec(spec);
    return ruxStatusOk;
}

ruxStatus RUXCALL ruxiWTInvGetBufSize_C1R(const ruxWTInvSpec* spec, int32_t* size)
{
    if (auto failure = firstFailure(pointers(spec))) return failure;
    if (auto failure = firstFailure(require(isSound(spec), ruxStatusContextMismatch), pointers(size))) return failure;

    *size = spec->lowBufferBytes + spec->highBufferLength * 4;
    return ruxStatusOk;
}

ruxStatus RUXCALL ruxiWTInv_32f_C1R(const float* srcLowLow, int32_t stepLowLow, const float* srcHighLow,
                                    int32_t stepHighLow, const float* srcLowHigh, int32_t stepLowHigh,
                                    const float* srcHighHigh, int32_t stepHighHigh, ruxiSize srcRoiSize, float* dst,
                                    int32_t dstStep, const ruxWTInvSpec* spec, uint8_t* buffer)
{
    if (auto failure = firstFailure(pointers(spec, buffer))) return failure;
    if (auto failure = firstFailure(require(isSound(spec), ruxStatusContextMismatch),
                                    pointers(dst, srcLowLow, srcHighLow, srcLowHigh, srcHighHigh), sizes(srcRoiSize),
                                    steps(stepLowLow, stepHighLow, stepLowHigh, stepHighHigh, dstStep)))
        return failure;

    const DoublePrecision precision;
    transform({{bytesOf(srcLowLow), stepLowLow},
               {bytesOf(srcHighLow), stepHighLow},
               {bytesOf(srcLowHigh), stepLowHigh},
               {bytesOf(srcHighHigh), stepHighHigh}},
              srcRoiSize, {bytesOf(dst), dstStep}, *spec, buffer);
    return ruxStatusOk;
}

}
