// One level of the forward wavelet transform.
//
// The operations stand here once; each level's files give the passes down the columns and along the rows.
#pragma once

#include "frame/float_environment.h"
#include "geometry/wavelet_filters.h"

struct ruxWTRowTaps {
    int32_t count;
    float* taps;
    float* reversed;   // laid out as the level's row pass reads them
};

struct ruxWTFilter {
    ruxWTTaps* columnFilter;
    ruxWTRowTaps* rowFilter;
    int32_t anchor;
    int32_t leftBorder;
    int32_t rightBorder;
};

struct ruxWTFwdSpec {
    int32_t magic;
    ruxWTFilter* lowFilter;
    ruxWTFilter* highFilter;
    int32_t rowBufferLength;   // floats
    int32_t rowBufferBytes;    // whole 32-byte units
    int32_t leftBorder;
    int32_t rightBorder;
};

namespace rux::RUX_LEVEL {
namespace {

constexpr int32_t forwardMagic = 46;

// The level's layout of reversed taps.
float* makeReversedTaps(const PickedTaps& from);

// The pass along a row: output j is the sum of g[t] * src[2 j + L - 1 - t].
void filterRow(const float* src, const ruxWTRowTaps& filter, uint8_t* dst, int32_t width);

inline bool isSound(const ruxWTFilter* filter)
{
    if (!filter || !isSound(filter->columnFilter)) return false;
    const ruxWTRowTaps* const row = filter->rowFilter;
    return row && row->taps && row->reversed && row->count > 0 && filter->anchor >= 0 && filter->leftBorder >= 0;
}

inline bool isSound(const ruxWTFwdSpec* spec)
{
    return load<int32_t>(&spec->magic) == forwardMagic && isSound(spec->lowFilter) && isSound(spec->highFilter) &&
           spec->leftBorder >= 0 && spec->rightBorder >= -1;
}

inline void releaseFilter(ruxWTFilter* filter)
{
    if (!filter) return;
    releaseTaps(filter->columnFilter);
    if (ruxWTRowTaps* const row = filter->rowFilter) {
        release(row->taps);
        release(row->reversed);
        release(row);
    }
    release(filter);
}

inline void releaseSpec(ruxWTFwdSpec* spec)
{
    if (!spec) return;
    releaseFilter(spec->lowFilter);
    releaseFilter(spec->highFilter);
    release(spec);
}

// What cannot be had stays null, which makes the filter unsound.
inline ruxWTFilter* makeFilter(const HostFilter& host)
{
    ruxWTFilter* const filter = makeRecords<ruxWTFilter>(1);
    if (!filter) return nullptr;
    filter->columnFilter = makeTaps(allTaps(host));
    filter->rowFilter = makeRecords<ruxWTRowTaps>(1);
    if (filter->rowFilter)
        *filter->rowFilter = {host.length, copiedTaps(allTaps(host)), makeReversedTaps(allTaps(host))};
    filter->anchor = host.anchor;
    filter->leftBorder = host.length - host.anchor - 1;
    filter->rightBorder = host.anchor - 1;
    return filter;
}

inline int32_t larger(int32_t a, int32_t b)
{
    return a > b ? a : b;
}

// Null where memory is missing, and where the work buffer would be larger than its size can tell.
inline ruxWTFwdSpec* makeForwardSpec(const HostFilter& low, const HostFilter& high)
{
    ruxWTFwdSpec* const spec = makeRecords<ruxWTFwdSpec>(1);
    if (!spec) return nullptr;
    spec->magic = forwardMagic;
    spec->lowFilter = makeFilter(low);
    spec->highFilter = makeFilter(high);
    if (isSound(spec)) {
        spec->leftBorder = larger(spec->lowFilter->leftBorder, spec->highFilter->leftBorder);
        spec->rightBorder = larger(spec->lowFilter->rightBorder, spec->highFilter->rightBorder);
        const int64_t length = int64_t(spec->leftBorder) + spec->rightBorder + 2 * blockColumns;
        if (bufferFits(length, length)) {
            spec->rowBufferLength = static_cast<int32_t>(length);
            spec->rowBufferBytes = static_cast<int32_t>(paddedBytes(length));
            return spec;
        }
    }
    releaseSpec(spec);
    return nullptr;
}

// The bands of one vertical filter.
struct BandPair {
    WrittenFloats low;
    WrittenFloats high;
};

// Not inlined: nothing is computed before the caller has set the stack's precision. Both passes down the columns of an
// output row come first: a band may stand where the source's rows were.
[[gnu::noinline]] void transform(const ReadFloats& src, const ruxWTFwdSpec& spec, const BandPair& low,
                                 const BandPair& high, ruxiSize size, uint8_t* buffer)
{
    float* const lowRow = reinterpret_cast<float*>(buffer);
    float* const highRow = reinterpret_cast<float*>(buffer + spec.rowBufferBytes);
    forEachBlock(size.width, [&](int32_t column, int32_t width) {
        const auto passDown = [&](const ruxWTFilter& vertical, float* row, int32_t y) {
            filterColumns(row, spec.leftBorder + spec.rightBorder + 2 * width,
                          ColumnInput{src.at(ptrdiff_t(2) * y - vertical.leftBorder,
                                             ptrdiff_t(2) * column - spec.leftBorder),
                                      src.step, vertical.columnFilter});
        };
        const auto passAlong = [&](const float* row, const ruxWTFilter& horizontal, const WrittenFloats& band,
                                   int32_t y) {
            prefetchRow(band.at(y + 1, column), width);
            filterRow(row + spec.leftBorder - horizontal.leftBorder, *horizontal.rowFilter, band.at(y, column), width);
        };
        for (int32_t y = 0; y < size.height; ++y) {
            const ptrdiff_t ahead = ptrdiff_t(2) * y + spec.rightBorder + 2;   // first of two that come in
            prefetchRow(src.at(ahead, ptrdiff_t(2) * column), 2 * width);
            passDown(*spec.lowFilter, lowRow, y);
            prefetchRow(src.at(ahead + 1, ptrdiff_t(2) * column), 2 * width);
            passDown(*spec.highFilter, highRow, y);
            passAlong(lowRow, *spec.lowFilter, low.low, y);
            passAlong(lowRow, *spec.highFilter, low.high, y);
            passAlong(highRow, *spec.lowFilter, high.low, y);
            passAlong(highRow, *spec.highFilter, high.high, y);
        }
    });
}

}

ruxStatus RUXCALL ruxiWTFwdInitAlloc_32f_C1R(ruxWTFwdSpec** spec, const float* lowTaps, int32_t lowLength,
                                             int32_t lowAnchor, const float* highTaps, int32_t highLength,
                                             int32_t highAnchor)
{
    const HostFilter low = {lowTaps, lowLength, lowAnchor};
    const HostFilter high = {highTaps, highLength, highAnchor};
    if (auto failure = checkFilters(spec, low, high)) return failure;

    *spec = makeForwardSpec(low, high);
    return require(*spec, ruxStatusMemoryAllocated);
}

ruxStatus RUXCALL ruxiWTFwdFree_32f_C1R(ruxWTFwdSpec* spec)
{
    if (auto failure = firstFailure(pointers(spec))) return failure;
    if (auto failure = require(isSound(spec), ruxStatusContextMismatch)) return failure;

    releaseSpec(spec);
    return ruxStatusOk;
}

ruxStatus RUXCALL ruxiWTFwdGetBufSize_C1R(const ruxWTFwdSpec* spec, int32_t* size)
{
    if (auto failure = firstFailure(pointers(spec))) return failure;
    if (auto failure = firstFailure(require(isSound(spec), ruxStatusContextMismatch), pointers(size))) return failure;

    *size = spec->rowBufferBytes + spec->rowBufferLength * 4;
    return ruxStatusOk;
}

ruxStatus RUXCALL ruxiWTFwd_32f_C1R(const float* src, int32_t srcStep, float* dstLowLow, int32_t stepLowLow,
                                    float* dstHighLow, int32_t stepHighLow, float* dstLowHigh, int32_t stepLowHigh,
                                    float* dstHighHigh, int32_t stepHighHigh, ruxiSize dstRoiSize,
                                    const ruxWTFwdSpec* spec, uint8_t* buffer)
{
    if (auto failure = firstFailure(pointers(spec))) return failure;
    if (auto failure = firstFailure(require(isSound(spec), ruxStatusContextMismatch),
                                    pointers(buffer, src, dstLowLow, dstHighLow, dstLowHigh, dstHighHigh),
                                    sizes(dstRoiSize),
                                    steps(srcStep, stepLowLow, stepHighLow, stepLowHigh, stepHighHigh)))
        return failure;

    const DoublePrecision precision;
    transform({bytesOf(src), srcStep}, *spec,
              {{bytesOf(dstLowLow), stepLowLow}, {bytesOf(dstLowHigh), stepLowHigh}},
              {{bytesOf(dstHighLow), stepHighLow}, {bytesOf(dstHighHigh), stepHighHigh}}, dstRoiSize, buffer);
    return ruxStatusOk;
}

}
