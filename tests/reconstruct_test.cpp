// Decoding of MPEG-2 blocks, against a model that reads the code lists, and the contract's numbers.
#include "code_lists.h"
#include "model/reconstruct.h"
#include "ruxlib.h"
#include "support/family.h"

namespace rux::test {

using model::CodeList;
using model::DecodedBlock;
using model::ListForm;

RUX_FAMILY(Reconstruct, "reconstruct");

static constexpr int32_t untouched = 0x5A5A5A5A;

class Table {
public:
    Table(ListForm form, const std::vector<int32_t>& words) : list(model::parseCodeList(form, words.data()))
    {
        const auto build = form == ListForm::plain ? ruxiVCHuffmanInitAlloc_32s : ruxiVCHuffmanInitAllocRL_32s;
        EXPECT_EQ(call(build, words.data(), &structure), 0);
    }
    ~Table() { call(ruxiVCHuffmanFree_32s, &structure); }
    Table(const Table&) = delete;

    CodeList list;
    uint32_t* structure = nullptr;
};

// Where the buffers of a call stand.
struct Places {
    Place stream, matrix, block;
};

template <class T>
static Image<T> imageOf(const std::vector<T>& elements, Place place)
{
    Image<T> image(vectorOf(static_cast<int>(elements.size())).at(place));
    for (size_t i = 0; i < elements.size(); i++) image.set(static_cast<int>(i), 0, elements[i]);
    return image;
}

// A scan that is neither of the standard's and leaves 0 and 63 in their places.
static std::vector<int32_t> usualScan()
{
    std::vector<int32_t> scan(64);
    for (int i = 0; i < 63; i++) scan[static_cast<size_t>(i)] = i * 5 % 63;
    scan[63] = 63;
    return scan;
}

// All that one call takes; `run` calls and leaves the new position.
struct Setting {
    explicit Setting(const std::vector<uint32_t>& words, const std::vector<int32_t>& scan = usualScan(),
                     const std::vector<int16_t>& matrix = std::vector<int16_t>(64, 16), const Places& places = {})
        : stream(imageOf(words, places.stream)), scan(imageOf(scan, {})), matrix(imageOf(matrix, places.matrix)),
          block(vectorOf(64).at(places.block))
    {
    }

    // `second` is the table of the coefficients behind the first.
    ruxStatus run(bool intra, const Table& first, const Table& second)
    {
        return run(intra, first.structure, second.structure);
    }
    ruxStatus run(bool intra, const uint32_t* first, const uint32_t* second)
    {
        uint32_t* word = model::advance(stream.data(), static_cast<ptrdiff_t>(position / 32 * 4));
        int32_t offset = static_cast<int32_t>(31 - position % 32);
        const int16_t* const weights = flat ? nullptr : matrix.data();
        const int32_t* const order = scan.data();
        const ruxStatus status =
            intra ? call(ruxiReconstructDCTBlockIntra_MPEG2_32s, &word, &offset, first, second, order, quantScale,
                         weights, &predictor, dcShift, block.data(), &count)
                  : call(ruxiReconstructDCTBlock_MPEG2_32s, &word, &offset, first, second, order, quantScale, weights,
                         block.data(), &count);
        const ptrdiff_t bytes = reinterpret_cast<uint8_t*>(word) - stream.row(0);
        EXPECT_TRUE(offset >= 0 && offset <= 31 && bytes % 4 == 0);
        position = bytes * 8 + 31 - offset;
        return status;
    }

