// Building of the tables by which pairs are written, against the model and the contract's numbers.
#include "block_requests.h"
#include "model/run_length.h"
#include "run_length_tables.h"

namespace rux::test {

RUX_FAMILY(RunLengthTable, "run_length");

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

TEST_P(RunLengthTable, ruxiCreateRLEncodeTable)
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
TEST_P(RunLengthTable, listsThatDoNotFit)
{
    const std::vector<SourceCode> lists[] = {{{3, 1, 256, 1}, {3, 2, 256, -1}},
                                             {{3, 1, -1, 1}, {3, 2, -1, -1}},
                                             {{3, 1, 0, 1}, {3, 2, 0, 2}},           // one sign, at the table's end
                                             {{3, 1, 0, 1}, {3, 2, 0, -1}, {3, 3, 0, 2}, {3, 4, 0, -2},
                                              {3, 5, 1, -2}},                       // level 2 would be read there
                                             {{3, 1, 0, 3}, {2, 2, 254}, {6, 1, 255}},   // -3 would be before it
                                             {{3, 1, 0, 2000}, {3, 2, 0, -1}},
                                             {{3, 1, 0, 1}, {3, 2, 0, -2000}}};
    for (const auto& codes : lists) {
        const Table table(listOf(codes));
        EXPECT_EQ(table.status, ruxStatusMemoryAllocated);
        EXPECT_EQ(outstandingBlocks(), 0);
    }
}

// The code of a lone level 1 goes over the centre of the next run. No block has a run above 63.
TEST_P(RunLengthTable, codesOverTheNextCentre)
{
    for (const int run : {0, 1, 7, 8, 30, 61, 62, 63, 64, 250}) {
        const Table table(listOf({{3, 1, run, 1}, {3, 2, run + 1, 1}, {2, 2, 254}, {6, 1, 255}}));
        EXPECT_EQ(table.status, run + 1 <= 63 ? ruxStatusMemoryAllocated : ruxStatusOk) << run;
    }
}

// In the last run it goes over what the records of the escape and the end of block make room for.
TEST_P(RunLengthTable, loneLevelOfTheLastRun)
{
    const Table table(listOf({{4, 9, 0, 1}, {2, 2, 254}, {6, 1, 255}}));
    ASSERT_EQ(table.status, 0);
    EXPECT_EQ(table[1], 8u);
    EXPECT_EQ(table[2], 1u);
    EXPECT_EQ(table[3], 9u << 16 | 4);
}

// In word 0 they run over into what stands above them, but not into the greatest run.
TEST_P(RunLengthTable, specialCodesLongerThanTheirPlaces)
{
    const struct { std::vector<SourceCode> special; uint32_t word; } numbers[] = {
        {{{7, 0x42, 254}}, 7 << 10 | 2 << 14},
        {{{2, 0x42, 254}}, 2 << 10 | 2 << 14},
        {{{16, 0xFFFF, 254}}, 0x3F << 14},
        {{{7, 0x42, 255}}, 7 | 0x42 << 4},
        {{{7, 0x42, 255}, {2, 2, 254}}, 7 | 0x42 << 4 | 2 << 10 | 2 << 14},
        {{{2, 0xFFFF, 255}}, 0xFFFF2},
        {{{17, 0x10000, 255}}, 17}};
    for (const auto& number : numbers) {
        std::vector<SourceCode> codes = {{2, 3, 0, 1}, {3, 5, 0, -1}, {4, 6, 2, 1}, {4, 7, 2, -1}};
        codes.insert(codes.end(), number.special.begin(), number.special.end());
        const Table table(listOf(codes));
        ASSERT_EQ(table.status, 0);
        EXPECT_EQ(table[0], number.word | 2 << 20);
    }
}

TEST_P(RunLengthTable, codesKeepSixteenBits)
{
    const Table table(listOf({{17, 0x15678, 0, 1}, {17, 0x1FFFF, 0, -1}}));
    ASSERT_EQ(table.status, 0);
    EXPECT_EQ(table[4], 0x56780011u);
    EXPECT_EQ(table[2], 0xFFFF0011u);
}

// (n + 2 * maxRun) * 4 + 12 bytes for n records.
TEST_P(RunLengthTable, requestedMemory)
{
    const auto requested = [](const std::vector<SourceCode>& codes) {
        const std::vector<int32_t> list = listOf(codes);
        const BlockRequests requests;
        EXPECT_EQ(Table(list).status, 0);
        return requests.sizes;
    };
    EXPECT_EQ(requested({}), BlockSizes({12}));
    EXPECT_EQ(requested({{2, 3, 0, 1}, {3, 5, 0, -1}}), BlockSizes({2 * 4 + 12}));
    EXPECT_EQ(requested({{2, 3, 0, 1}, {3, 5, 0, -1}, {6, 1, 255}, {2, 2, 254}}), BlockSizes({4 * 4 + 12}));
    EXPECT_EQ(requested({{2, 3, 30, 1}, {3, 5, 30, -1}}), BlockSizes({(2 + 2 * 30) * 4 + 12}));
}

TEST_P(RunLengthTable, layoutOfATable)
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

TEST_P(RunLengthTable, emptyListHasOneRunWithoutRecords)
{
    const Table table(listOf({}));
    ASSERT_EQ(table.status, 0);
    EXPECT_EQ(table[0], 0u);
    EXPECT_EQ(table[1], 8u);
    EXPECT_EQ(table[2], 0xFFFFFFFFu);
}

TEST_P(RunLengthTable, builderOutOfMemory)
{
    const std::vector<int32_t> list = listOf({{2, 3, 0, 1}, {3, 5, 0, -1}});
    forEachRefusal(1, [&](bool refused) {
        const Table table(list);
        EXPECT_EQ(table.status, refused ? ruxStatusMemoryAllocated : ruxStatusOk);
    });
}

}
