// Source lists for the Huffman builders, and the streams that they decode.
#pragma once

#include <vector>

#include "model/huffman.h"
#include "support/random.h"

namespace rux::test {

struct SourceCode {
    int length;
    int32_t bits;
    int32_t value;       // the run in the run/level form
    int32_t level = 0;
};

// The words of a list; the codes may stand in any order, those of one length keep theirs.
inline std::vector<int32_t> sourceList(model::ListForm form, const std::vector<int32_t>& widths,
                                       const std::vector<SourceCode>& codes)
{
    std::vector<int32_t> words = {0x5A5A5A5A, static_cast<int32_t>(widths.size())};
    words.insert(words.end(), widths.begin(), widths.end());
    int longest = 0;
    for (const SourceCode& code : codes) longest = std::max(longest, code.length);
    for (int length = 1; length <= longest; length++) {
        const size_t count = words.size();
        words.push_back(0);
        for (const SourceCode& code : codes) {
            if (code.length != length) continue;
            words[count]++;
            words.insert(words.end(), {code.bits, code.value});
            if (form == model::ListForm::runLevel) words.push_back(code.level);
        }
    }
    words.push_back(-1);
    return words;
}

// The leaves of a random tree: no code begins with another, and every bit pattern has a code.
inline std::vector<SourceCode> randomTree(Random& random, int leaves, int longest)
{
    std::vector<SourceCode> codes = {{1, 0, 0}, {1, 1, 0}};
    for (int tries = 0; tries < 8 * leaves && static_cast<int>(codes.size()) < leaves; tries++) {
        // Often the newest leaf, for long codes.
        const size_t newest = codes.size() - 1;
        const size_t chosen = random.oneIn(2) ? newest : random.below(static_cast<uint32_t>(codes.size()));
        if (codes[chosen].length >= longest) continue;
        codes[chosen].length++;
        codes[chosen].bits *= 2;
        codes.push_back({codes[chosen].length, codes[chosen].bits + 1, 0});
    }
    return codes;
}

inline int longestOf(const std::vector<SourceCode>& codes)
{
    int longest = 0;
    for (const SourceCode& code : codes) longest = std::max(longest, code.length);
    return longest;
}

// Fills words from bit 31 down.
class BitWriter {
public:
    void put(uint32_t bits, int count)
    {
        for (int i = count - 1; i >= 0; i--, position++) {
            if (position % 32 == 0) words.push_back(0);
            words.back() |= (bits >> i & 1) << (31 - position % 32);
        }
    }

    std::vector<uint32_t> words;
    int64_t position = 0;
};

}
