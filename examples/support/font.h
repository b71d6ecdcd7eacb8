// A bitmap font of printable ASCII: 5 columns by 8 rows, the last row for descenders.
#pragma once

#include <cstdint>

constexpr int glyphWidth = 5, glyphHeight = 8;

// The glyph's columns from left to right, the top row in bit 0. What cannot be printed looks like '?'.
const uint8_t* glyph(char character);
