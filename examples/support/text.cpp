#include "text.h"

#include "font.h"

namespace {

constexpr int scale = 2;   // pixels for each dot of the font

void drawDot(Picture& picture, int left, int top, Colour colour)
{
    for (int y = top; y < top + scale; ++y)
        for (int x = left; x < left + scale; ++x) {
            uint8_t* const pixel = picture.at(x, y);
            pixel[0] = colour.red;
            pixel[1] = colour.green;
            pixel[2] = colour.blue;
        }
}

}

void drawText(Picture& picture, int x, int y, int width, const std::string& text, Colour colour)
{
    const size_t most = size_t(width / characterWidth);
    const std::string shown = text.size() <= most ? text : text.substr(0, most - 2) + "..";
    for (const char character : shown) {
        const uint8_t* const columns = glyph(character);
        for (int column = 0; column < glyphWidth; ++column)
            for (int row = 0; row < glyphHeight; ++row)
                if (columns[column] >> row & 1) drawDot(picture, x + column * scale, y + row * scale, colour);
        x += characterWidth;
    }
}
