#include "model/run_length.h"

#include <algorithm>
#include <cstdlib>
#include <map>

namespace rux::model {
namespace {

struct Record {
    int length;
    uint32_t code;
    int32_t run, level;
};

constexpr int32_t endOfBlock = 254, escape = 255;

std::vector<Record> recordsOf(const int32_t* table)
{
    const int32_t* word = table + 2 + load<int32_t>(table + 1);
    std::vector<Record> records;
    for (int length = 1;; length++) {
        const int32_t count = load<int32_t>(word++);
        if (count < 0) return records;
        for (int32_t i = 0; i < count; i++, word += 3) {
            records.push_back({length, load<uint32_t>(word), load<int32_t>(word + 1), load<int32_t>(word + 2)});
        }
    }
}

bool isOrdinary(const Record& record)
{
    return record.run != endOfBlock && record.run != escape;
}

// Where bits go: a pointer to a word and the free bits in it.
class Sink {
public:
    Sink(uint32_t** bitStream, int32_t* freeBits) : bitStream(bitStream), freeBits(freeBits) {}

    void put(uint32_t value, uint32_t length)
    {
        if (length == 0) return;
        uint8_t* word = reinterpret_cast<uint8_t*>(load<uint32_t*>(bitStream));
        int32_t free = load<int32_t>(freeBits);
        const auto l = static_cast<int32_t>(length);
        if (l > free) {
            const int32_t e = l - free;
            store(word, load<uint32_t>(word) | (value >> e & lowBits(free)));
            word += 4;
            store(word, (value & lowBits(e)) << (32 - e));
            free = 32 - e;
        } else {
            store(word, load<uint32_t>(word) | (value & lowBits(l)) << (free - l));
            free -= l;
            if (free == 0) {
                word += 4;
                free = 32;
            }
        }
        store(bitStream, reinterpret_cast<uint32_t*>(word));
        store(freeBits, free);
    }

private:
    static uint32_t lowBits(int32_t count)
    {
        return static_cast<uint32_t>((uint64_t(1) << count) - 1);
    }

