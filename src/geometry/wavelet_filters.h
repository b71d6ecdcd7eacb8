// What the objects of the forward and the inverse wavelet are made of: cleared records and copied taps.
#pragma once

#include "frame/bytes.h"
#include "frame/checks.h"

// The taps of a column filter, laid out as the level's column pass reads them.
struct ruxWTTaps {
    float* taps;
    int32_t count;
};

namespace rux::RUX_LEVEL {
namespace {

// The widest block of columns of a band that the transforms work on at a time.
constexpr int32_t blockColumns = 256;

// A filter as the host gives it.
struct HostFilter {
    const float* taps;
    int32_t length;
    int32_t anchor;

    bool isLongEnough() const { return length >= 2; }
    bool holdsAnchor() const { return anchor >= 0 && anchor < length; }
};

// Every step-th tap of a host's filter; taps only move, as bits.
struct PickedTaps {
    const float* first;
    int32_t step;
    int32_t count;

    uint32_t operator[](int32_t index) const { return load<uint32_t>(first + static_cast<ptrdiff_t>(index) * step); }
};

inline PickedTaps allTaps(const HostFilter& filter)
{
    return {filter.taps, 1, filter.length};
}

template <typename Record>
inline void release(Record* record)
{
    RUX_LEVEL::ruxsFree(record);   // the level's, not the exported one
}

// Cleared memory for records, or null.
template <typename Record>
inline Record* makeRecords(int64_t count)
{
    const int64_t bytes = count * static_cast<int64_t>(sizeof(Record));
    if (bytes > INT32_MAX) return nullptr;
    uint8_t* const block = ruxsMalloc_8u(static_cast<int32_t>(bytes));
    if (block)
        for (int64_t i = 0; i < bytes; i += 4) store<uint32_t>(block + i, 0);
    return reinterpret_cast<Record*>(block);
}

// The taps as they stand.
inline float* copiedTaps(const PickedTaps& from)
{
    float* const taps = makeRecords<float>(from.count);
    if (taps)
        for (int32_t i = 0; i < from.count; ++i) store(taps + i, from[i]);
    return taps;
}

// The taps from the last to the first, each several times.
template <int32_t times>
inline float* reversedTaps(const PickedTaps& from)
{
    float* const taps = makeRecords<float>(static_cast<int64_t>(from.count) * times);
    if (taps)
        for (ptrdiff_t i = 0; i < static_cast<ptrdiff_t>(from.count) * times; ++i)
            store(taps + i, from[from.count - 1 - static_cast<int32_t>(i / times)]);
    return taps;
}

// The level's layout for its column pass.
float* makeColumnTaps(const PickedTaps& from);

inline bool isSound(const ruxWTTaps* record)
{
    return record && record->taps && record->count > 0;
}

inline void releaseTaps(ruxWTTaps* record)
{
    if (record) release(record->taps);
    release(record);
}

inline ruxWTTaps* makeTaps(const PickedTaps& from)
{
    ruxWTTaps* const record = makeRecords<ruxWTTaps>(1);
    if (record) *record = {makeColumnTaps(from), from.count};
    return record;
}

// Bytes of a row buffer of floats, whole 32-byte units.
inline int64_t paddedBytes(int64_t floats)
{
    return (floats * 4 + 31) & ~int64_t(31);
}

// Whether an int32 can tell the size of a work buffer of two rows.
inline bool bufferFits(int64_t firstRow, int64_t secondRow)
{
    return paddedBytes(firstRow) + secondRow * 4 <= INT32_MAX;
}

// A plane of floats.
template <typename Byte>
struct Floats {
    Byte* first;
    int32_t step;

    Byte* at(ptrdiff_t row, ptrdiff_t column) const { return first + row * step + column * 4; }
};
using ReadFloats = Floats<const uint8_t>;   // around its region too
using WrittenFloats = Floats<uint8_t>;

// Blocks of columns of a band as long as more columns remain, then one with the rest.
template <typename Action>
inline void forEachBlock(int32_t columns, Action action)
{
    int32_t column = 0;
    for (; columns - column > blockColumns; column += blockColumns) action(column, blockColumns);
    action(column, columns - column);
}

// A hint that a row is read or written soon; at px and m6 nothing.
void prefetchRow(const uint8_t* row, int32_t columns);

// Rows of a plane from the topmost that a column filter meets.
struct ColumnInput {
    const uint8_t* src;
    int32_t step;
    const ruxWTTaps* filter;
};

// The pass down the columns: from the top down the rows meet the taps from the last to the first. The sum of the first
// input replaces what stands in dst, those of further ones are added tap by tap.
template <typename... Inputs>
void filterColumns(float* dst, int32_t columns, const Inputs&... inputs);

template <typename Spec>
inline ruxStatus checkFilters(Spec** spec, const HostFilter& low, const HostFilter& high)
{
    return firstFailure(pointers(spec, low.taps, high.taps),
                        require(low.isLongEnough() && high.isLongEnough(), ruxStatusSizeError),
                        require(low.holdsAnchor() && high.holdsAnchor(), ruxStatusAnchor));
}

}
}
