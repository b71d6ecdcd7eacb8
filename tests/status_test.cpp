// Status texts and version records: every text, every field, and which pointers are one.
#include <cstddef>
#include <cstring>
#include <map>
#include <set>

#include "model/frame.h"
#include "ruxlib.h"
#include "support/call.h"
#include "support/levels.h"

namespace rux::test {
namespace {

struct KnownStatus {
    ruxStatus code;
    const char* text;
};
const KnownStatus known[] = {
#define STATUS(code, text) {code, text},
#define NAMED_STATUS(name, code, text) STATUS(code, text)
#include "model/status_texts.def"
#undef NAMED_STATUS
#undef STATUS
};

// Every code around those that are known, and far from them.
std::vector<ruxStatus> manyCodes()
{
    std::vector<ruxStatus> codes = {INT32_MIN, INT32_MIN + 1, INT32_MAX, INT32_MAX - 1};
    for (int code = -10050; code <= -9950; code++) codes.push_back(code);
    for (int code = -400; code <= 400; code++) codes.push_back(code);
    for (const KnownStatus& status : known) {
        // A known code in the low half, or in the low byte, is not that code.
        codes.push_back(static_cast<int32_t>(static_cast<uint32_t>(status.code) ^ 0x00010000));
        codes.push_back(static_cast<int32_t>(static_cast<uint32_t>(status.code) ^ 0x80000000));
        codes.push_back(static_cast<int32_t>(static_cast<uint32_t>(status.code) ^ 0x00000100));
    }
    return codes;
}

const char* textOf(ruxStatus code)
{
    return call(::ruxGetStatusString, code);
}

}

class Status : public LevelTest {};
RUX_AT_EACH_LEVEL(Status);

TEST_P(Status, givesEveryText)
{
    EXPECT_EQ(sizeof known / sizeof *known, 145u);
    for (const KnownStatus& status : known) EXPECT_STREQ(textOf(status.code), status.text) << status.code;
}

TEST_P(Status, matchesCodesExactly)
{
    int unknown = 0;
    for (ruxStatus code : manyCodes()) {
        EXPECT_STREQ(textOf(code), model::textOf(code)) << code;
        unknown += std::strcmp(model::textOf(code), "Unknown Status Code") == 0;
    }
    EXPECT_GT(unknown, 600);
}

TEST_P(Status, codesWithoutText)
{
    for (ruxStatus code : {-1, -3, -68, -84, -85, -86, -87, -88, -89, 28, -125, -9997, INT32_MAX}) {
        EXPECT_STREQ(textOf(code), "Unknown Status Code") << code;
        EXPECT_EQ(textOf(code), textOf(28)) << code;
    }
    EXPECT_STREQ(textOf(0), "No error, it's OK");
    EXPECT_STREQ(textOf(16), "Zero occupation count");
    EXPECT_STREQ(textOf(-67), "Negative occupation count");
}

// Two codes of one text give one pointer; each other text has its own.
TEST_P(Status, equalTextsAreOnePointer)
{
    EXPECT_EQ(textOf(-73), textOf(-99));
    EXPECT_EQ(textOf(-74), textOf(-100));
    EXPECT_EQ(textOf(-75), textOf(-101));
    std::map<std::string, const void*> pointers;
    std::set<const void*> different;
    for (ruxStatus code : manyCodes()) {
        const void* const text = textOf(code);
        EXPECT_EQ(textOf(code), text) << code << " called again";
        EXPECT_EQ(pointers.emplace(model::textOf(code), text).first->second, text) << code;
        different.insert(text);
    }
    EXPECT_EQ(different.size(), 145u - 3 + 1);
}

TEST(StatusTexts, areTheSamePointersAtEveryLevel)
{
    for (ruxStatus code : manyCodes()) {
        ASSERT_TRUE(bindLevel(px));
        const char* const text = textOf(code);
        for (Level level : levels) {
            if (!bindLevel(level)) continue;
            EXPECT_EQ(textOf(code), text) << code << " at " << level;
        }
    }
}

TEST(StatusTexts, codesHaveTheirNames)
{
#define STATUS(code, text)
#define NAMED_STATUS(name, code, text) EXPECT_EQ(static_cast<int>(name), code) << #name;
#include "model/status_texts.def"
#undef NAMED_STATUS
#undef STATUS
}

class Version : public LevelTest {};
RUX_AT_EACH_LEVEL(Version);

static void expectRecord(const ruxLibraryVersion* record, const model::Version& expected)
{
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->majorVersion, expected.majorVersion);
    EXPECT_EQ(record->minorVersion, expected.minorVersion);
    EXPECT_EQ(record->majorBuild, expected.majorBuild);
    EXPECT_EQ(record->build, expected.build);
    const char name[4] = {expected.targetName[0], expected.targetName[1], 0, 0};
    EXPECT_EQ(std::memcmp(record->targetName, name, sizeof name), 0) << record->targetName;
    EXPECT_EQ(record->libraryName, expected.libraryName);
    EXPECT_EQ(record->versionText, expected.versionText);
    EXPECT_EQ(record->buildDate, expected.buildDate);
}

