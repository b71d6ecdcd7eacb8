// The levels' names and numbers: all that a model knows of the harness.
#pragma once

#include <iosfwd>

namespace rux::test {

enum Level { px, m6, a6, w7 };

inline constexpr Level levels[] = {px, m6, a6, w7};

const char* nameOf(Level);
std::ostream& operator<<(std::ostream&, Level);

}
