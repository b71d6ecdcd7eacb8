// The load: which level serves on which processor, what gaps in the table do, and what a failed load tells.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "frame/load.h"
#include "ruxlib.h"
#include "support/levels.h"
#include "support/processors.h"

namespace rux::test {
namespace {

constexpr int32_t levelCount = 4;
constexpr int32_t unfilled = -1;

// A table of the library's form over slots of its own. An entry's address tells its row and level.
class Table {
public:
    Table()
    {
        table.count = operationCount;
        for (int32_t row = 0; row < operationCount; ++row) {
            table.rows[row].slot = &slots[row];
            for (int32_t level = 0; level < levelCount; ++level) table.rows[row].entry[level] = entry(row, level);
        }
    }

    void cut(int32_t row, int32_t level) { table.rows[row].entry[level] = nullptr; }

    int32_t levelIn(int32_t row) const
    {
        for (int32_t level = 0; level < levelCount; ++level) {
            if (slots[row] == entry(row, level)) return level;
        }
        EXPECT_EQ(slots[row], nullptr) << "a foreign entry in row " << row;
        return unfilled;
    }

    void expectLevel(int32_t level, int32_t firstRow = 0, int32_t endRow = operationCount) const
    {
        for (int32_t row = firstRow; row < endRow; ++row) EXPECT_EQ(levelIn(row), level) << "row " << row;
    }

    DispatchTable table;

private:
    static Entry entry(int32_t row, int32_t level)
    {
        return reinterpret_cast<Entry>(static_cast<uintptr_t>(0x1000 + levelCount * row + level));
    }

