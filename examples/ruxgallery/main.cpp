// Shows what the library does to a picture: a contact sheet with a tile for each operation.
//
//     ruxgallery PICTURE SHEET.png
#include <cstdio>
#include <cstring>
#include <new>

#include "sheet.h"

namespace {

constexpr int notDone = 1, wrongUsage = 2;
constexpr int smallestSide = 16;

constexpr char help[] =
    R"(ruxgallery shows what the library does to a picture.

    ruxgallery PICTURE SHEET.png

PICTURE is a PNG, PPM or JPEG file. SHEET.png becomes a contact sheet: a tile for each operation, and under it what it
shows, the operation's name, its arguments, and the time of the fastest of 20 calls on this machine. Pictures larger
than 352x288 are scaled into that size first.

  --help    this text

Exit status: 0 written, 1 not read or not written, 2 wrong usage.
)";

Picture fitted(const Picture& picture)
{
    const double factor = std::min(double(largestPicture.width) / picture.width,
                                   double(largestPicture.height) / picture.height);
    if (factor >= 1) return picture;
    Picture result(std::max(1, int(picture.width * factor)), std::max(1, int(picture.height * factor)));
    Planes420 large = emptyPlanes(sizeOf(picture)), small = emptyPlanes(sizeOf(result));
    toPlanes(picture, large);
    for (int index = 0; index < 3; ++index) {
        const ruxiSize from = large.planes[index].size(), to = small.planes[index].size();
        const bool isReduction = to.width < from.width && to.height < from.height;
        resize(large.planes[index], small.planes[index],
               isReduction ? ruxInterpolationSuperSample : ruxInterpolationLinear);
    }
    toPicture(small, result);
    return result;
}

std::string measure(const Picture& picture)
{
    return std::to_string(picture.width) + "x" + std::to_string(picture.height);
}

void make(const std::string& input, const std::string& output)
{
    const Picture original = readPicture(input), picture = fitted(original);
    if (std::min(picture.width, picture.height) < smallestSide)
        throw std::runtime_error(input + ": " + measure(original) + " is too small or too narrow for a gallery");
    std::vector<Section> sections;
    size_t tiles = 0;
    for (const Family& family : {movementTiles(), arithTiles(), filterTiles(), colourTiles(), colourModelTiles(),
                                 fewerColoursTiles(), geometryTiles(), analysisTiles()}) {
        Section section{family.name, {}};
        for (const TileMaker maker : family.tiles) section.tiles.push_back(maker(picture));
        tiles += section.tiles.size();
        sections.push_back(std::move(section));
    }
    const std::string level = ruxiGetLibVersion()->targetName;
    const std::string name = input.substr(input.find_last_of("/\\") + 1);
    writePng(output, contactSheet(name + ", " + measure(picture) + " pixels, level " + level, sections));
    std::printf("wrote %s: %zu tiles, level %s\n", output.c_str(), tiles, level.c_str());
}

}

int main(int argc, char** argv)
{
    if (argc == 2 && (std::strcmp(argv[1], "--help") == 0 || std::strcmp(argv[1], "-h") == 0)) {
        std::fputs(help, stdout);
        return 0;
    }
    if (argc != 3) {
        std::fprintf(stderr, "ruxgallery: a picture and the sheet's name, please (ruxgallery --help tells more)\n");
        return wrongUsage;
    }
    try {
        make(argv[1], argv[2]);
        return 0;
    } catch (const std::bad_alloc&) {
        std::fprintf(stderr, "ruxgallery: %s: not enough memory\n", argv[1]);
    } catch (const std::exception& problem) {
        std::fprintf(stderr, "ruxgallery: %s\n", problem.what());
    }
    return notDone;
}
