// The checks that operations make, in the order in which each operation lists them.
#pragma once

#include "frame/level.h"

namespace rux::RUX_LEVEL {
namespace {

template <typename... Pointers>
constexpr ruxStatus pointers(const Pointers*... each)
{
    return (... || !each) ? ruxStatusNullPointer : ruxStatusOk;
}

template <typename... Sizes>
constexpr ruxStatus sizes(Sizes... each)
{
    return (... || (each.width < 1 || each.height < 1)) ? ruxStatusSizeError : ruxStatusOk;
}

template <typename... Steps>
constexpr ruxStatus steps(Steps... each)
{
    return (... || (each < 1)) ? ruxStatusStepError : ruxStatusOk;
}

constexpr ruxStatus require(bool holds, ruxStatus otherwise)
{
    return holds ? ruxStatusOk : otherwise;
}

// The first status that is not ruxStatusOk; every check is evaluated, so none may look behind a pointer.
template <typename... Checks>
constexpr ruxStatus firstFailure(Checks... checks)
{
    ruxStatus first = ruxStatusOk;
    (void)(... || (first = checks, first != ruxStatusOk));
    return first;
}

}
}
