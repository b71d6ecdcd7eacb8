// The contact sheet: a heading, and the tiles of each family in rows of five with their captions.
#pragma once

#include "tile.h"

constexpr ruxiSize largestPicture = {352, 288};   // in a tile

struct Section {
    std::string name;
    std::vector<Tile> tiles;
};

Picture contactSheet(const std::string& heading, const std::vector<Section>& sections);
