// Replicated border in 8-byte MMX moves. Stores are ordinary: margins are copies of rows that were just written.
#pragma once

#include "movement/replicate_border.h"
#include "movement/run_copy_mmx.h"
#include "movement/run_fill_mmx.h"

namespace rux::RUX_LEVEL {
namespace {

template <typename Element>
void copyElements(const uint8_t* src, uint8_t* dst, size_t bytes)
{
    copyBytes(src, dst, bytes);
}

template <typename Element>
void repeatElement(uint8_t* dst, Element value, size_t bytes)
{
    fillBytes(dst, value, bytes);
}

}
}