    uint32_t** bitStream;
    int32_t* freeBits;
};

void putPair(Sink& sink, const uint32_t* table, int32_t run, int32_t level)
{
    const auto maxRun = static_cast<int32_t>(load<uint32_t>(table) >> 20);
    if (run <= maxRun) {
        const uint32_t* centre = advance(table, load<int32_t>(table + 1 + run));
        if (std::abs(level) <= load<int32_t>(centre)) {
            const auto word = load<uint32_t>(centre + level);
            return sink.put(word >> 16, word & 0xFFFF);
        }
    }
    sink.put(1, 6);
    sink.put(static_cast<uint32_t>(run), 6);
    sink.put(static_cast<uint32_t>(level), 12);
}

void putRest(Sink& sink, int32_t run, const int16_t* block, const uint32_t* table, const int32_t* scan)
{
    for (int k = 1; k < 64; k++) {
        const int32_t level = load<int16_t>(block + load<int32_t>(scan + k));
        if (level != 0) putPair(sink, table, run, level);
        run = level != 0 ? 0 : run + 1;
    }
}

}

EncodeTable buildEncodeTable(const int32_t* table)
{
    const std::vector<Record> records = recordsOf(table);
    std::map<int32_t, int32_t> greatest, counts;   // by run
    int32_t maxRun = 0;
    uint32_t first = 0;
    for (const Record& record : records) {
        const uint32_t form = record.code << 4 | static_cast<uint32_t>(record.length);
        if (record.run == escape) {
            first |= form;
        } else if (record.run == endOfBlock) {
            first |= form << 10;
        } else {
            if (record.run < 0 || record.run > escape) return {ruxStatusMemoryAllocated, {}, {}};
            counts[record.run]++;
            greatest.emplace(record.run, -1);
            greatest[record.run] = std::max(greatest[record.run], std::abs(record.level));
            maxRun = std::max(maxRun, record.run);
        }
    }

    const size_t size = records.size() + 2 * static_cast<size_t>(maxRun) + 3;
    EncodeTable result = {ruxStatusOk, std::vector<uint32_t>(size), std::vector<bool>(size)};
    const auto put = [&](int64_t at, uint32_t word) {
        if (at < 0 || at >= static_cast<int64_t>(size)) return false;
        result.words[static_cast<size_t>(at)] = word;
        result.written[static_cast<size_t>(at)] = true;
        return true;
    };
    put(0, (first & 0xFFFFF) | static_cast<uint32_t>(maxRun) << 20);
    std::map<int32_t, int64_t> centres;
    int64_t centre = maxRun + 2 + counts[0] / 2;
    for (int32_t run = 0; run <= maxRun; run++) {
        if (run > 0) centre += counts[run - 1] / 2 + counts[run] / 2 + 1;
        centres[run] = centre;
        put(1 + run, static_cast<uint32_t>(4 * centre));
        put(centre, static_cast<uint32_t>(greatest.count(run) ? greatest[run] : -1));
    }
    const std::vector<bool> structure = result.written;
    for (const Record& record : records) {
        if (!isOrdinary(record)) continue;
        const int64_t place = centres[record.run] + record.level;
        if (!put(place, record.code << 16 | static_cast<uint32_t>(record.length))) {
            return {ruxStatusMemoryAllocated, {}, {}};
        }
        result.damaged = result.damaged || structure[static_cast<size_t>(place)];
    }
    for (const auto& [run, most] : greatest) {
        const bool inside = centres[run] - most >= 0 && centres[run] + most < static_cast<int64_t>(size);
        if (!inside && !result.damaged) return {ruxStatusMemoryAllocated, {}, {}};
    }
    return result;
}

ruxStatus ruxiPutIntraBlock(Level, uint32_t** bitStream, int32_t* freeBits, const int16_t* block, int32_t* dcPredictor,
                            const uint32_t* dcTable, const uint32_t* encodeTable, const int32_t* scanTable,
                            uint32_t eobLength, int32_t eobCode, int32_t)
{
    if (!bitStream || !freeBits || !block || !dcPredictor || !dcTable || !encodeTable || !scanTable) {
        return ruxStatusNullPointer;
    }
    Sink sink(bitStream, freeBits);
    const int32_t dc = load<int16_t>(block), d = dc - load<int32_t>(dcPredictor);
    store(dcPredictor, dc);
    uint32_t size = 0;
    for (int64_t rest = std::abs(static_cast<int64_t>(d)); rest != 0; rest >>= 1) size++;
    sink.put(load<uint32_t>(dcTable + 2 * size), load<uint32_t>(dcTable + 2 * size + 1));
    sink.put(static_cast<uint32_t>(d > 0 ? d : d + (int64_t(1) << size) - 1), size);
    putRest(sink, 0, block, encodeTable, scanTable);
    sink.put(static_cast<uint32_t>(eobCode), eobLength);
    return ruxStatusOk;
}

ruxStatus ruxiPutNonIntraBlock(Level, uint32_t** bitStream, int32_t* freeBits, const int16_t* block,
                               const uint32_t* encodeTable, const int32_t* scanTable, uint32_t eobLength,
                               int32_t eobCode, int32_t)
{
    if (!bitStream || !freeBits || !block || !encodeTable || !scanTable) return ruxStatusNullPointer;
    Sink sink(bitStream, freeBits);
    const int32_t first = load<int16_t>(block);
    if (first == 1 || first == -1) sink.put(first == 1 ? 2 : 3, 2);
    else if (first != 0) putPair(sink, encodeTable, 0, first);
    putRest(sink, first == 0 ? 1 : 0, block, encodeTable, scanTable);
    sink.put(static_cast<uint32_t>(eobCode), eobLength);
    return ruxStatusOk;
}

}
