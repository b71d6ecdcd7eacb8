// Decoding of MPEG-2 blocks: the contract's numbers and edges.
#include "reconstruct_setting.h"

namespace rux::test {

class ReconstructValues : public LevelTest {};
RUX_AT_EACH_LEVEL(ReconstructValues);

// A small table: 10 ends the block, 11 is an escape, 00 is run 0 and level 1, 010 run 3 and level 2, 011 no code.
static std::vector<int32_t> smallList()
{
    return sourceList(ListForm::runLevel, {9}, {{2, 2, 254}, {2, 3, 255}, {2, 0, 0, 1}, {3, 2, 3, 2}});
}

// Sizes 0 and 3.
static std::vector<int32_t> smallSizes()
{
    return sourceList(ListForm::plain, {1}, {{1, 0, 0}, {1, 1, 3}});
}

struct SmallTables {
    Table sizes{ListForm::plain, smallSizes()};
    Table codes{ListForm::runLevel, smallList()};
};

// The bits as text, with room behind them.
static std::vector<uint32_t> bitsOf(const std::string& text)
{
    BitWriter writer;
    for (char bit : text) {
        if (bit != ' ') writer.put(bit == '1', 1);
    }
    writer.words.resize(writer.words.size() + 3);
    return writer.words;
}

TEST_P(ReconstructValues, intraBlockOfSizeZero)
{
    const SmallTables tables;
    Setting s(bitsOf("0 10"));
    s.predictor = 100, s.dcShift = 3;
    EXPECT_EQ(s.run(true, tables.sizes, tables.codes), 0);
    EXPECT_EQ(s.block.get(0), 800);
    EXPECT_EQ(s.block.get(63), 1) << "an even sum";
    EXPECT_EQ(s.count, 0);
    EXPECT_EQ(s.predictor, 100);
    EXPECT_EQ(s.position, 3);
}

TEST_P(ReconstructValues, differentialsOfBothSigns)
{
    const SmallTables tables;
    Setting up(bitsOf("1 101 10")), down(bitsOf("1 010 10"));
    EXPECT_EQ(up.run(true, tables.sizes, tables.codes), 0);
    EXPECT_EQ(up.predictor, 105);
    EXPECT_EQ(up.block.get(0), 105);
    EXPECT_EQ(up.block.get(63), 0) << "an odd sum";
    EXPECT_EQ(down.run(true, tables.sizes, tables.codes), 0);
    EXPECT_EQ(down.predictor, 95);
}

TEST_P(ReconstructValues, shortFirstCode)
{
    const SmallTables tables;
    for (const bool negative : {false, true}) {
        Setting s(bitsOf(negative ? "11 10" : "10 10"));
        EXPECT_EQ(s.run(false, tables.codes, tables.codes), 0);
        EXPECT_EQ(s.block.get(0), negative ? -3 : 3);   // 16 * 2 * 3 / 32
        EXPECT_EQ(s.count, 1);
        EXPECT_EQ(s.position, 4);
    }
}

TEST_P(ReconstructValues, oneCoefficientAtScanPosition3)
{
    const SmallTables tables;
    Setting s(bitsOf("010 10"));
    EXPECT_EQ(s.run(false, tables.codes, tables.codes), 0);
    EXPECT_EQ(s.count, 3);
    EXPECT_EQ(s.block.get(usualScan()[3]), 5);   // 16 * 2 * 5 / 32
}

// Escapes of run 62 or 63 and level 1 behind a first coefficient at 0.
TEST_P(ReconstructValues, scanPositions63And64)
{
    const SmallTables tables;
    for (const bool intra : {false, true}) {
        const std::string first = intra ? "0 " : "10 ";
        const Table& table = intra ? tables.sizes : tables.codes;
        Setting last(bitsOf(first + "11 111110 000000000001 10"));
        EXPECT_EQ(last.run(intra, table, tables.codes), 0);
        EXPECT_EQ(last.count, 63);
        EXPECT_NE(last.block.get(63), 0);
        EXPECT_EQ(last.position, intra ? 23 : 24);

        Setting beyond(bitsOf(first + "11 111111 000000000001 10"));
        EXPECT_EQ(beyond.run(intra, table, tables.codes), level() == w7 ? 0 : -74);
        EXPECT_EQ(beyond.count, untouched);
        EXPECT_EQ(beyond.position, level() == w7 ? 0 : intra ? 21 : 22);
        EXPECT_EQ(beyond.block.get(63), 0) << "no mismatch control";
        EXPECT_EQ(beyond.block.get(0), intra ? 100 : 3);
    }
}

TEST_P(ReconstructValues, mismatchAloneAt63)
{
    const SmallTables tables;
    Setting s(bitsOf("0 00 10"));
    s.predictor = 6, s.quantScale = 16;   // 16 * 2 * 16 / 32 = 16: an even sum
    EXPECT_EQ(s.run(true, tables.sizes, tables.codes), 0);
    EXPECT_EQ(s.block.get(63), 1);
    EXPECT_EQ(s.count, 1);
}

// The code that no record has reads as one free bit: nine bits are looked at and eight are taken.
TEST_P(ReconstructValues, illegalCode)
{
    const SmallTables tables;
    Setting s(bitsOf("0 011"));
    EXPECT_EQ(s.run(true, tables.sizes, tables.codes), level() == w7 ? 0 : -74);
    EXPECT_EQ(s.position, level() == w7 ? 0 : 9);
    EXPECT_EQ(s.count, untouched);
    EXPECT_EQ(s.block.get(0), 100);
}

// Neither the end of block nor an escape's run of 63 and one more leave the scan at the first coefficient.
TEST_P(ReconstructValues, firstCoefficientOutsideTheScan)
{
    const Table first(ListForm::runLevel, sourceList(ListForm::runLevel, {9}, {{2, 0, 254}, {2, 1, 64, 1}}));
    const SmallTables tables;
    for (const char* bits : {"00 10", "01 10"}) {
        Setting s(bitsOf(bits));
        EXPECT_EQ(s.run(false, first, tables.codes), level() == w7 ? 0 : -74);
        EXPECT_EQ(s.position, level() == w7 ? 0 : 2);
        EXPECT_EQ(s.count, untouched);
        for (int i = 0; i < 64; i++) EXPECT_EQ(s.block.get(i), 0);
    }
}

TEST_P(ReconstructValues, intraLevelsOfATableHave8BitsBelowW7)
{
    const Table codes(ListForm::runLevel, sourceList(ListForm::runLevel, {9}, {{1, 0, 254}, {1, 1, 0, 300}}));
    const SmallTables tables;
    Setting s(bitsOf("0 1 0"));
    s.quantScale = 1;
    EXPECT_EQ(s.run(true, tables.sizes, codes), 0);
    EXPECT_EQ(s.block.get(usualScan()[1]), level() == w7 ? 300 : 300 - 256);
}

// 2 * 112 * 2047 and 112 * (2 * 2047 + 1) do not fit 16 bits; a weight of 16 halves them.
TEST_P(ReconstructValues, productsWrapAtW7)
{
    const SmallTables tables;
    for (const bool intra : {true, false}) {
        Setting s(bitsOf(intra ? "0 11 000000 011111111111 10" : "10 11 000000 011111111111 10"));
        s.quantScale = 112;
        EXPECT_EQ(s.run(intra, intra ? tables.sizes : tables.codes, tables.codes), 0);
        const int32_t product = 112 * (2 * 2047 + !intra);
        EXPECT_EQ(s.block.get(usualScan()[1]),
                  level() == w7 ? static_cast<int16_t>(product) / 2 : static_cast<int16_t>(product / 2));
    }
}

TEST_P(ReconstructValues, nullMatrixIsFlatUnlessTheProductWraps)
{
    const SmallTables tables;
    for (int quantScale = 1; quantScale <= 112; quantScale++) {
        Setting flat(bitsOf("010 00 00 10")), table(bitsOf("010 00 00 10"));
        flat.flat = true;
        flat.quantScale = table.quantScale = static_cast<int16_t>(quantScale);
        EXPECT_EQ(flat.run(false, tables.codes, tables.codes), 0);
        EXPECT_EQ(table.run(false, tables.codes, tables.codes), 0);
        for (int i = 0; i < 64; i++) EXPECT_EQ(flat.block.get(i), table.block.get(i));
    }
}

// At w7 the run/level structures' own first width is not read.
TEST_P(ReconstructValues, rootWidthIsBuiltInAtW7)
{
    if (level() != w7) return;
    const SmallTables tables;
    std::vector<uint32_t> copy(tables.codes.structure, tables.codes.structure + 513);
    copy[0] = 5;
    Setting s(bitsOf("0 00 10")), nonIntra(bitsOf("010 00 10"));
    EXPECT_EQ(s.run(true, tables.sizes.structure, copy.data()), 0);
    EXPECT_EQ(s.position, 5);
    EXPECT_EQ(s.count, 1);
    EXPECT_EQ(nonIntra.run(false, copy.data(), copy.data()), 0);
    EXPECT_EQ(nonIntra.position, 7);
}

TEST_P(ReconstructValues, nullPointers)
{
    const SmallTables tables;
    const auto words = bitsOf("0 10");
    const auto scan = usualScan();
    const std::vector<int16_t> matrix(64, 16);
    for (const bool intra : {true, false}) {
        const int pointers = intra ? 9 : 8;
        for (int wrong = 1; wrong < 1 << pointers; wrong++) {
            if (!intra && wrong == 1 << 5) continue;   // the flat matrix
            uint32_t* word = const_cast<uint32_t*>(words.data());
            int32_t offset = 31, count = untouched;
            int16_t predictor = 5;
            int16_t block[64];
            std::fill_n(block, 64, int16_t(0x5A5A));
            const auto unless = [&](int bit, auto* pointer) { return wrong >> bit & 1 ? nullptr : pointer; };
            const uint32_t* const first = intra ? tables.sizes.structure : tables.codes.structure;
            const uint32_t* const second = tables.codes.structure;
            const ruxStatus status =
                intra ? call(ruxiReconstructDCTBlockIntra_MPEG2_32s, unless(0, &word), unless(1, &offset),
                             unless(2, first), unless(3, second), unless(4, scan.data()), 2, unless(5, matrix.data()),
                             unless(6, &predictor), 0, unless(7, block), unless(8, &count))
                      : call(ruxiReconstructDCTBlock_MPEG2_32s, unless(0, &word), unless(1, &offset),
                             unless(2, first), unless(3, second), unless(4, scan.data()), 2, unless(5, matrix.data()),
                             unless(6, block), unless(7, &count));
            ASSERT_EQ(status, -8) << wrong;
            EXPECT_EQ(word, words.data());
            EXPECT_EQ(offset, 31);
            EXPECT_EQ(count, untouched);
            EXPECT_EQ(predictor, 5);
            for (int16_t element : block) EXPECT_EQ(element, 0x5A5A);
        }
    }
}

}
