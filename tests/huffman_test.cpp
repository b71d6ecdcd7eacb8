// Huffman tables and decoding, against a model that knows no tables, and the contract's numbers.
#include "code_lists.h"
#include "ruxlib.h"
#include "support/family.h"

namespace rux::test {

using model::ListForm;

RUX_FAMILY(Huffman, "huffman");

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

// What DecodeOne left; a position as word and offset.
struct Outcome {
    ruxStatus status;
    int32_t value;
    int word, offset;
};

static bool operator==(const Outcome& a, const Outcome& b)
{
    return a.status == b.status && a.value == b.value && a.word == b.word && a.offset == b.offset;
}

static std::ostream& operator<<(std::ostream& out, const Outcome& o)
{
    return out << "status " << o.status << ", value " << o.value << ", word " << o.word << ", offset " << o.offset;
}

static Outcome decodeAt(const uint32_t* words, int64_t position, const uint32_t* structure)
{
    uint32_t* word = const_cast<uint32_t*>(model::advance(words, static_cast<ptrdiff_t>(position / 32 * 4)));
    int32_t offset = static_cast<int32_t>(31 - position % 32), value = 0x5A5A5A5A;
    const ruxStatus status = call(ruxiVCHuffmanDecodeOne_1u32s, &word, &offset, &value, structure);
    const ptrdiff_t bytes = reinterpret_cast<const uint8_t*>(word) - reinterpret_cast<const uint8_t*>(words);
    return {status, value, static_cast<int>(bytes / 4), offset};
}

static Outcome expectedOf(const model::Decoded& decoded, int64_t position)
{
    const bool illegal = decoded.payload == model::illegalMark;
    const int64_t end = position + (illegal ? decoded.looked : decoded.taken);
    return {illegal ? -74 : 0, decoded.payload, static_cast<int>(end / 32), static_cast<int>(31 - end % 32)};
}

// Level widths, of which the codes mostly fit the sum.
static std::vector<int32_t> randomWidths(Random& random, int longest, int widest)
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

static void giveValues(Random& random, std::vector<SourceCode>& codes)
{
    for (SourceCode& code : codes) {
        code.value = random.oneIn(20) ? model::illegalMark : static_cast<int32_t>(random.next());
        code.level = static_cast<int32_t>(random.next());
        if (random.oneIn(2)) code.bits |= static_cast<int32_t>(~uint64_t(0) << code.length & random.next());
    }
}

// Lists of all kinds: free of prefixes, or with codes behind leaves, and codes twice.
static std::vector<int32_t> randomList(Random& random, ListForm form, bool prefixFree)
{
    auto codes = randomTree(random, random.between(2, 60), random.between(2, 20));
    codes.resize(codes.size() - random.below(std::min<uint32_t>(4, static_cast<uint32_t>(codes.size()))));
    for (size_t i = 0; !prefixFree && i < 6; i++) {
        codes.push_back({random.between(1, 18), static_cast<int32_t>(random.next()), 0});
    }
    giveValues(random, codes);
    return sourceList(form, randomWidths(random, longestOf(codes), 8), codes);
}

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

TEST_P(Huffman, ruxiVCHuffmanInitAlloc_32s)
{
    expectGolden("huffman", "ruxiVCHuffmanInitAlloc_32s", level(), compareBlocks(ListForm::plain, 400));
}

TEST_P(Huffman, ruxiVCHuffmanInitAllocRL_32s)
{
    expectGolden("huffman", "ruxiVCHuffmanInitAllocRL_32s", level(), compareBlocks(ListForm::runLevel, 60));
}

// Random bits from every offset. The stream ends, at a faulting page, with the last word that the lookups touch.
TEST_P(Huffman, ruxiVCHuffmanDecodeOne_1u32s)
{
    Digest digest;
    int legal = 0, illegal = 0;
    for (int i = 0; i < 120 && !HasFailure(); i++) {
        Random random(static_cast<uint64_t>(i) + 1000);
        const ListForm form = i % 8 == 0 ? ListForm::runLevel : ListForm::plain;
        const auto words = randomList(random, form, true);
        const auto list = model::parseCodeList(form, words.data());
        const Table table(form, words);
        ASSERT_EQ(table.status, 0);
        for (int repeat = 0; repeat < 100; repeat++) {
            uint32_t bits[4];
            fillBytes(random, bits, sizeof bits);
            if (random.oneIn(3)) {   // a code of the list
                const int64_t at = random.below(64);
                const model::Code& code = list.codes[random.below(static_cast<uint32_t>(list.codes.size()))];
                for (int k = 0; k < code.length; k++) {
                    uint32_t& word = bits[(at + k) / 32];
                    const uint32_t mask = 1u << (31 - (at + k) % 32);
                    word = code.bits >> (code.length - 1 - k) & 1 ? word | mask : word & ~mask;
                }
            }
            const int64_t position = random.below(64);
            const auto decoded = model::decodeFromList(list, model::BitSequence(bits), position);
            const int used = static_cast<int>((position + std::max(decoded.looked, 1) - 1) / 32 + 1);
            Place place;
            if (random.oneIn(4)) place = {Edge::start, random.between(0, 63)};
            Image<uint32_t> stream(vectorOf(used).at(place));
            for (int k = 0; k < used; k++) stream.set(k, 0, bits[k]);
            const auto before = stream.clone();
            const Outcome outcome = decodeAt(stream.data(), position, table.structure);
            EXPECT_EQ(outcome, expectedOf(decoded, position)) << "list " << i << ", position " << position;
            EXPECT_TRUE(stream.equals(before));
            (outcome.status == 0 ? legal : illegal)++;
            digest.add(&outcome, sizeof outcome);
        }
    }
    EXPECT_GT(legal, 1000);
    EXPECT_GT(illegal, 100);
    expectGolden("huffman", "ruxiVCHuffmanDecodeOne_1u32s", level(), digest);
}

// Codes behind leaves: the structure decides.
TEST_P(Huffman, decodesListsWithPrefixes)
{
    for (int i = 0; i < 100 && !HasFailure(); i++) {
        Random random(static_cast<uint64_t>(i) + 5000);
        const auto words = randomList(random, ListForm::plain, false);
        const auto expected = model::buildLookup(ListForm::plain, words.data());
        const Table table(ListForm::plain, words);
        ASSERT_EQ(table.status, expected.status);
        if (table.status != 0) continue;
        for (int repeat = 0; repeat < 30; repeat++) {
            uint32_t bits[4];
            fillBytes(random, bits, sizeof bits);
            const int64_t position = random.below(64);
            const auto decoded = model::decodeFromWords(expected.words.data(), model::BitSequence(bits), position);
            EXPECT_EQ(decodeAt(bits, position, table.structure), expectedOf(decoded, position)) << "list " << i;
        }
    }
}

TEST_P(Huffman, emptyListDecodesAsIllegal)
{
    const Table table(ListForm::plain, {0, 1, 4, -1});
    ASSERT_EQ(table.status, 0);
    EXPECT_EQ(table[0], 4u);
    for (size_t i = 1; i < 65536 / 4; i++) ASSERT_EQ(table[i], 0xf0f101u);
    const uint32_t words[2] = {0x12345678, 0x9ABCDEF0};
    for (int position = 0; position < 32; position++) {
        const Outcome illegal{-74, 61681, (position + 4) / 32, 31 - (position + 4) % 32};
        EXPECT_EQ(decodeAt(words, position, table.structure), illegal);
    }
}

TEST_P(Huffman, codeAsLongAsItsLevelFillsOneEntry)
{
    const Table table(ListForm::plain, sourceList(ListForm::plain, {5}, {{5, 11, 77}}));
    ASSERT_EQ(table.status, 0);
    for (size_t i = 0; i < 32; i++) EXPECT_EQ(table[1 + i], i == 11 ? 77u << 8 : 0xf0f101u);
}

TEST_P(Huffman, shorterCodeFillsAllItsEntries)
{
    const Table table(ListForm::plain, sourceList(ListForm::plain, {5}, {{2, 2, -3}}));
    ASSERT_EQ(table.status, 0);
    for (size_t i = 0; i < 32; i++) EXPECT_EQ(table[1 + i], i / 8 == 2 ? 0xFFFFFD03u : 0xf0f101u);
}

// A root of five bits read from offset 3 crosses, and the offset is 30 before the free bits are given back.
TEST_P(Huffman, readCrossesIntoTheNextWord)
{
    const Table table(ListForm::plain, sourceList(ListForm::plain, {5}, {{2, 1, 21}, {3, 5, 35}, {5, 25, 55}}));
    const uint32_t exact[2] = {0x0000000C, 0x80000000};   // 1100 1
    EXPECT_EQ(decodeAt(exact, 28, table.structure), (Outcome{0, 55, 1, 30}));
    const uint32_t illegal[2] = {0x0000000F, 0x80000000};
    EXPECT_EQ(decodeAt(illegal, 28, table.structure), (Outcome{-74, 61681, 1, 30}));
    const uint32_t three[2] = {0xFFFFFFF4, 0};   // 010 has 3 free bits: back in the word it started in
    EXPECT_EQ(decodeAt(three, 28, table.structure), (Outcome{0, 21, 0, 1}));
    const uint32_t two[2] = {0x0000000A, 0};
    EXPECT_EQ(decodeAt(two, 28, table.structure), (Outcome{0, 35, 0, 0}));
}

TEST_P(Huffman, lastBitOfAWordMovesThePointer)
{
    const Table table(ListForm::plain, sourceList(ListForm::plain, {4}, {{4, 9, 5}}));
    const uint32_t words[1] = {9};
    EXPECT_EQ(decodeAt(words, 28, table.structure), (Outcome{0, 5, 1, 31}));
}

TEST_P(Huffman, valueOfTheMarkIsIllegal)
{
    const Table table(ListForm::plain, sourceList(ListForm::plain, {4}, {{1, 1, 61681}, {1, 0, 61680}}));
    const uint32_t words[1] = {0x80000000};
    EXPECT_EQ(decodeAt(words, 0, table.structure), (Outcome{-74, 61681, 0, 27}));
    EXPECT_EQ(decodeAt(words, 1, table.structure), (Outcome{0, 61680, 0, 29}));
}

TEST_P(Huffman, runLevelPayload)
{
    const Table table(ListForm::runLevel,
                      sourceList(ListForm::runLevel, {2}, {{2, 0, 5, -2}, {2, 1, 254, 0}, {2, 2, 256 + 7, 1}}));
    const uint32_t words[1] = {0x18000000};   // 00 01 10
    EXPECT_EQ(decodeAt(words, 0, table.structure), (Outcome{0, -2 * 256 + 5, 0, 29}));
    EXPECT_EQ(decodeAt(words, 2, table.structure), (Outcome{0, 254, 0, 27}));
    EXPECT_EQ(decodeAt(words, 4, table.structure), (Outcome{0, 256 + 7, 0, 25}));
}

TEST_P(Huffman, plainValuesHave24Bits)
{
    const Table table(ListForm::plain, sourceList(ListForm::plain, {1}, {{1, 0, 0x7FFFFF}, {1, 1, 0x12800000}}));
    const uint32_t words[1] = {0x40000000};
    EXPECT_EQ(decodeAt(words, 0, table.structure), (Outcome{0, 0x7FFFFF, 0, 30}));
    EXPECT_EQ(decodeAt(words, 1, table.structure), (Outcome{0, -0x800000, 0, 29}));
}

TEST_P(Huffman, codeLongerThanAllLevelsIsDropped)
{
    const Table table(ListForm::plain, sourceList(ListForm::plain, {2, 2}, {{5, 0x1F, 9}, {2, 1, 4}}));
    ASSERT_EQ(table.status, 0);
    EXPECT_EQ(table[1 + 3], 0xf0f101u) << "no link";
    EXPECT_EQ(table[1 + 1], 4u << 8);
}

TEST_P(Huffman, subTablesStandInTheOrderOfNeed)
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
TEST_P(Huffman, stopsWhereTheBlockIsFull)
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

TEST_P(Huffman, hostileWidths)
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
TEST_P(Huffman, hostileLists)
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
            EXPECT_EQ(std::memcmp(table.structure, expected.words.data(), expected.words.size() * 4), 0) << "list " << i;
        }
        (expected.status == 0 ? built : stopped)++;
    }
    EXPECT_GT(built, 100);
    EXPECT_GT(stopped, 100);
}

