// The four levels: a test is written once and runs at each of them.
//
//     class Copy : public LevelTest {};
//     RUX_AT_EACH_LEVEL(Copy);
//     TEST_P(Copy, movesEveryByte) { ... level() ... }
//
// The names end in the level: levels/Copy.movesEveryByte/px, .../m6, .../a6, .../w7.
#pragma once

#include <gtest/gtest.h>

#include "support/level.h"

namespace rux::test {

// Whether this machine's processor has the level's instructions.
bool processorHas(Level);

// Fills the library's slots with one level's bodies; false when it could not.
bool bindLevel(Level);

// Binds its level, skips what the processor cannot run, and fails a test that leaves blocks of the library unfreed.
class LevelTest : public testing::TestWithParam<Level> {
public:
    static Level level() { return GetParam(); }

protected:
    void SetUp() override;
    void TearDown() override;
};

}

#define RUX_AT_EACH_LEVEL(Fixture)                                                                                 \
    INSTANTIATE_TEST_SUITE_P(levels, Fixture, testing::ValuesIn(rux::test::levels),                               \
                             [](const testing::TestParamInfo<rux::test::Level>& info) { return nameOf(info.param); })