    Image<uint32_t> stream;
    Image<int32_t> scan;
    Image<int16_t> matrix, block;
    int64_t position = 0;
    int16_t quantScale = 2;
    bool flat = false;
    int16_t predictor = 100;
    int32_t dcShift = 0, count = untouched;
};

// Widths whose sum reaches the longest code; the first is 9, as w7 has it.
static std::vector<int32_t> widthsFor(Random& random, int longest, int root)
{
    std::vector<int32_t> widths = {root};
    for (int sum = root; sum < longest; sum += widths.back()) widths.push_back(random.between(1, 8));
    return widths;
}

static std::vector<int32_t> sizeList(Random& random)
{
    auto codes = randomTree(random, random.between(2, 13), 11);
    for (SourceCode& code : codes) code.value = random.oneIn(8) ? random.between(0, 16) : random.between(0, 11);
    return sourceList(ListForm::plain, widthsFor(random, longestOf(codes), random.between(1, 9)), codes);
}

// Runs and levels as tables have them, and at times wild ones; some bit patterns have no code.
static std::vector<int32_t> runLevelList(Random& random, int root)
{
    auto codes = randomTree(random, random.between(6, 40), 17);
    const bool wild = random.oneIn(3);
    for (SourceCode& code : codes) {
        code.value = random.oneIn(10) ? random.between(0, wild ? 253 : 31) : random.between(0, 2);
        code.level = wild ? static_cast<int16_t>(random.next()) : random.between(-40, 40);
    }
    codes[random.below(3)].value = 254;
    codes[3 + random.below(2)].value = 255;
    codes.resize(codes.size() - random.below(2));
    return sourceList(ListForm::runLevel, widthsFor(random, longestOf(codes), root), codes);
}

static void putCode(BitWriter& writer, const CodeList& list, Random& random)
{
    const model::Code& code = list.codes[random.below(static_cast<uint32_t>(list.codes.size()))];
    writer.put(code.bits, code.length);
    if ((code.payload & 255) != 255) return;
    writer.put(random.below(4), 6);
    writer.put(random.oneIn(2) ? random.below(64) : static_cast<uint32_t>(random.next()) & 0xFFF, 12);
}

static void putEndOfBlock(BitWriter& writer, const CodeList& list)
{
    for (const model::Code& code : list.codes) {
        if ((code.payload & 255) == 254) return writer.put(code.bits, code.length);
    }
}

// A block's bits at some position, and behind them, or in their place, bits without sense.
static std::vector<uint32_t> randomStream(Random& random, bool intra, const CodeList& first, const CodeList& second,
                                          int position)
{
    BitWriter writer;
    for (int i = 0; i < position; i++) writer.put(random.below(2), 1);
    if (!random.oneIn(5)) {
        if (intra) {
            const model::Code& size = first.codes[random.below(static_cast<uint32_t>(first.codes.size()))];
            writer.put(size.bits, size.length);
            writer.put(static_cast<uint32_t>(random.next()), size.payload);
        } else if (random.oneIn(2)) {
            writer.put(2 + random.below(2), 2);
        } else {
            putCode(writer, first, random);
        }
        for (int codes = random.oneIn(4) ? 64 : random.between(0, 20); codes > 0; codes--) {
            putCode(writer, second, random);
        }
        putEndOfBlock(writer, second);
    }
    const int64_t end = writer.position + 4096;
    while (writer.position < end) writer.put(static_cast<uint32_t>(random.next()), 32);
    return writer.words;
}

static Place evenPlace(Random& random)
{
    if (random.oneIn(2)) return {};
    return {random.oneIn(2) ? Edge::start : Edge::end, 2 * random.between(0, 31)};
}

static std::vector<int32_t> randomScan(Random& random)
{
    std::vector<int32_t> scan(64);
    for (int i = 0; i < 64; i++) scan[static_cast<size_t>(i)] = i;
    for (uint32_t i = 63; i > 0; i--) std::swap(scan[i], scan[random.below(i + 1)]);
    return scan;
}

// One block by both, over a stream that ends at a faulting page: behind the last word that the lookups touch, at w7
// two words later. True for a block with its end.
static bool compareBlock(Random& random, Level level, bool intra, const Table& first, const Table& second,
                         Digest& digest)
{
    const int start = random.between(0, 40);
    auto words = randomStream(random, intra, first.list, second.list, start);
    const auto scan = randomScan(random);
    std::vector<int16_t> matrix(64);
    if (random.oneIn(4)) mixture(random, matrix.data(), 64);
    else uniform<int16_t>(1, 255)(random, matrix.data(), 64);
    const bool flat = !intra && random.oneIn(3);
    const auto quantScale =
        static_cast<int16_t>(random.oneIn(6) ? static_cast<int>(random.below(65536)) : random.between(1, 112));
    const auto predictor = static_cast<int16_t>(random.next());
    const int32_t dcShift = random.between(0, 3);

    const model::BitSequence bits(words.data());
    const DecodedBlock expected =
        intra ? model::decodeIntraBlock(level, bits, start, first.list, second.list, scan.data(), quantScale,
                                        matrix.data(), predictor, dcShift)
              : model::decodeNonIntraBlock(level, bits, start, first.list, second.list, scan.data(), quantScale,
                                           flat ? nullptr : matrix.data());
    words.resize(static_cast<size_t>((expected.looked + 31) / 32 + (level == w7 ? 2 : 0)));

    Places places;
    places.matrix = evenPlace(random);
    places.block = evenPlace(random);
    Setting s(words, scan, matrix, places);
    s.position = start, s.quantScale = quantScale, s.flat = flat, s.predictor = predictor, s.dcShift = dcShift;
    const auto stream = s.stream.clone();
    const auto weights = s.matrix.clone();
    const auto order = s.scan.clone();
    auto block = s.block.clone();
    for (int i = 0; i < 64; i++) block.set(i, 0, expected.coefficients[i]);

    EXPECT_EQ(s.run(intra, first, second), expected.status);
    EXPECT_EQ(s.position, expected.writesPosition ? expected.position : start);
    EXPECT_EQ(s.count, expected.writesCount ? expected.count : untouched);
    EXPECT_EQ(s.predictor, intra ? expected.predictor : predictor);
    EXPECT_TRUE(s.block.equals(block));
    EXPECT_TRUE(s.stream.equals(stream) && s.matrix.equals(weights) && s.scan.equals(order)) << "an input was written";
    digest.add(expected.status);
    digest.add(static_cast<int32_t>(s.position));
    digest.add(s.count);
    digest.add(s.predictor);
    digest.addRegion(s.block);
    return expected.writesCount;
}

static void compareBlocks(Level level, bool intra, Digest& digest)
{
    int whole = 0, broken = 0;
    for (int i = 0; i < 60 && !testing::Test::HasFailure(); i++) {
        Random random(static_cast<uint64_t>(i) * 2 + intra);
        const int anyRoot = random.between(1, 12);
        const int root = level == w7 || i % 3 ? 9 : anyRoot;
        const auto firstWords = intra ? sizeList(random) : runLevelList(random, root);
        const auto secondWords = runLevelList(random, root);
        const Table first(intra ? ListForm::plain : ListForm::runLevel, firstWords);
        const Table second(ListForm::runLevel, secondWords);
        for (int repeat = 0; repeat < 40 && !testing::Test::HasFailure(); repeat++) {
            const Note note([=] { return "tables " + std::to_string(i) + ", block " + std::to_string(repeat); });
            SCOPED_TRACE(Note::all());
            (compareBlock(random, level, intra, first, second, digest) ? whole : broken)++;
        }
    }
    EXPECT_GT(whole, 300);
    EXPECT_GT(broken, 300);
}

TEST_P(Reconstruct, ruxiReconstructDCTBlockIntra_MPEG2_32s)
{
    Digest digest;
    compareBlocks(level(), true, digest);
    expectGolden("reconstruct", "ruxiReconstructDCTBlockIntra_MPEG2_32s", level(), digest);
}

TEST_P(Reconstruct, ruxiReconstructDCTBlock_MPEG2_32s)
{
    Digest digest;
    compareBlocks(level(), false, digest);
    expectGolden("reconstruct", "ruxiReconstructDCTBlock_MPEG2_32s", level(), digest);
}

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

TEST_P(Reconstruct, intraBlockOfSizeZero)
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

TEST_P(Reconstruct, differentialsOfBothSigns)
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

TEST_P(Reconstruct, shortFirstCode)
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

TEST_P(Reconstruct, oneCoefficientAtScanPosition3)
{
    const SmallTables tables;
    Setting s(bitsOf("010 10"));
    EXPECT_EQ(s.run(false, tables.codes, tables.codes), 0);
    EXPECT_EQ(s.count, 3);
    EXPECT_EQ(s.block.get(usualScan()[3]), 5);   // 16 * 2 * 5 / 32
}

// Escapes of run 62 or 63 and level 1 behind a first coefficient at 0.
TEST_P(Reconstruct, scanPositions63And64)
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

TEST_P(Reconstruct, mismatchAloneAt63)
{
    const SmallTables tables;
    Setting s(bitsOf("0 00 10"));
    s.predictor = 6, s.quantScale = 16;   // 16 * 2 * 16 / 32 = 16: an even sum
    EXPECT_EQ(s.run(true, tables.sizes, tables.codes), 0);
    EXPECT_EQ(s.block.get(63), 1);
    EXPECT_EQ(s.count, 1);
}

// The code that no record has reads as one free bit: nine bits are looked at and eight are taken.
TEST_P(Reconstruct, illegalCode)
{
    const SmallTables tables;
    Setting s(bitsOf("0 011"));
    EXPECT_EQ(s.run(true, tables.sizes, tables.codes), level() == w7 ? 0 : -74);
    EXPECT_EQ(s.position, level() == w7 ? 0 : 9);
    EXPECT_EQ(s.count, untouched);
    EXPECT_EQ(s.block.get(0), 100);
}

// Neither the end of block nor an escape's run of 63 and one more leave the scan at the first coefficient.
TEST_P(Reconstruct, firstCoefficientOutsideTheScan)
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

TEST_P(Reconstruct, intraLevelsOfATableHave8BitsBelowW7)
{
    const Table codes(ListForm::runLevel, sourceList(ListForm::runLevel, {9}, {{1, 0, 254}, {1, 1, 0, 300}}));
    const SmallTables tables;
    Setting s(bitsOf("0 1 0"));
    s.quantScale = 1;
    EXPECT_EQ(s.run(true, tables.sizes, codes), 0);
    EXPECT_EQ(s.block.get(usualScan()[1]), level() == w7 ? 300 : 300 - 256);
}

// 2 * 112 * 2047 and 112 * (2 * 2047 + 1) do not fit 16 bits; a weight of 16 halves them.
TEST_P(Reconstruct, productsWrapAtW7)
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

TEST_P(Reconstruct, nullMatrixIsFlatUnlessTheProductWraps)
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
TEST_P(Reconstruct, rootWidthIsBuiltInAtW7)
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

TEST_P(Reconstruct, nullPointers)
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
