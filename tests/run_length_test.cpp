// Run-length encoding, against the models and the contract's numbers.
#include "code_lists.h"
#include "model/run_length.h"
#include "ruxlib.h"
#include "support/family.h"

namespace rux::test {

RUX_FAMILY(RunLength, "run_length");

using model::ListForm;

static std::vector<int32_t> listOf(const std::vector<SourceCode>& codes, const std::vector<int32_t>& widths = {8, 5, 4})
{
    return sourceList(ListForm::runLevel, widths, codes);
}

static SourceCode randomCode(Random& random, int32_t run, int32_t level)
{
    const int length = random.between(1, 17);
    const auto bits = static_cast<int32_t>(random.below(1u << std::min(length, 16)));
    return {length, bits, run, level};
}

// Whole lists: for each run both signs of every level up to the run's greatest. Some runs have none.
static std::vector<SourceCode> wholeCodes(Random& random)
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

static std::vector<SourceCode> hostileCodes(Random& random)
{
    std::vector<SourceCode> codes;
    const int count = random.between(0, 12);
    for (int i = 0; i < count; i++) {
        const int32_t run = random.oneIn(10) ? random.between(-3, 400) : random.between(0, 6);
        const int32_t level = random.oneIn(10) ? random.between(-3000, 3000) : random.between(-3, 3);
        codes.push_back(randomCode(random, run, level));
    }
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

static void expectTable(const std::vector<int32_t>& list, Place place, Digest& digest)
{
    const auto expected = model::buildEncodeTable(list.data());
    const Table table(list, place);
    if (expected.damaged && table.status == ruxStatusMemoryAllocated) return;
    ASSERT_EQ(table.status, expected.status);
    digest.add(table.status);
    for (size_t i = 0; i < expected.words.size(); i++) {
        if (!expected.written[i]) continue;
        ASSERT_EQ(table[i], expected.words[i]) << "word " << i;
        digest.add(&expected.words[i], 4);
    }
}

TEST_P(RunLength, ruxiCreateRLEncodeTable)
{
    Digest digest;
    for (int i = 0; i < 600 && !HasFailure(); i++) {
        const Note note([&] { return "list " + std::to_string(i); });
        Random random(static_cast<uint64_t>(i) + 1);
        Place place;
        if (i % 4 == 1) place = {Edge::start, i % 64};
        expectTable(listOf(i % 3 == 0 ? hostileCodes(random) : wholeCodes(random)), place, digest);
    }
    expectGolden("run_length", "ruxiCreateRLEncodeTable", level(), digest);
}

// Lists that would be written outside their table are refused, and nothing is leaked.
TEST_P(RunLength, listsThatDoNotFit)
{
    const std::vector<SourceCode> lists[] = {{{3, 1, 256, 1}, {3, 2, 256, -1}},
                                             {{3, 1, -1, 1}, {3, 2, -1, -1}},
                                             {{3, 1, 0, 1}, {3, 2, 0, 2}},           // one sign, at the table's end
                                             {{3, 1, 0, 1}, {3, 2, 0, -1}, {3, 3, 0, 2}, {3, 4, 0, -2},
                                              {3, 5, 1, -2}},                       // level 2 would be read there
                                             {{3, 1, 0, 2000}, {3, 2, 0, -1}},
                                             {{3, 1, 0, 1}, {3, 2, 0, -2000}}};
    for (const auto& codes : lists) {
        const Table table(listOf(codes));
        EXPECT_EQ(table.status, ruxStatusMemoryAllocated);
        EXPECT_EQ(outstandingBlocks(), 0);
    }
}

TEST_P(RunLength, layoutOfATable)
{
    const Table table(listOf({{2, 3, 0, 1}, {3, 5, 0, -1}, {5, 4, 0, 2}, {5, 5, 0, -2}, {4, 6, 2, 1}, {4, 7, 2, -1},
                              {6, 1, 255, 0}, {2, 2, 254, 0}}));
    ASSERT_EQ(table.status, 0);
    EXPECT_EQ(table[0], 6u | 1 << 4 | 2 << 10 | 2 << 14 | 2 << 20);
    const size_t centre = 2 + 2 + 2;   // 4 * maxRun + 8 + 4 * h(0) bytes
    EXPECT_EQ(table[1], 4 * centre);
    EXPECT_EQ(table[2], 4 * (centre + 2 + 0 + 1));
    EXPECT_EQ(table[3], 4 * (centre + 3 + 0 + 1 + 1));
    const uint32_t expected[] = {5 << 16 | 5, 5 << 16 | 3, 2, 3 << 16 | 2, 4 << 16 | 5, 0xFFFFFFFF, 7 << 16 | 4, 1,
                                 6 << 16 | 4};
    for (size_t i = 0; i < 9; i++) EXPECT_EQ(table[4 + i], expected[i]) << i;
}

TEST_P(RunLength, emptyListHasOneRunWithoutRecords)
{
    const Table table(listOf({}));
    ASSERT_EQ(table.status, 0);
    EXPECT_EQ(table[0], 0u);
    EXPECT_EQ(table[1], 8u);
    EXPECT_EQ(table[2], 0xFFFFFFFFu);
}

TEST_P(RunLength, builderOutOfMemory)
{
    const std::vector<int32_t> list = listOf({{2, 3, 0, 1}, {3, 5, 0, -1}});
    forEachRefusal(1, [&](bool refused) {
        const Table table(list);
        EXPECT_EQ(table.status, refused ? ruxStatusMemoryAllocated : ruxStatusOk);
    });
}

// Zigzag order, as good as any.
static std::vector<int32_t> scanOf(Random& random)
{
    std::vector<int32_t> scan(64);
    for (int i = 0; i < 64; i++) scan[static_cast<size_t>(i)] = i;
    for (size_t i = 63; i > 1; i--) std::swap(scan[i], scan[1 + random.below(static_cast<uint32_t>(i))]);
    return scan;
}

static void coefficients(Random& random, int16_t* row, int count)
{
    const uint32_t sparse = 1u << random.below(6);
    const int size = random.oneIn(3) ? 2047 : random.between(1, 6);
    for (int i = 0; i < count; i++) {
        const int value = random.oneIn(30) ? random.between(-32768, 32767) : random.between(-size, size);
        row[i] = random.oneIn(sparse) ? static_cast<int16_t>(value) : int16_t(0);
    }
}

template <class T>
static Image<T> imageOf(const std::vector<T>& elements, Place place = {})
{
    Image<T> image(vectorOf(static_cast<int>(elements.size())).at(place));
    for (size_t i = 0; i < elements.size(); i++) image.set(static_cast<int>(i), 0, elements[i]);
    return image;
}

// Codes of dct_dc_size, each with bits above its length that must not be written.
static std::vector<uint32_t> dcTableOf(Random& random)
{
    std::vector<uint32_t> table;
    for (int size = 0; size <= 17; size++) {
        table.push_back(static_cast<uint32_t>(random.next()));
        table.push_back(random.below(14));
    }
    return table;
}

// One call and its model's, on buffers of their own.
class Written {
public:
    Written(const Image<uint32_t>& stream, int32_t freeBits, int32_t dcPredictor)
        : stream(stream.clone()), word(this->stream.data()), freeBits(freeBits), dcPredictor(dcPredictor)
    {
    }
    ptrdiff_t words() const { return (reinterpret_cast<uint8_t*>(word) - stream.row(0)) / 4; }

    Image<uint32_t> stream;
    uint32_t* word;
    int32_t freeBits, dcPredictor;
};

static void expectSame(const Written& body, const Written& expected, Digest& digest)
{
    EXPECT_TRUE(body.stream.equals(expected.stream));
    EXPECT_EQ(body.words(), expected.words());
    EXPECT_EQ(body.freeBits, expected.freeBits);
    EXPECT_EQ(body.dcPredictor, expected.dcPredictor);
    digest.addRegion(body.stream);
    digest.add(body.freeBits);
}

static Digest compareBlocks(bool intra, Level level)
{
    Digest digest;
    for (int i = 0; i < 1500 && !testing::Test::HasFailure(); i++) {
        const Note note([&] { return "block " + std::to_string(i); });
        Random random(static_cast<uint64_t>(i) + 20000);
        const Table table(listOf(wholeCodes(random)));
        EXPECT_EQ(table.status, 0);
        Place place;
        if (random.oneIn(3)) place = {Edge::start, random.between(0, 63)};
        const Image<int16_t> block(vectorOf(64).at(place), random.next(), coefficients);
        const auto scan = imageOf(scanOf(random));
        const auto dcTable = imageOf(dcTableOf(random), place);
        const int32_t dcPredictor = random.oneIn(3) ? block.get(0) : random.between(-32768, 32767);
        const auto eobLength = random.below(33);
        const auto eobCode = static_cast<int32_t>(random.next());
        const int32_t freeBits = random.between(1, 32), count = static_cast<int32_t>(random.next());
        const bool clear = random.oneIn(2);   // else the words that are not cleared show what is ORed and what assigned
        const Image<uint32_t> stream(vectorOf(70).at(place), random.next(),
                                     clear ? Fill<uint32_t>(constant(0u)) : Fill<uint32_t>(anyBits<uint32_t>));
        Written body(stream, freeBits, dcPredictor), expected(stream, freeBits, dcPredictor);
        const auto before = block.clone();
        if (intra) {
            EXPECT_EQ(call(ruxiPutIntraBlock, &body.word, &body.freeBits, block.data(), &body.dcPredictor,
                           dcTable.data(), table.words(), scan.data(), eobLength, eobCode, count), 0);
            model::ruxiPutIntraBlock(level, &expected.word, &expected.freeBits, block.data(), &expected.dcPredictor,
                                     dcTable.data(), table.words(), scan.data(), eobLength, eobCode, count);
        } else {
            EXPECT_EQ(call(ruxiPutNonIntraBlock, &body.word, &body.freeBits, block.data(), table.words(), scan.data(),
                           eobLength, eobCode, count), 0);
            model::ruxiPutNonIntraBlock(level, &expected.word, &expected.freeBits, block.data(), table.words(),
                                        scan.data(), eobLength, eobCode, count);
        }
        EXPECT_TRUE(block.equals(before));
        expectSame(body, expected, digest);
    }
    return digest;
}

TEST_P(RunLength, ruxiPutIntraBlock)
{
    expectGolden("run_length", "ruxiPutIntraBlock", level(), compareBlocks(true, level()));
}

TEST_P(RunLength, ruxiPutNonIntraBlock)
{
    expectGolden("run_length", "ruxiPutNonIntraBlock", level(), compareBlocks(false, level()));
}

// A block by its coefficients in scan order, and what is written of it into words of zeros.
struct Setting {
    explicit Setting(const std::vector<int16_t>& first) : block(vectorOf(64), 1, constant<int16_t>(0))
    {
        for (size_t i = 0; i < first.size(); i++) block.set(static_cast<int>(i), 0, first[i]);
        for (int i = 0; i < 64; i++) scan.push_back(i);
        for (uint32_t size = 0; size < 18; size++) dcTable.insert(dcTable.end(), {0, 0});
    }
    ruxStatus intra()
    {
        return call(ruxiPutIntraBlock, &word, &freeBits, block.data(), &dcPredictor, dcTable.data(), table.words(),
                    scan.data(), eobLength, 2, 0);
    }
    ruxStatus nonIntra()
    {
        return call(ruxiPutNonIntraBlock, &word, &freeBits, block.data(), table.words(), scan.data(), eobLength, 2, 0);
    }
    // The bits written, as text.
    std::string bits(int32_t from = 32) const
    {
        std::string text;
        const auto end = 32 * (word - words.data()) + 32 - freeBits;
        for (ptrdiff_t i = 32 - from; i < end; i++) {
            text += words[static_cast<size_t>(i / 32)] >> (31 - i % 32) & 1 ? '1' : '0';
        }
        return text;
    }

    Table table{listOf({{2, 3, 0, 1}, {3, 5, 0, -1}, {4, 6, 1, 1}, {4, 7, 1, -1}})};
    Image<int16_t> block;
    std::vector<int32_t> scan;
    std::vector<uint32_t> dcTable, words = std::vector<uint32_t>(60);
    uint32_t* word = words.data();
    int32_t freeBits = 32, dcPredictor = 0;
    uint32_t eobLength = 2;
};

TEST_P(RunLength, differentialOfTheIntraBlock)
{
    const struct { int16_t dc; const char* bits; } numbers[] = {
        {0, "0111" "10"}, {-1, "1100" "0" "10"}, {1, "1100" "1" "10"}, {-3, "1101" "00" "10"}, {3, "1101" "11" "10"}};
    for (const auto& number : numbers) {
        Setting s({number.dc});
        const uint32_t codes[] = {7, 4, 12, 4, 13, 4};   // of sizes 0, 1 and 2
        std::copy(codes, codes + 6, s.dcTable.begin());
        EXPECT_EQ(s.intra(), 0);
        EXPECT_EQ(s.bits(), number.bits) << number.dc;
        EXPECT_EQ(s.dcPredictor, number.dc);
    }
}

TEST_P(RunLength, shortFirstCodeOfTheNonIntraBlock)
{
    const struct { int16_t first; const char* bits; } numbers[] = {{1, "10" "10"}, {-1, "11" "10"}, {0, "10"}};
    for (const auto& number : numbers) {
        Setting s({number.first});
        s.scan[0] = 63;   // not read
        EXPECT_EQ(s.nonIntra(), 0);
        EXPECT_EQ(s.bits(), number.bits);
    }
}

// A zero first coefficient counts as one of the run.
TEST_P(RunLength, runsFromTheFirstCoefficient)
{
    Setting nonIntra({0, 1, 0, -1});
    nonIntra.nonIntra();
    EXPECT_EQ(nonIntra.bits(), "0110" "0111" "10");
    Setting intra({0, 1, 0, -1});
    intra.intra();
    EXPECT_EQ(intra.bits(), "11" "0111" "10");
}

TEST_P(RunLength, whatTheTableLacksEscapes)
{
    Setting run({0, 0, 0, 1});   // run 3 is above maxRun
    run.nonIntra();
    EXPECT_EQ(run.bits(), "000001" "000011" "000000000001" "10");
    Setting level({-2});         // level 2 is above the greatest of run 0
    level.nonIntra();
    EXPECT_EQ(level.bits(), "000001" "000000" "111111111110" "10");
    Setting least({-32768});     // loses its high bits
    least.nonIntra();
    EXPECT_EQ(least.bits(), "000001" "000000" "000000000000" "10");
}

// A run inside the table that has no records.
TEST_P(RunLength, runWithoutRecordsEscapes)
{
    const Table table(listOf({{2, 3, 0, 1}, {3, 5, 0, -1}, {4, 6, 2, 1}, {4, 7, 2, -1}}));
    Setting s({0, 1});
    EXPECT_EQ(call(ruxiPutNonIntraBlock, &s.word, &s.freeBits, s.block.data(), table.words(), s.scan.data(), 0u, 0, 0),
              0);
    EXPECT_EQ(s.bits(), "000001" "000001" "000000000001");
}

TEST_P(RunLength, codeAcrossTwoWords)
{
    Setting s({});
    s.eobLength = 6;   // of the code 2: 000010
    s.freeBits = 2;
    s.words[1] = 0xFFFFFFFF;
    EXPECT_EQ(s.nonIntra(), 0);
    EXPECT_EQ(s.word - s.words.data(), 1);
    EXPECT_EQ(s.freeBits, 28);
    EXPECT_EQ(s.words[1], 0x20000000u);   // assigned
}

TEST_P(RunLength, codeThatEndsWithItsWord)
{
    Setting s({});
    s.eobLength = 6;
    s.freeBits = 6;
    s.words[1] = 0x12345678;
    EXPECT_EQ(s.nonIntra(), 0);
    EXPECT_EQ(s.word - s.words.data(), 1);
    EXPECT_EQ(s.freeBits, 32);
    EXPECT_EQ(s.words[0], 2u);
    EXPECT_EQ(s.words[1], 0x12345678u);
}

// The first entry of the scan stands before the memory.
TEST_P(RunLength, firstEntryOfTheScanIsNotRead)
{
    Setting s({3, 0, 1});
    Image<int32_t> rest(vectorOf(63).at({Edge::start}));
    for (int i = 0; i < 63; i++) rest.set(i, 0, i + 1);
    const int32_t* const scan = rest.data() - 1;
    EXPECT_EQ(call(ruxiPutNonIntraBlock, &s.word, &s.freeBits, s.block.data(), s.table.words(), scan, 2u, 2, 0), 0);
    EXPECT_EQ(call(ruxiPutIntraBlock, &s.word, &s.freeBits, s.block.data(), &s.dcPredictor, s.dcTable.data(),
                   s.table.words(), scan, 2u, 2, 0), 0);
}

TEST_P(RunLength, nullPointers)
{
    for (int null = 0; null < 7; null++) {
        Setting s({5, 1});
        const auto given = [&](int number, auto* pointer) { return null == number ? nullptr : pointer; };
        EXPECT_EQ(call(ruxiPutIntraBlock, given(0, &s.word), given(1, &s.freeBits), given(2, s.block.data()),
                       given(3, &s.dcPredictor), given(4, s.dcTable.data()), given(5, s.table.words()),
                       given(6, s.scan.data()), 2u, 2, 0), ruxStatusNullPointer);
        if (null < 5) {
            EXPECT_EQ(call(ruxiPutNonIntraBlock, given(0, &s.word), given(1, &s.freeBits), given(2, s.block.data()),
                           given(3, s.table.words()), given(4, s.scan.data()), 2u, 2, 0), ruxStatusNullPointer);
        }
        EXPECT_EQ(s.bits(), "");
        EXPECT_EQ(s.dcPredictor, 0);
    }
}

}
