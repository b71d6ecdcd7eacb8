#include "sheet.h"

#include <cstdio>

#include "text.h"

namespace {

constexpr int columns = 5, gap = 20;
constexpr int captionLines = 4;
constexpr int cellWidth = 34 * characterWidth;
constexpr uint8_t ground = 24;
constexpr Colour white = {255, 255, 255}, yellow = {255, 210, 90}, silver = {190, 190, 190}, green = {130, 220, 130};

int rowsOf(const Section& section)
{
    return (int(section.tiles.size()) + columns - 1) / columns;
}

std::string timeText(double seconds)
{
    char text[32];
    if (seconds < 1e-3)
        std::snprintf(text, sizeof text, "%.1f us", seconds * 1e6);
    else
        std::snprintf(text, sizeof text, "%.2f ms", seconds * 1e3);
    return text;
}

void drawCaption(Picture& sheet, int x, int y, const std::string& text, Colour colour)
{
    if (int(text.size()) * characterWidth > cellWidth) throw std::logic_error("a caption too long: " + text);
    drawText(sheet, x, y, cellWidth, text, colour);
}

void drawTile(Picture& sheet, int x, int y, int pictureHeight, const Tile& tile)
{
    require(ruxiCopy_8u_C3R(tile.picture.pixels.data(), tile.picture.step(), sheet.at(x, y), sheet.step(),
                            sizeOf(tile.picture)));
    y += pictureHeight + gap / 2;
    drawCaption(sheet, x, y, tile.title, white);
    drawCaption(sheet, x, y + lineHeight, tile.operation, yellow);
    drawCaption(sheet, x, y + 2 * lineHeight, tile.arguments, silver);
    drawCaption(sheet, x, y + 3 * lineHeight, timeText(tile.seconds), green);
}

int highest(const std::vector<Section>& sections)
{
    int height = 0;
    for (const Section& section : sections)
        for (const Tile& tile : section.tiles) height = std::max(height, tile.picture.height);
    return height;
}

}

Picture contactSheet(const std::string& heading, const std::vector<Section>& sections)
{
    const int pictureHeight = highest(sections);
    const int cellHeight = pictureHeight + gap / 2 + captionLines * lineHeight + gap;
    int height = 2 * gap + lineHeight;
    for (const Section& section : sections) height += 2 * lineHeight + rowsOf(section) * cellHeight;

    Picture sheet(gap + columns * (cellWidth + gap), height);
    require(ruxiSet_8u_C1R(ground, sheet.pixels.data(), sheet.step(), bytesOf(sheet)));
    drawText(sheet, gap, gap, sheet.width - 2 * gap, heading, white);
    int y = 2 * gap + lineHeight;
    for (const Section& section : sections) {
        drawText(sheet, gap, y, cellWidth, section.name, white);
        require(ruxiSet_8u_C1R(96, sheet.at(gap, y + lineHeight), sheet.step(), {(sheet.width - 2 * gap) * 3, 2}));
        y += 2 * lineHeight;
        for (int index = 0; index < int(section.tiles.size()); ++index)
            drawTile(sheet, gap + index % columns * (cellWidth + gap), y + index / columns * cellHeight, pictureHeight,
                     section.tiles[size_t(index)]);
        y += rowsOf(section) * cellHeight;
    }
    return sheet;
}