    Entry slots[operationCount] = {};
};

std::vector<std::string> told;

const Reporter recorder = {
    [](char* to, const char* from) {
        for (int index = 0; index < 256; ++index) EXPECT_EQ(to[index], 0) << "the message buffer was not clear";
        told.push_back("copy");
        while ((*to++ = *from++)) {}
    },
    [](uint32_t kind) { told.push_back("beep " + std::to_string(kind)); },
    [](const char* text, const char* title, uint32_t kind) {
        told.push_back("box " + std::to_string(kind) + "|" + title + "|" + text);
    },
};

const std::vector<std::string> failure = {
    "copy", "beep 16", "box 16|Set rux library error| No rux matching to CPU was found during the Waterfall"};

int32_t load(const DispatchTable& table, FakeProcessor processor)
{
    told.clear();
    return setLibrary(table, processorOf(processor), recorder);
}

TEST(Load, bindsTheProcessorsOwnLevel)
{
    for (int32_t level = 0; level < levelCount; ++level) {
        Table table;
        EXPECT_EQ(load(table.table, processorOfLevel(level)), 1);
        table.expectLevel(level);
        EXPECT_TRUE(told.empty());
    }
}

TEST(Load, fallsBackWholeWhenALevelHasAGap)
{
    const int32_t gap = operationCount > 100 ? 100 : operationCount - 1;
    Table table;
    table.cut(gap, 3);
    EXPECT_EQ(load(table.table, processorOfLevel(3)), 1);
    table.expectLevel(2);
    EXPECT_TRUE(told.empty());
}

// Every set of levels with a gap, on a processor of every level, with the gap in the first, a middle and the last row.
TEST(Load, walksTheWaterfall)
{
    for (const int32_t gap : {0, operationCount / 2, operationCount - 1}) {
        for (int32_t processorLevel = 0; processorLevel < levelCount; ++processorLevel) {
            for (int32_t gaps = 0; gaps < 16; ++gaps) {
                SCOPED_TRACE("gap in row " + std::to_string(gap) + ", levels " + std::to_string(gaps) +
                             ", processor " + std::to_string(processorLevel));
                Table table;
                int32_t best = unfilled;
                for (int32_t level = 0; level < levelCount; ++level) {
                    if (gaps >> level & 1) table.cut(gap, level);
                    else if (level <= processorLevel) best = level;
                }
                EXPECT_EQ(load(table.table, processorOfLevel(processorLevel)), best != unfilled);
                if (best != unfilled) {
                    table.expectLevel(best);
                    EXPECT_TRUE(told.empty());
                } else {
                    table.expectLevel(0, 0, gap);   // level 0 was the last to be tried, up to its gap
                    table.expectLevel(unfilled, gap, operationCount);
                    EXPECT_EQ(told, failure);
                }
            }
        }
    }
}

TEST(Load, isRefusedWithBeepThenBoxOnAGapAtLevel0)
{
    Table table;
    table.cut(0, 0);
    EXPECT_EQ(load(table.table, processorOfLevel(0)), 0);
    EXPECT_EQ(told, failure);
}

TEST(Load, isRefusedWithoutRows)
{
    for (const int32_t count : {0, -1, INT32_MIN}) {
        Table table;
        table.table.count = count;
        EXPECT_EQ(load(table.table, processorOfLevel(3)), 0);
        EXPECT_EQ(told, failure);
        table.expectLevel(unfilled);
        for (int32_t level = 0; level < levelCount; ++level) EXPECT_EQ(fillSlots(table.table, level), 1);
        table.expectLevel(unfilled);
    }
}

TEST(Load, takesAProcessorWithoutCpuidAsLevel0)
{
    FakeProcessor processor = processorOfLevel(3);
    processor.hasCpuid = false;
    Table table;
    EXPECT_EQ(load(table.table, processor), 1);
    table.expectLevel(0);
}

TEST(Load, followsTheReportAndNotTheTrials)
{
    FakeProcessor processor = processorOfLevel(2);
    processor.faultingTrials = featureSse;
    Table table;
    EXPECT_EQ(load(table.table, processor), 1);
    table.expectLevel(2);
}

TEST(Load, looksAtTheExtendedFlagForNothing)
{
    for (int32_t level = 0; level < levelCount; ++level) {
        FakeProcessor processor = processorOfLevel(level);
        processor.highestExtended = 0x80000001;
        processor.extendedFeatures = reportsExtended;
        Table table;
        EXPECT_EQ(load(table.table, processor), 1);
        table.expectLevel(level);
    }
    FakeProcessor withoutSse = processorOfLevel(0);
    withoutSse.features = reportsSse2 | reportsMmx;
    Table table;
    EXPECT_EQ(load(table.table, withoutSse), 1);
    table.expectLevel(3);
}

TEST(FillSlots, stopsAtTheFirstGapAndKeepsWhatItWrote)
{
    Table table;
    const int32_t gap = operationCount / 2;
    ASSERT_EQ(fillSlots(table.table, 1), 1);
    table.cut(gap, 3);
    EXPECT_EQ(fillSlots(table.table, 3), 0);
    table.expectLevel(3, 0, gap);
    table.expectLevel(1, gap, operationCount);
}

TEST(FillSlots, copiesCountRowsAndNoMore)
{
    Table table;
    table.table.count = operationCount - 1;
    table.cut(operationCount - 1, 2);
    EXPECT_EQ(fillSlots(table.table, 2), 1);
    table.expectLevel(2, 0, operationCount - 1);
    EXPECT_EQ(table.levelIn(operationCount - 1), unfilled);
}

// A host's own initialisers may call the library: it has been loaded before them.
const std::string levelInAnInitialiser = ruxiGetLibVersion()->targetName;

TEST(BuiltLibrary, isLoadedBeforeTheHostsInitialisers)
{
    EXPECT_EQ(levelInAnInitialiser, nameOf(static_cast<Level>(levelOf(ruxGetProcessorInfo(nullptr)))));
}

TEST(BuiltLibrary, bindsTheProcessorsLevelToEveryName)
{
    const int32_t level = levelOf(ruxGetProcessorInfo(nullptr));
    ASSERT_EQ(ruxFillSlots(0), 1);
    EXPECT_EQ(ruxSetLibrary(), 1);
    for (const DispatchEntry& row : dispatchTable.rows) EXPECT_EQ(*row.slot, row.entry[level]);
    EXPECT_STREQ(ruxiGetLibVersion()->targetName, nameOf(static_cast<Level>(level)));
    EXPECT_STREQ(ruxsGetLibVersion()->targetName, nameOf(static_cast<Level>(level)));
}

}
}
