// Building of Huffman structures, to the last word of their blocks, and lists that do not fit.
#include "huffman_structures.h"

namespace rux::test {

RUX_FAMILY(HuffmanBuilders, "huffman_builders");

// Every word of the block, over lists that fit and lists that do not.
static Digest compareBlocks(ListForm form, int lists)
{
    Digest digest;
    int built = 0, stopped = 0;
    for (int i = 0; i < lists && !testing::Test::HasFailure(); i++) {
        Random random(static_cast<uint64_t>(i) + 1);
        const auto words = randomList(random, form, i % 2 == 0);
        const auto expected = model::buildLookup(form, words.data());
        Place place;
        if (i % 4 == 1) place = {Edge::start, i % 64};
        const Table table(form, words, place);
        EXPECT_EQ(table.status, expected.status) << "list " << i;
        digest.add(table.status);
        if (expected.status != 0) {
            EXPECT_EQ(table.structure, nullptr) << "list " << i;
            stopped++;
            continue;
        }
        built++;
        for (size_t k = 0; k < expected.words.size(); k++) {
            if (table[k] == expected.words[k]) continue;
            ADD_FAILURE() << "list " << i << ", word " << k << " is " << table[k] << ", not " << expected.words[k];
            break;
        }
        digest.add(expected.words.data(), expected.words.size() * 4);
    }
    EXPECT_GT(built, lists / 3);
    EXPECT_GT(stopped, 0);
    return digest;
}

TEST_P(HuffmanBuilders, ruxiVCHuffmanInitAlloc_32s)
{
    expectGolden("huffman_builders", "ruxiVCHuffmanInitAlloc_32s", level(), compareBlocks(ListForm::plain, 400));
}

TEST_P(HuffmanBuilders, ruxiVCHuffmanInitAllocRL_32s)
{
    expectGolden("huffman_builders", "ruxiVCHuffmanInitAllocRL_32s", level(), compareBlocks(ListForm::runLevel, 60));
}

TEST_P(HuffmanBuilders, codeAsLongAsItsLevelFillsOneEntry)
{
    const Table table(ListForm::plain, sourceList(ListForm::plain, {5}, {{5, 11, 77}}));
    ASSERT_EQ(table.status, 0);
    for (size_t i = 0; i < 32; i++) EXPECT_EQ(table[1 + i], i == 11 ? 77u << 8 : 0xf0f101u);
}

TEST_P(HuffmanBuilders, shorterCodeFillsAllItsEntries)
{
    const Table table(ListForm::plain, sourceList(ListForm::plain, {5}, {{2, 2, -3}}));
    ASSERT_EQ(table.status, 0);
    for (size_t i = 0; i < 32; i++) EXPECT_EQ(table[1 + i], i / 8 == 2 ? 0xFFFFFD03u : 0xf0f101u);
}

TEST_P(HuffmanBuilders, codeLongerThanAllLevelsIsDropped)
{
    const Table table(ListForm::plain, sourceList(ListForm::plain, {2, 2}, {{5, 0x1F, 9}, {2, 1, 4}}));
    ASSERT_EQ(table.status, 0);
    EXPECT_EQ(table[1 + 3], 0xf0f101u) << "no link";
    EXPECT_EQ(table[1 + 1], 4u << 8);
}

TEST_P(HuffmanBuilders, subTablesStandInTheOrderOfNeed)
{
    const Table table(ListForm::plain, sourceList(ListForm::plain, {2, 1}, {{3, 7, 1}, {3, 0, 2}}));
    ASSERT_EQ(table.status, 0);
    EXPECT_EQ(table[1 + 3], 5u << 8 | 128);
    EXPECT_EQ(table[1 + 0], 8u << 8 | 128);
    EXPECT_EQ(table[5], 1u);
    EXPECT_EQ(table[5 + 2], 1u << 8);
    EXPECT_EQ(table[8 + 1], 2u << 8);
}

// A root of 13 bits leaves 8191 words of the plain block; a sub-table of 12 bits takes 4097, so one fits.
TEST_P(HuffmanBuilders, stopsWhereTheBlockIsFull)
{
    const Table one(ListForm::plain, sourceList(ListForm::plain, {13, 12}, {{14, 0, 1}}));
    EXPECT_EQ(one.status, 0);
    const Table two(ListForm::plain, sourceList(ListForm::plain, {13, 12}, {{14, 0, 1}, {14, 2, 1}}));
    EXPECT_EQ(two.status, -9);
    EXPECT_EQ(two.structure, nullptr);
    const Table large(ListForm::runLevel, sourceList(ListForm::runLevel, {17, 16}, {{18, 0, 1}}));
    EXPECT_EQ(large.status, 0);
    const Table larger(ListForm::runLevel, sourceList(ListForm::runLevel, {17, 16}, {{18, 0, 1}, {18, 2, 1}}));
    EXPECT_EQ(larger.status, -9);
    EXPECT_EQ(larger.structure, nullptr);
}

// 8193 words of the root, 1637 sub-tables of 5 words, 2 of 3: the plain block to its last word.
TEST_P(HuffmanBuilders, fillsTheBlockToItsLastWord)
{
    std::vector<SourceCode> codes;
    for (int32_t i = 0; i < 1637; i++) codes.push_back({15, i << 2, i});
    for (int32_t i = 0; i < 2; i++) codes.push_back({16, i << 3 | 3, -1 - i});
    const auto list = sourceList(ListForm::plain, {13, 2, 1}, codes);
    const Table full(ListForm::plain, list);
    ASSERT_EQ(full.status, 0);
    const auto expected = model::buildLookup(ListForm::plain, list.data());
    ASSERT_EQ(expected.status, 0);
    EXPECT_EQ(std::memcmp(full.structure, expected.words.data(), 65536), 0);
    EXPECT_EQ(full[65536 / 4 - 3], 1u);
    EXPECT_EQ(full[65536 / 4 - 1], ~uint32_t(1) << 8) << "the last code";

    codes.push_back({16, 5, 9});
    EXPECT_EQ(Table(ListForm::plain, sourceList(ListForm::plain, {13, 2, 1}, codes)).status, -9);
}

TEST_P(HuffmanBuilders, hostileWidths)
{
    for (const ListForm form : {ListForm::plain, ListForm::runLevel}) {
        for (const int32_t levels : {0, -1, INT32_MIN}) {
            const Table table(form, {0, levels, -1});
            EXPECT_EQ(table.status, -9);
            EXPECT_EQ(table.structure, nullptr);
        }
        for (const int32_t width : {-1, 19, 31, 32, 64, INT32_MAX, INT32_MIN}) {
            const Table root(form, sourceList(form, {width}, {{1, 0, 1}}));
            EXPECT_EQ(root.status, -9) << width;
            if (width < 0) continue;
            const Table second(form, sourceList(form, {2, width}, {{4, 0, 1}}));
            EXPECT_EQ(second.status, -9) << width;
        }
        const Table tooWide(form, sourceList(form, {form == ListForm::plain ? 14 : 18}, {{1, 0, 1}}));
        EXPECT_EQ(tooWide.status, -9);
    }
}

// Lists without sense: any widths, codes longer than they, codes behind leaves.
TEST_P(HuffmanBuilders, hostileLists)
{
    int built = 0, stopped = 0;
    for (int i = 0; i < 1500 && !HasFailure(); i++) {
        Random random(static_cast<uint64_t>(i) + 9000);
        const ListForm form = i % 16 == 0 ? ListForm::runLevel : ListForm::plain;
        std::vector<int32_t> widths;
        for (int levels = random.between(1, 5); levels > 0; levels--) {
            widths.push_back(random.oneIn(3) ? random.between(-1, 20) : random.between(0, 6));
        }
        std::vector<SourceCode> codes;
        for (int count = random.between(0, 40); count > 0; count--) {
            codes.push_back({random.between(1, 40), static_cast<int32_t>(random.next()), 0});
            if (random.oneIn(2)) codes.back().length = random.between(1, 12);
        }
        giveValues(random, codes);
        const auto words = sourceList(form, widths, codes);
        const auto expected = model::buildLookup(form, words.data());
        const Table table(form, words);
        EXPECT_EQ(table.status, expected.status) << "list " << i;
        if (table.status == expected.status && table.status == 0) {
            const size_t bytes = expected.words.size() * 4;
            EXPECT_EQ(std::memcmp(table.structure, expected.words.data(), bytes), 0) << "list " << i;
        }
        (expected.status == 0 ? built : stopped)++;
    }
    EXPECT_GT(built, 100);
    EXPECT_GT(stopped, 100);
}

TEST_P(HuffmanBuilders, codeBehindALeafStaysInItsSubTable)
{
    const Table outside(ListForm::plain, sourceList(ListForm::plain, {1, 3}, {{1, 1, 1}, {4, 15, 2}}));
    EXPECT_EQ(outside.status, -9);
    const Table inside(ListForm::plain, sourceList(ListForm::plain, {1, 3}, {{1, 1, 1}, {4, 9, 2}}));
    EXPECT_EQ(inside.status, 0);
    EXPECT_EQ(inside[1 + 1], 2u << 8);
    // Neither does it link from the word behind: index 4 of four entries.
    const Table link(ListForm::plain, sourceList(ListForm::plain, {2, 3, 1}, {{2, 3, 1}, {6, 0x38, 2}}));
    EXPECT_EQ(link.status, -9);
}

TEST_P(HuffmanBuilders, refusedAllocations)
{
    const auto words = sourceList(ListForm::plain, {3}, {{1, 0, 1}});
    const auto runLevels = sourceList(ListForm::runLevel, {3}, {{1, 0, 1}});
    forEachRefusal(1, [&](bool refused) {
        const Table table(ListForm::plain, words);
        EXPECT_EQ(table.status, refused ? -9 : 0);
        EXPECT_EQ(table.structure == nullptr, refused);
    });
    forEachRefusal(1, [&](bool refused) {
        const Table table(ListForm::runLevel, runLevels);
        EXPECT_EQ(table.status, refused ? -9 : 0);
        EXPECT_EQ(table.structure == nullptr, refused);
    });
}

// What is asked of malloc: the block and the 32-byte boundary's room.
TEST_P(HuffmanBuilders, blockSizes)
{
    class Sizes : public StandInAllocator {
    public:
        void* allocate(size_t bytes) override
        {
            asked.push_back(bytes);
            return nullptr;
        }
        void release(void*) override {}
        std::vector<size_t> asked;
    };
    Sizes sizes;
    const int32_t words[] = {0, 1, 3, -1};
    uint32_t* structure;
    EXPECT_EQ(call(ruxiVCHuffmanInitAlloc_32s, words, &structure), -9);
    EXPECT_EQ(call(ruxiVCHuffmanInitAllocRL_32s, words, &structure), -9);
    ASSERT_EQ(sizes.asked.size(), 2u);
    EXPECT_EQ(sizes.asked[1] - sizes.asked[0], 1048576u - 65536u);
    EXPECT_LT(sizes.asked[0], 65536u + 64);
}

}
