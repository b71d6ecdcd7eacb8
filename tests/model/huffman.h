// Huffman source lists, the structures built from them, and decoding bit by bit from the list itself.
#pragma once

#include <vector>

#include "model/memory.h"
#include "ruxlib/video_stream.h"

namespace rux::model {

enum class ListForm { plain, runLevel };

constexpr int32_t illegalMark = 61681;

struct Code {
    int length;
    uint32_t bits;      // those above the length are cleared
    int32_t payload;    // what a decode gives: 24 bits, signed
};

struct CodeList {
    std::vector<int> widths;
    std::vector<Code> codes;
};

CodeList parseCodeList(ListForm, const int32_t* table);

// The status of a builder and every word of the block that it leaves; no words where it fails.
struct LookupStructure {
    ruxStatus status;
    std::vector<uint32_t> words;
};

LookupStructure buildLookup(ListForm, const int32_t* table);

// The bits of a stream, counted from bit 31 of its first word.
class BitSequence {
public:
    explicit BitSequence(const uint32_t* words) : words(words) {}
    uint32_t bit(int64_t position) const;
    uint32_t bits(int64_t position, int count) const;

private:
    const uint32_t* words;
};

// One lookup from the root: the payload of the code, or illegalMark; how many bits it takes with the free bits given
// back (an empty entry has one); how many bits all levels entered have.
struct Decoded {
    int32_t payload;
    int taken;
    int looked;
};

// No table: the codes are compared bit by bit. The list must be free of prefixes.
Decoded decodeFromList(const CodeList&, const BitSequence&, int64_t position);

// The same from the words of a structure, whatever the list was.
Decoded decodeFromWords(const uint32_t* structure, const BitSequence&, int64_t position);

}
