#include "model/huffman.h"

#include <algorithm>

namespace rux::model {
namespace {

constexpr uint32_t emptyEntry = 0xf0f101;

uint32_t lowBits(uint32_t value, int count)
{
    return static_cast<uint32_t>(value & ((uint64_t(1) << count) - 1));
}

// The entry of a leaf without its count of free bits.
uint32_t leafOf(ListForm form, const int32_t* record)
{
    if (form == ListForm::plain) return load<uint32_t>(record + 1) << 8;
    return load<uint32_t>(record + 2) << 16 | (load<uint32_t>(record + 1) & 255) << 8;
}

int32_t payloadOf(uint32_t entry)
{
    return static_cast<int32_t>(entry) >> 8;
}

bool isLink(ListForm form, uint32_t entry)
{
    if ((entry & 255) != 128) return false;
    return form == ListForm::runLevel || (entry >> 8 & 255) != 0;
}

// The longest code that ends in some level.
int64_t longestCode(const std::vector<int>& widths)
{
    int64_t sum = 0, longest = 0;
    for (int width : widths) {
        sum += width;
        longest = std::max(longest, sum);
    }
    return longest;
}

class Builder {
public:
    Builder(ListForm form, const CodeList& list)
        : form(form), widths(list.widths), words(form == ListForm::plain ? 65536 / 4 : 1048576 / 4, emptyEntry)
    {
    }

    bool run(const CodeList& list, std::vector<uint32_t>& result)
    {
        if (!open(0)) return false;
        for (const Code& code : list.codes) {
            if (code.length <= longestCode(widths) && !place(code)) return false;
        }
        result = words;
        return true;
    }

private:
    // A sub-table of the level's width at the first free word.
    bool open(size_t level)
    {
        const int width = widths[level];
        if (width < 0 || width > 18) return false;
        const size_t next = firstFree + 1 + (size_t(1) << width);
        if (next > words.size()) return false;
        words[firstFree] = static_cast<uint32_t>(width);
        firstFree = next;
        return true;
    }

    bool place(const Code& code)
    {
        size_t table = 0;
        int sum = 0;
        for (size_t level = 0; level < widths.size(); level++) {
            const int width = widths[level];
            if (width < 0 || width > 18) return false;
            const size_t entries = size_t(1) << words[table];
            sum += width;
            if (sum >= code.length) {
                const int freeBits = sum - code.length;
                const size_t first = size_t(lowBits(code.bits, code.length - (sum - width))) << freeBits;
                const size_t count = size_t(1) << freeBits;
                if (first + count > entries) return false;
                const uint32_t leaf = static_cast<uint32_t>(code.payload) << 8 | static_cast<uint32_t>(freeBits);
                for (size_t i = first; i < first + count; i++) words[table + 1 + i] = leaf;
                return true;
            }
            const int below = code.length - sum;
            const size_t index = lowBits(below < 32 ? code.bits >> below : 0, width);
            if (index >= entries) return false;
            const size_t slot = table + 1 + index;
            if (words[slot] == emptyEntry) {
                const size_t link = firstFree;
                if (!open(level + 1)) return false;
                words[slot] = static_cast<uint32_t>(link) << 8 | 128;
                table = link;
            } else if (isLink(form, words[slot])) {
                table = words[slot] >> 8;
            }
        }
        return true;
    }

    ListForm form;
    const std::vector<int>& widths;
    std::vector<uint32_t> words;
    size_t firstFree = 0;
};

}

CodeList parseCodeList(ListForm form, const int32_t* table)
{
    CodeList list;
    const int32_t levels = load<int32_t>(table + 1);
    for (int32_t i = 0; i < levels; i++) list.widths.push_back(load<int32_t>(table + 2 + i));
    if (levels < 1) return list;
    const int32_t* word = table + 2 + levels;
    const int recordWords = form == ListForm::plain ? 2 : 3;
    for (int length = 1;; length++) {
        const int32_t count = load<int32_t>(word++);
        if (count < 0) return list;
        for (int32_t i = 0; i < count; i++, word += recordWords) {
            const uint32_t bits = length < 32 ? lowBits(load<uint32_t>(word), length) : load<uint32_t>(word);
            list.codes.push_back({length, bits, payloadOf(leafOf(form, word))});
        }
    }
}

LookupStructure buildLookup(ListForm form, const int32_t* table)
{
    LookupStructure result{ruxStatusMemoryAllocated, {}};
    if (load<int32_t>(table + 1) < 1) return result;
    const CodeList list = parseCodeList(form, table);
    if (Builder(form, list).run(list, result.words)) result.status = ruxStatusOk;
    return result;
}

uint32_t BitSequence::bit(int64_t position) const
{
    return load<uint32_t>(words + position / 32) >> (31 - position % 32) & 1;
}

uint32_t BitSequence::bits(int64_t position, int count) const
{
    uint32_t value = 0;
    for (int i = 0; i < count; i++) value = value << 1 | bit(position + i);
    return value;
}

Decoded decodeFromList(const CodeList& list, const BitSequence& stream, int64_t position)
{
    int sum = 0;
    const int64_t total = longestCode(list.widths);
    for (int width : list.widths) {
        sum += width;
        bool goesOn = false;
        for (const Code& code : list.codes) {
            if (code.length > total) continue;
            if (code.length <= sum) {
                if (stream.bits(position, code.length) == code.bits) return {code.payload, code.length, sum};
            } else if (stream.bits(position, sum) == code.bits >> (code.length - sum)) {
                goesOn = true;
            }
        }
        if (!goesOn) break;
    }
    return {illegalMark, sum - 1, sum};
}

Decoded decodeFromWords(const uint32_t* structure, const BitSequence& stream, int64_t position)
{
    size_t table = 0;
    int looked = 0;
    for (;;) {
        const int width = static_cast<int>(load<uint32_t>(structure + table));
        const uint32_t entry = load<uint32_t>(structure + table + 1 + stream.bits(position + looked, width));
        looked += width;
        if ((entry & 255) != 128) return {payloadOf(entry), looked - static_cast<int>(entry & 255), looked};
        table = entry >> 8;
    }
}

}