TEST_P(Version, recordsAreThoseOfTheLevel)
{
    expectRecord(call(::ruxiGetLibVersion), model::imageVersion(level()));
    expectRecord(call(::ruxsGetLibVersion), model::signalVersion(level()));
    EXPECT_EQ(call(::ruxiGetLibVersion), call(::ruxiGetLibVersion));
    EXPECT_EQ(call(::ruxsGetLibVersion), call(::ruxsGetLibVersion));
    EXPECT_STREQ(call(::ruxiGetLibVersion)->targetName, call(::ruxsGetLibVersion)->targetName);
}

TEST_P(Version, namesW7OnAProcessorWithSse2)
{
    if (level() != w7) GTEST_SKIP() << "of w7 alone";
    EXPECT_STREQ(call(::ruxiGetLibVersion)->targetName, "w7");
    EXPECT_STREQ(call(::ruxiGetLibVersion)->libraryName, "ruxiw7l.lib");
    EXPECT_STREQ(call(::ruxsGetLibVersion)->targetName, "w7");
    EXPECT_EQ(call(::ruxsGetLibVersion)->build, 57);
}

TEST(VersionRecords, areEightThatShareTwoTexts)
{
    std::set<const void*> records, versionTexts, buildDates;
    size_t bound = 0;
    for (Level level : levels) {
        if (!bindLevel(level)) continue;
        bound++;
        for (const ruxLibraryVersion* record : {ruxiGetLibVersion(), ruxsGetLibVersion()}) {
            records.insert(record);
            versionTexts.insert(record->versionText);
            buildDates.insert(record->buildDate);
        }
    }
    EXPECT_GE(bound, 1u);
    EXPECT_EQ(records.size(), 2 * bound);
    EXPECT_EQ(versionTexts.size(), 1u);
    EXPECT_EQ(buildDates.size(), 1u);
}

// A host may have been compiled long ago: the fields stand where they always have.
TEST(VersionRecords, layout)
{
    constexpr size_t pointer = sizeof(void*), first = (20 + pointer - 1) / pointer * pointer;
    EXPECT_EQ(offsetof(ruxLibraryVersion, majorVersion), 0u);
    EXPECT_EQ(offsetof(ruxLibraryVersion, minorVersion), 4u);
    EXPECT_EQ(offsetof(ruxLibraryVersion, majorBuild), 8u);
    EXPECT_EQ(offsetof(ruxLibraryVersion, build), 12u);
    EXPECT_EQ(offsetof(ruxLibraryVersion, targetName), 16u);
    EXPECT_EQ(offsetof(ruxLibraryVersion, libraryName), first);
    EXPECT_EQ(offsetof(ruxLibraryVersion, versionText), first + pointer);
    EXPECT_EQ(offsetof(ruxLibraryVersion, buildDate), first + 2 * pointer);
    EXPECT_EQ(sizeof(ruxLibraryVersion), first + 3 * pointer);
}

}
