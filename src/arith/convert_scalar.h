// Bytes to floats, element by element.
#pragma once

#include "arith/convert.h"

namespace rux::RUX_LEVEL {
namespace {

void floatsFromBytes(const uint8_t* src, uint8_t* dst, size_t elements, bool)
{
    for (size_t i = 0; i < elements; ++i) store<float>(dst + i * 4, src[i]);
}

}
}
