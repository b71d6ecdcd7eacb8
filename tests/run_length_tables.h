// Lists of (run, level) codes, and the tables that the bound level builds from them.
#pragma once

#include "code_lists.h"
#include "ruxlib.h"
#include "support/family.h"

namespace rux::test {

inline std::vector<int32_t> listOf(const std::vector<SourceCode>& codes, const std::vector<int32_t>& widths = {8, 5, 4})
{
    return sourceList(model::ListForm::runLevel, widths, codes);
}

inline SourceCode randomCode(Random& random, int32_t run, int32_t level)
{
    const int length = random.between(1, 17);
    const auto bits = static_cast<int32_t>(random.below(1u << std::min(length, 16)));
    return {length, bits, run, level};
}

// Whole lists: for each run both signs of every level up to the run's greatest. Some runs have none.
inline std::vector<SourceCode> wholeCodes(Random& random)
{
    std::vector<SourceCode> codes;
    const int maxRun = random.oneIn(4) ? 0 : random.between(1, random.oneIn(4) ? 70 : 31);
    for (int run = 0; run <= maxRun; run++) {
        const int greatest = random.oneIn(4) ? 0 : random.between(1, run < 2 ? 40 : 4);
        for (int level = 1; level <= greatest; level++) {
            codes.push_back(randomCode(random, run, level));
            codes.push_back(randomCode(random, run, -level));
        }
    }
    if (random.oneIn(2)) codes.push_back({6, 1, 255, 0});
    if (random.oneIn(2)) codes.push_back({random.between(1, 4), random.between(0, 3), 254, 0});
    return codes;
}

// The library's table of a list that ends at a faulting page.
class Table {
public:
    explicit Table(const std::vector<int32_t>& words, Place place = {})
        : list(vectorOf(static_cast<int>(words.size())).at(place))
    {
        for (size_t i = 0; i < words.size(); i++) list.set(static_cast<int>(i), 0, words[i]);
        const auto before = list.clone();
        status = call(ruxiCreateRLEncodeTable, list.data(), &words_);
        EXPECT_TRUE(list.equals(before)) << "the list was written";
    }
    ~Table()
    {
        if (status == 0) call(ruxsFree, static_cast<void*>(words_));
    }
    Table(const Table&) = delete;

    const uint32_t* words() const { return words_; }
    uint32_t operator[](size_t i) const { return words_[i]; }

    ruxStatus status;

private:
    Image<int32_t> list;
    uint32_t* words_ = nullptr;
};

}
