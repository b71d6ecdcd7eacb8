// Huffman decoding, against a model that knows no tables, and the contract's numbers.
#include "huffman_structures.h"

namespace rux::test {

RUX_FAMILY(Huffman, "huffman");

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
