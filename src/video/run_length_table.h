// The table by which a pair of run and level is written, and its builder.
//
// Word 0 holds the greatest run in its upper 12 bits. Word 1 + run is the byte offset of the run's centre, which holds
// the greatest |level| of the run; at centre + level stand the code and its length.
#pragma once

#include "video/code_list.h"

namespace rux::RUX_LEVEL {
namespace {

constexpr int32_t maxRunShift = 20;   // below it the forms of the escape and the end of block
constexpr int32_t mostRunOfBlock = 63;
constexpr int32_t mostMagnitude = 32768;

class EncodeTable {
public:
    explicit EncodeTable(const uint32_t* table)
        : table(table), maxRun(static_cast<int32_t>(load<uint32_t>(table) >> maxRunShift))
    {
    }

    bool find(int32_t run, int32_t level, uint32_t& entry) const
    {
        if (run > maxRun) return false;
        const uint8_t* const centre = bytesOf(table) + load<int32_t>(table + 1 + run);
        if ((level < 0 ? -level : level) > load<int32_t>(centre)) return false;
        entry = load<uint32_t>(centre + 4 * level);
        return true;
    }

private:
    const uint32_t* table;
    int32_t maxRun;
};

class EncodeTableBuilder {
public:
    explicit EncodeTableBuilder(const int32_t* list) : groups(list + 2 + wordOf(list, 1))
    {
        for (Run& run : runs) run = {0, -1, 0};
        fits = forRecords([this](const Record& record) { return measure(record); });
    }

    // The table's size, n being the number of all records; 0 if there is no table for the list.
    int32_t words() const
    {
        const int64_t count = records + 2 * maxRun + 3;
        return fits && count <= INT32_MAX / 4 ? static_cast<int32_t>(count) : 0;
    }

    // False: the list does not fit its table.
    bool build(uint32_t* block)
    {
        block[0] = (special & ((1u << maxRunShift) - 1)) | static_cast<uint32_t>(maxRun) << maxRunShift;
        int32_t centre = maxRun + 2 + runs[0].count / 2;
        for (int32_t run = 0; run <= maxRun; ++run) {
            if (run > 0) centre += runs[run - 1].count / 2 + runs[run].count / 2 + 1;
            runs[run].centre = centre;
            block[1 + run] = 4 * static_cast<uint32_t>(centre);
            block[centre] = static_cast<uint32_t>(runs[run].greatest);
        }
        const int32_t size = words();
        const bool isWhole = forRecords([=](const Record& record) {
            if (record.isSpecial()) return true;
            const int32_t place = runs[record.run].centre + record.level;
            if (place < 0 || place >= size) return false;
            block[place] = record.code << 16 | record.length;
            return true;
        });
        return isWhole && isReadInside(block, size);
    }

private:
    static constexpr int32_t recordWords = 3;
    static constexpr int32_t runCount = endOfBlockRun;

    struct Record {
        uint32_t code;
        uint32_t length;
        int32_t run;
        int32_t level;

        bool isSpecial() const { return run == endOfBlockRun || run == escapeRun; }
    };

    struct Run {
        int32_t count;
        int32_t greatest;
        int32_t centre;
    };

    template <typename Visit>
    bool forRecords(Visit visit) const
    {
        const int32_t* group = groups;
        for (uint32_t length = 1; wordOf(group) >= 0; ++length) {
            const int32_t* record = group + 1;
            for (int32_t count = wordOf(group); count > 0; --count, record += recordWords)
                if (!visit(Record{static_cast<uint32_t>(wordOf(record)), length, wordOf(record, 1), wordOf(record, 2)}))
                    return false;
            group = record;
        }
        return true;
    }

    // False where no table can hold the record.
    bool measure(const Record& record)
    {
        ++records;
        const uint32_t form = record.code << 4 | record.length;
        if (record.run == escapeRun) special |= form;
        else if (record.run == endOfBlockRun) special |= form << 10;
        if (record.isSpecial()) return true;

        constexpr int32_t mostLevel = INT32_MAX / 4;
        if (record.run < 0 || record.run >= runCount) return false;
        if (record.level < -mostLevel || record.level > mostLevel) return false;
        Run& run = runs[record.run];
        const int32_t magnitude = record.level < 0 ? -record.level : record.level;
        ++run.count;
        if (magnitude > run.greatest) run.greatest = magnitude;
        if (record.run > maxRun) maxRun = record.run;
        return true;
    }

    // A list that is not whole stores codes over other words of its table, and lookups then go where these lead.
    static bool isReadInside(const uint32_t* block, int32_t size)
    {
        const int32_t maxRun = static_cast<int32_t>(block[0] >> maxRunShift);
        for (int32_t run = 0; run <= maxRun && run <= mostRunOfBlock; ++run) {
            if (1 + run >= size) return false;
            const int64_t offset = static_cast<int32_t>(block[1 + run]);
            if (offset < 0 || offset > 4 * (static_cast<int64_t>(size) - 1)) return false;
            const int32_t greatest = load<int32_t>(bytesOf(block) + offset);
            const int64_t reach = greatest < 0 ? 0 : greatest < mostMagnitude ? greatest : mostMagnitude;
            if (offset - 4 * reach < 0 || offset + 4 * reach > 4 * (static_cast<int64_t>(size) - 1)) return false;
        }
        return true;
    }

    const int32_t* groups;
    int64_t records = 0;
    int32_t maxRun = 0;
    uint32_t special = 0;   // word 0 without the greatest run
    Run runs[runCount];
    bool fits;
};

}
}
