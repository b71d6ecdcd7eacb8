// Packed 4:2:2 in MMX registers, 16 pixels at a time.
#pragma once

#include "frame/mmx_state.h"
#include "lanes/pixel_words4.h"

#include "colour/split422_vector.h"   // over the words above

namespace rux::RUX_LEVEL {
namespace {

struct AnyAddress {
    static SaturatingWords4 load(const uint8_t* from) { return SaturatingWords4::load(from); }
    static void store(SaturatingWords4 words, uint8_t* to) { words.store(to); }
};

[[gnu::noinline]] void splitRow(const uint8_t* packed, SplitRow planes, size_t pairs)
{
    const MmxState state;
    splitPairs(packed, planes, splitBlocks<SaturatingWords4, AnyAddress>(packed, planes, pairs), pairs);
}

[[gnu::noinline]] void joinRow(JoinRow planes, uint8_t* packed, size_t pairs)
{
    const MmxState state;
    joinPairs(planes, packed, joinBlocks<SaturatingWords4, AnyAddress>(planes, packed, pairs), pairs);
}

}
}
