// Writing of blocks, against the models and the contract's numbers.
#include <bitset>

#include "model/run_length.h"
#include "run_length_tables.h"

namespace rux::test {

RUX_FAMILY(RunLength, "run_length");

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
        for (uint32_t size = 0; size <= 32; size++) dcTable.insert(dcTable.end(), {0, 0});
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

// The predictor has 32 bits, and the difference wraps.
TEST_P(RunLength, wideDifferentials)
{
    const auto expectBits = [](int16_t dc, int32_t predictor, size_t size, uint32_t bits) {
        Setting s({dc});
        s.dcPredictor = predictor;
        s.dcTable[2 * size] = static_cast<uint32_t>(size);
        s.dcTable[2 * size + 1] = 6;
        EXPECT_EQ(s.intra(), 0);
        const std::string code = std::bitset<6>(size).to_string(), all = std::bitset<32>(bits).to_string();
        EXPECT_EQ(s.bits(), code + all.substr(32 - size) + "10") << dc << " after " << predictor;
        EXPECT_EQ(s.dcPredictor, dc);
    };
    for (size_t size = 1; size <= 31; size++) {
        const int32_t least = 1 << (size - 1);   // of this size
        expectBits(0, -least, size, static_cast<uint32_t>(least));
        expectBits(0, least, size, static_cast<uint32_t>(least) - 1);
    }
    expectBits(0, INT32_MAX, 31, 0);
    expectBits(0, INT32_MIN, 32, 0x7FFFFFFF);
    expectBits(-1, INT32_MAX, 32, 0x7FFFFFFF);
    expectBits(-1, INT32_MIN, 31, 0x7FFFFFFF);
    expectBits(32767, INT32_MIN, 31, 32766);
    expectBits(-32768, INT32_MAX, 31, 0x7FFF8001);
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

// The last word that is written is the last of the memory.
TEST_P(RunLength, codeThatEndsWithTheStream)
{
    const std::vector<int16_t> blocks[] = {{}, {1}, {1, -1}, {0, 9}, {-1, 0, 1, 7, 1, 0, 0, 1}};
    for (const auto& block : blocks) {
        for (const bool intra : {false, true}) {
            const auto expectWords = [&](uint32_t eobLength, int32_t freeBits, int words) {
                Setting s(block);
                const Image<uint32_t> stream(vectorOf(words), 1, constant(0u));
                s.word = stream.data();
                s.freeBits = freeBits;
                s.eobLength = eobLength;
                EXPECT_EQ(intra ? s.intra() : s.nonIntra(), 0);
                EXPECT_EQ(s.word - stream.data(), words);
                EXPECT_EQ(s.freeBits, 32);
            };
            Setting s(block);
            s.eobLength = 0;
            EXPECT_EQ(intra ? s.intra() : s.nonIntra(), 0);
            const int bits = static_cast<int>(s.bits().size());
            expectWords(32 - static_cast<uint32_t>(bits) % 32, 32, bits / 32 + 1);   // by the end of block
            if (bits > 0) expectWords(0, (bits - 1) % 32 + 1, (bits + 31) / 32);     // by the code before it
        }
    }
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
