// The copy of a vector of bytes.
//
// The operation stands here once; each level's file gives the routine that moves the bytes.
#pragma once

#include "frame/bytes.h"
#include "frame/checks.h"

namespace rux::RUX_LEVEL {
namespace {

void copyVector(const uint8_t* src, uint8_t* dst, size_t bytes);

}

ruxStatus RUXCALL ruxsCopy_8u(const uint8_t* src, uint8_t* dst, int32_t len)
{
    if (auto failure = firstFailure(pointers(src, dst), require(len >= 1, ruxStatusSizeError))) return failure;

    copyVector(src, dst, static_cast<size_t>(len));
    return ruxStatusOk;
}

}
