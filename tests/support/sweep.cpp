#include "support/sweep.h"

#include <cstdlib>
#include <cstring>

namespace rux::test {
namespace {

std::vector<int> usualWidths()
{
    std::vector<int> widths;
    for (int width = 1; width <= 73; width++) widths.push_back(width);
    for (int block : {80, 96, 128, 192, 256, 320, 512, 1024}) {
        for (int around : {-1, 0, 1, 7}) widths.push_back(block + around);
    }
    return widths;
}

int roundedUp(int number, int multiple)
{
    return (number + multiple - 1) / multiple * multiple;
}

bool isQuick()
{
    const char* const sweep = std::getenv("RUX_SWEEP");
    return sweep && std::strcmp(sweep, "quick") == 0;
}

}

SweepOptions imageSweep()
{
    return {};
}

SweepOptions vectorSweep()
{
    return SweepOptions().heightsOf({1});
}

SweepOptions blockSweep(int repeats)
{
    return SweepOptions().widthsOf({8}).heightsOf({8}).repeated(repeats);
}

// The geometry of the case's next image.
Shape Case::place(Shape shape, int elementBytes)
{
    const int row = (shape.left + shape.width + shape.right) * shape.channels * elementBytes;
    int step = row;
    switch (rows) {
    case Rows::tight: break;
    case Rows::loose: step += elementBytes * random.between(0, 40); break;
    case Rows::odd: step = (step + random.between(1, 67)) | 1; break;
    case Rows::wide: step = roundedUp(step, 64); break;
    }
    if (shape.step == 0 && rows != Rows::tight) shape.step = roundedUp(step, strideMultiple);
    shape.place = where;
    if (alignments >= 0) {
        const int modulo16 = images == 0 ? alignments % 16 : images == 1 ? alignments / 16 : random.between(0, 15);
        shape.place.offset = modulo16 + 16 * random.between(0, 3);
    } else if (where.offset >= 0) {
        shape.place.offset = random.between(0, 63);
    }
    images++;
    return shape;
}

std::string Case::describe() const
{
    return "case " + std::to_string(seed) + ": " + std::to_string(width) + "x" + std::to_string(height);
}

std::vector<Case> casesOf(const SweepOptions& options)
{
    struct Layout {
        Case::Rows rows;
        Place where;
    };
    // Tight rows come with both edges, so that each operation meets contiguous images that fault on either side.
    static const Layout layouts[] = {
        {Case::Rows::tight, {Edge::end, Place::touching}},   {Case::Rows::tight, {Edge::start, Place::touching}},
        {Case::Rows::loose, {Edge::end, Place::touching}},   {Case::Rows::odd, {Edge::end, Place::touching}},
        {Case::Rows::loose, {Edge::start, 0}},               {Case::Rows::wide, {Edge::start, 0}},
    };
    static const std::vector<int> usualHeights = {1, 2, 3, 1, 5, 4, 2, 7, 1, 3, 16};
    const auto widths = options.widths.empty() ? usualWidths() : options.widths;
    const auto& heights = options.heights.empty() ? usualHeights : options.heights;

    std::vector<Case> cases;
    uint64_t seed = 0;
    const auto add = [&](int width, const Layout& layout, int alignments) {
        Case c(width, heights[seed % heights.size()], seed + 1);
        c.rows = options.tight ? Case::Rows::tight : layout.rows;
        c.strideMultiple = options.strideMultiple;
        c.where = layout.where;
        c.alignments = alignments;
        c.golden = seed++ % 8 == 0;
        if (c.golden || !isQuick()) cases.push_back(c);
    };
    for (int repeat = 0; repeat < options.repeats; repeat++) {
        for (int width : widths) {
            for (const Layout& layout : layouts) add(width, layout, -1);
        }
    }
    // Every pair of alignments modulo 16 of the first two images, on rows of a few vector blocks.
    for (int pair = 0; pair < 256; pair++) {
        const int given = widths[static_cast<size_t>(pair) % widths.size()];
        add(options.widths.empty() ? 33 + pair * 7 % 170 : given, layouts[2 + pair % 4], pair);
    }
    return cases;
}

}
