// Structures built by the library at the bound level, and random lists for them.
#pragma once

#include "code_lists.h"
#include "ruxlib.h"
#include "support/family.h"

namespace rux::test {

using model::ListForm;

// A list in memory that ends at a faulting page, and the structure that the bound level builds from it.
class Table {
public:
    Table(ListForm form, const std::vector<int32_t>& words, Place place = {})
        : form(form), list(vectorOf(static_cast<int>(words.size())).at(place))
    {
        for (size_t i = 0; i < words.size(); i++) list.set(static_cast<int>(i), 0, words[i]);
        const auto before = list.clone();
        status = call(form == ListForm::plain ? ruxiVCHuffmanInitAlloc_32s : ruxiVCHuffmanInitAllocRL_32s, list.data(),
                      &structure);
        EXPECT_TRUE(list.equals(before)) << "the list was written";
    }
    ~Table()
    {
        EXPECT_EQ(call(ruxiVCHuffmanFree_32s, &structure), 0);
        EXPECT_EQ(structure, nullptr);
    }
    Table(const Table&) = delete;

    const uint32_t& operator[](size_t i) const { return structure[i]; }

    ListForm form;
    Image<int32_t> list;
    uint32_t* structure = reinterpret_cast<uint32_t*>(16);   // no block: a builder must write it
    ruxStatus status;
};

// Level widths, of which the codes mostly fit the sum.
inline std::vector<int32_t> randomWidths(Random& random, int longest, int widest)
{
    std::vector<int32_t> widths;
    const int wanted = random.oneIn(6) ? longest - 1 : longest;
    int sum = 0;
    while (sum < wanted || widths.empty()) {
        widths.push_back(random.oneIn(12) ? 0 : random.between(1, widest));
        sum += widths.back();
    }
    return widths;
}

inline void giveValues(Random& random, std::vector<SourceCode>& codes)
{
    for (SourceCode& code : codes) {
        code.value = random.oneIn(20) ? model::illegalMark : static_cast<int32_t>(random.next());
        code.level = static_cast<int32_t>(random.next());
        if (random.oneIn(2)) code.bits |= static_cast<int32_t>(~uint64_t(0) << code.length & random.next());
    }
}

// Lists of all kinds: free of prefixes, or with codes behind leaves, and codes twice.
inline std::vector<int32_t> randomList(Random& random, ListForm form, bool prefixFree)
{
    const int longest = random.between(2, 20);
    const int leaves = random.between(2, 60);
    auto codes = randomTree(random, leaves, longest);
    codes.resize(codes.size() - random.below(std::min<uint32_t>(4, static_cast<uint32_t>(codes.size()))));
    for (size_t i = 0; !prefixFree && i < 6; i++) {
        codes.push_back({random.between(1, 18), static_cast<int32_t>(random.next()), 0});
    }
    giveValues(random, codes);
    return sourceList(form, randomWidths(random, longestOf(codes), 8), codes);
}

}
