// What every level's body stands on: the level's namespace, its declarations, and its number.
//
// A body is compiled once for each level, with RUX_LEVEL set by the build to px, m6, a6 or w7. All that a body can
// call stands in namespace rux::RUX_LEVEL or has internal linkage, so that no code of one level serves another.
#pragma once

#include "ruxlib.h"

#define OPERATION(name, bytes, form) extern decltype(::name) name;
namespace rux::px {
constexpr int32_t number = 0;
#include "frame/operations.def"
}
namespace rux::m6 {
constexpr int32_t number = 1;
#include "frame/operations.def"
}
namespace rux::a6 {
constexpr int32_t number = 2;
#include "frame/operations.def"
}
namespace rux::w7 {
constexpr int32_t number = 3;
#include "frame/operations.def"
}
#undef OPERATION

#ifdef RUX_LEVEL
namespace rux::RUX_LEVEL {
constexpr int32_t thisLevel = number;
}
#endif
