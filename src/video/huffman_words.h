// Filling a lookup structure word by word.
#pragma once

#include "video/huffman.h"

namespace rux::RUX_LEVEL {
namespace {

void fillWords(uint32_t* block, int32_t words, uint32_t value)
{
    for (int32_t i = 0; i < words; ++i) block[i] = value;
}

}
}
