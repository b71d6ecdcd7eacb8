// One tile of the sheet, and the tables of tiles.
//
// To add a tile, write a function that takes the picture and returns a Tile, and name it in its family's table.
#pragma once

#include <algorithm>
#include <chrono>
#include <limits>
#include <string>
#include <vector>

#include "image.h"

struct Tile {
    std::string title;        // what one sees
    std::string operation;    // the exported name
    std::string arguments;    // those that matter here
    double seconds;           // the fastest of a few calls
    Picture picture;          // no larger than the picture that came in
};

using TileMaker = Tile (*)(const Picture& picture);

struct Family {
    const char* name;
    std::vector<TileMaker> tiles;
};

Family movementTiles();
Family arithTiles();
Family filterTiles();
Family colourTiles();
Family colourModelTiles();
Family fewerColoursTiles();
Family geometryTiles();
Family analysisTiles();

// The fastest of a few calls. prepare runs before each of them, outside the measurement.
template <typename Prepare, typename Call>
double timed(Prepare prepare, Call call)
{
    using Clock = std::chrono::steady_clock;
    double fastest = std::numeric_limits<double>::max();
    for (int run = 0; run < 20; ++run) {
        prepare();
        const Clock::time_point start = Clock::now();
        call();
        fastest = std::min(fastest, std::chrono::duration<double>(Clock::now() - start).count());
    }
    return fastest;
}

template <typename Call>
double timed(Call call)
{
    return timed([] {}, call);
}