TEST_P(Huffman, codeBehindALeafStaysInItsSubTable)
{
    const Table outside(ListForm::plain, sourceList(ListForm::plain, {1, 3}, {{1, 1, 1}, {4, 15, 2}}));
    EXPECT_EQ(outside.status, -9);
    const Table inside(ListForm::plain, sourceList(ListForm::plain, {1, 3}, {{1, 1, 1}, {4, 9, 2}}));
    EXPECT_EQ(inside.status, 0);
    EXPECT_EQ(inside[1 + 1], 2u << 8);
}

TEST_P(Huffman, refusedAllocations)
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
TEST_P(Huffman, blockSizes)
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

TEST_P(Huffman, nullPointers)
{
    const int32_t words[] = {0, 1, 3, -1};
    const int32_t* const noList = nullptr;
    uint32_t** const nowhere = nullptr;
    uint32_t* structure = reinterpret_cast<uint32_t*>(16);
    for (const auto build : {ruxiVCHuffmanInitAlloc_32s, ruxiVCHuffmanInitAllocRL_32s}) {
        EXPECT_EQ(call(build, noList, &structure), -8);
        EXPECT_EQ(call(build, words, nowhere), -8);
        EXPECT_EQ(call(build, noList, nowhere), -8);
    }
    EXPECT_EQ(structure, reinterpret_cast<uint32_t*>(16));
    EXPECT_EQ(call(ruxiVCHuffmanFree_32s, nowhere), -8);
    structure = nullptr;
    EXPECT_EQ(call(ruxiVCHuffmanFree_32s, &structure), 0);

    uint32_t bits = 0, entries[] = {1, 1, 1}, *word = &bits;
    int32_t offset = 5, value = 7;
    const uint32_t* const noTable = nullptr;
    int32_t* const none = nullptr;
    EXPECT_EQ(call(ruxiVCHuffmanDecodeOne_1u32s, nowhere, &offset, &value, entries), -8);
    EXPECT_EQ(call(ruxiVCHuffmanDecodeOne_1u32s, &word, &offset, &value, noTable), -8);
    EXPECT_EQ(call(ruxiVCHuffmanDecodeOne_1u32s, nowhere, none, none, noTable), -8);
    EXPECT_EQ(word, &bits);
    EXPECT_EQ(offset, 5);
    EXPECT_EQ(value, 7);
}

}
