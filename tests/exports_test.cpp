// The exported names: the list against the header, and the way from name through stub and slot to the body.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <utility>
#include <vector>

#include "frame/dispatch.h"
#include "ruxlib.h"
#include "support/levels.h"

#define OPERATION(name, bytes, form) extern "C" rux::Entry ruxSlot_##name;
#include "frame/operations.def"
#undef OPERATION

namespace rux::test {
namespace {

// The bytes of an argument list on 32-bit x86: pointers and what is smaller take four, records their size.
template <class Parameter>
constexpr int bytesOf()
{
    return std::is_pointer_v<Parameter> ? 4 : static_cast<int>((sizeof(Parameter) + 3) / 4 * 4);
}

template <class Result, class... Parameters>
constexpr int argumentBytes(Result(RUXCALL*)(Parameters...))
{
    return (0 + ... + bytesOf<Parameters>());
}

struct ListedName {
    const char* name;
    int bytes, bytesInHeader;
    const char* form;
};
const ListedName listed[] = {
#define OPERATION(name, bytes, form) {#name, bytes, argumentBytes(static_cast<decltype(&::name)>(nullptr)), #form},
#include "frame/operations.def"
#undef OPERATION
};

// What is exported, in the table's order.
struct ExportedName {
    const char* name;
    Entry stub;
    Entry* slot;
};
const ExportedName exported[] = {
#define OPERATION(name, bytes, form) {#name, reinterpret_cast<Entry>(&::name), &ruxSlot_##name},
#include "frame/operations.def"
#undef OPERATION
};

// Bodies that tell which slot led to them.
template <int row>
int rowReached()
{
    return row;
}

template <int... rows>
std::vector<Entry> markers(std::integer_sequence<int, rows...>)
{
    return {reinterpret_cast<Entry>(&rowReached<rows>)...};
}

}

TEST(ListOfOperations, holdsAllNamesInByteOrder)
{
    EXPECT_EQ(std::size(listed), 179u);
    const auto before = [](const ListedName& a, const ListedName& b) { return std::strcmp(a.name, b.name) < 0; };
    EXPECT_TRUE(std::is_sorted(std::begin(listed), std::end(listed), before));
    EXPECT_STREQ(listed[0].name, "ruxGetStatusString");
    EXPECT_STREQ(listed[178].name, "ruxsThreshold_32f_I");
}

TEST(ListOfOperations, tellsTheBytesOfTheHeadersArguments)
{
    for (const ListedName& name : listed) EXPECT_EQ(name.bytes, name.bytesInHeader) << name.name;
}

TEST(ListOfOperations, spells44NamesDecorated)
{
    int decorated = 0;
    for (const ListedName& name : listed) {
        EXPECT_TRUE(!std::strcmp(name.form, "plain") || !std::strcmp(name.form, "decorated")) << name.name;
        decorated += !std::strcmp(name.form, "decorated");
    }
    EXPECT_EQ(decorated, 44);
}

TEST(Exports, areTheTablesRows)
{
    ASSERT_EQ(dispatchTable.count, 179);
    ASSERT_EQ(std::size(exported), 179u);
    for (size_t row = 0; row < std::size(exported); row++) {
        EXPECT_EQ(dispatchTable.rows[row].slot, exported[row].slot) << exported[row].name;
    }
}

TEST(Exports, slotsAndBodiesArePresentAndDifferent)
{
    std::vector<const void*> slots, bodies;
    for (const DispatchEntry& row : dispatchTable.rows) {
        slots.push_back(row.slot);
        for (const Entry body : row.entry) bodies.push_back(reinterpret_cast<const void*>(body));
    }
    for (auto* addresses : {&slots, &bodies}) {
        std::sort(addresses->begin(), addresses->end());
        EXPECT_NE(addresses->front(), nullptr);
        EXPECT_EQ(std::adjacent_find(addresses->begin(), addresses->end()), addresses->end());
    }
    EXPECT_EQ(bodies.size(), 716u);
    const auto* const first = static_cast<const Entry*>(slots.front());
    const auto* const last = static_cast<const Entry*>(slots.back());
    EXPECT_EQ(static_cast<size_t>(last - first) + 1, slots.size()) << "slots do not lie side by side";
}

// Each name jumps through its own slot: with a body of its own in every slot, each call must reach the one of its row.
TEST(Exports, eachStubLeadsThroughItsSlot)
{
    const auto bodies = markers(std::make_integer_sequence<int, operationCount>());
    for (size_t row = 0; row < std::size(exported); row++) *dispatchTable.rows[row].slot = bodies[row];
    for (size_t row = 0; row < std::size(exported); row++) {
        const auto stub = reinterpret_cast<int (*)()>(exported[row].stub);
        EXPECT_EQ(stub(), static_cast<int>(row)) << exported[row].name;
    }
    EXPECT_TRUE(bindLevel(px));
}

TEST(Exports, aLevelBindsItsColumn)
{
    for (Level level : levels) {
        for (const DispatchEntry& row : dispatchTable.rows) *row.slot = nullptr;
        ASSERT_EQ(ruxFillSlots(level), 1);
        for (int row = 0; row < operationCount; row++) {
            EXPECT_EQ(*dispatchTable.rows[row].slot, dispatchTable.rows[row].entry[level]) << exported[row].name;
        }
        if (!processorHas(level)) continue;
        EXPECT_STREQ(ruxiGetLibVersion()->targetName, nameOf(level));
        EXPECT_STREQ(ruxsGetLibVersion()->targetName, nameOf(level));
    }
    EXPECT_TRUE(bindLevel(px));
}

}
