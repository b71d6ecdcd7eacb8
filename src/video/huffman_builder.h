// Building the lookup structure of a variable-length code from a source list.
#pragma once

#include "video/code_list.h"
#include "video/huffman_table.h"

namespace rux::RUX_LEVEL {
namespace {

// Fills a block on a 32-byte boundary; a multiple of four words.
void fillWords(uint32_t* block, int32_t words, uint32_t value);

// Records of code and value. A link whose lowest index byte is zero is not recognised while building.
struct PlainForm {
    static constexpr int32_t blockWords = 16384;
    static constexpr int32_t recordWords = 2;
    static uint32_t payload(const int32_t* record) { return static_cast<uint32_t>(wordOf(record, 1)) << 8; }
    static bool builderSeesLink(uint32_t entry) { return isLink(entry) && (entry & 0xFF00) != 0; }
};

// Records of code, run and level.
struct RunLevelForm {
    static constexpr int32_t blockWords = 262144;
    static constexpr int32_t recordWords = 3;
    static uint32_t payload(const int32_t* record)
    {
        return static_cast<uint32_t>(wordOf(record, 2)) << 16 |
               (static_cast<uint32_t>(wordOf(record, 1)) & 0xFF) << 8;
    }
    static bool builderSeesLink(uint32_t entry) { return isLink(entry); }
};

template <typename Form>
class HuffmanBuilder {
public:
    HuffmanBuilder(const int32_t* list, uint32_t* block) : widths(list + 2), levels(wordOf(list, 1)), block(block) {}

    // False, here and below: the list does not fit the block.
    bool build()
    {
        if (levels < 1 || !hasRoom(0, wordOf(widths, 0))) return false;
        fillWords(block, Form::blockWords, emptyEntry);
        firstFree = addTable(0, wordOf(widths, 0));

        const int32_t* group = widths + levels;
        for (int32_t length = 1; wordOf(group) >= 0; ++length) {
            const bool reachesEnd = totalWidth(length) >= length;   // longer codes are dropped
            const int32_t* record = group + 1;
            for (int32_t count = wordOf(group); count > 0; --count, record += Form::recordWords)
                if (reachesEnd && !place(static_cast<uint32_t>(wordOf(record)), length, Form::payload(record)))
                    return false;
            group = record;
        }
        return true;
    }

private:
    // The levels' widths together, counted until they reach enough.
    int64_t totalWidth(int32_t enough) const
    {
        int64_t sum = 0;
        for (int32_t level = 0; level < levels && sum < enough; ++level) sum += wordOf(widths, level);
        return sum;
    }

    static bool isWidth(int32_t width) { return width >= 0 && width <= 18; }

    static bool hasRoom(int32_t table, int32_t width)
    {
        return isWidth(width) && table + 1 + (1 << width) <= Form::blockWords;
    }

    // Returns the first word behind the new sub-table.
    int32_t addTable(int32_t table, int32_t width)
    {
        block[table] = static_cast<uint32_t>(width);
        return table + 1 + (1 << width);
    }

    bool place(uint32_t code, int32_t length, uint32_t payload)
    {
        int32_t table = 0;
        int32_t sum = 0;
        for (int32_t level = 0; level < levels; ++level) {
            const int32_t width = wordOf(widths, level);
            if (!isWidth(width)) return false;
            sum += width;
            const uint32_t mask = (1u << width) - 1;
            if (sum >= length) {
                const int32_t unused = sum - length;
                return putLeaves(table, static_cast<int32_t>(code << unused & mask), unused, payload);
            }
            const int32_t below = length - sum;
            const int32_t slot = table + 1 + static_cast<int32_t>(below < 32 ? code >> below & mask : 0);
            if (slot >= behind(table)) return false;
            if (block[slot] == emptyEntry) {
                if (!hasRoom(firstFree, wordOf(widths, level + 1))) return false;
                block[slot] = static_cast<uint32_t>(firstFree) << 8 | 128;
                table = firstFree;
                firstFree = addTable(firstFree, wordOf(widths, level + 1));
            } else if (Form::builderSeesLink(block[slot])) {
                table = static_cast<int32_t>(linkedTable(block[slot]));
            }
            // A leaf of a shorter code: the next level's bits are looked up in the same sub-table, as long as it has
            // a place for them. What stood past it would be another's, and would send a decoder astray.
        }
        return true;
    }

    bool putLeaves(int32_t table, int32_t index, int32_t unused, uint32_t payload)
    {
        const int32_t first = table + 1 + index;
        const int32_t end = first + (1 << unused);
        if (end > behind(table)) return false;
        for (int32_t slot = first; slot < end; ++slot) block[slot] = payload | static_cast<uint32_t>(unused);
        return true;
    }

    int32_t behind(int32_t table) const { return table + 1 + (1 << block[table]); }

    const int32_t* widths;
    int32_t levels;
    uint32_t* block;
    int32_t firstFree = 0;   // the first word that belongs to no sub-table
};

}
}
