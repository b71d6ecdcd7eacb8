// Text on a picture.
#pragma once

#include <string>

#include "picture.h"

struct Colour {
    uint8_t red, green, blue;
};

constexpr int lineHeight = 20, characterWidth = 12;

// The upper left corner of the first character at (x, y). What does not fit into width ends in "..".
void drawText(Picture& picture, int x, int y, int width, const std::string& text, Colour colour);
