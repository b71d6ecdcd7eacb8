// The smallest useful host: tells which level serves, copies a picture and fills a part of it.
//
//     first_host INPUT.png OUTPUT.png
#include <cstdio>
#include <stdexcept>

#include "picture.h"
#include "ruxlib.h"

namespace {

void tell(const ruxLibraryVersion& version)
{
    std::printf("%-12s level %s, %s, build %d.%d, %s\n", version.libraryName, version.targetName, version.versionText,
                static_cast<int>(version.majorBuild), static_cast<int>(version.build), version.buildDate);
}

void require(ruxStatus status)
{
    if (status != ruxStatusOk) throw std::runtime_error(ruxGetStatusString(status));
}

// The picture in a frame: a grey ground, and the picture copied into its middle.
Picture framed(const Picture& picture, int border)
{
    Picture result(picture.width + 2 * border, picture.height + 2 * border);
    require(ruxiSet_8u_C1R(64, result.pixels.data(), result.step(), {result.step(), result.height}));
    require(ruxiCopy_8u_C3R(picture.pixels.data(), picture.step(), result.at(border, border), result.step(),
                            {picture.width, picture.height}));
    return result;
}

}

int main(int argc, char** argv)
{
    if (argc != 3) {
        std::fprintf(stderr, "usage: first_host INPUT.png OUTPUT.png\n");
        return 2;
    }
    try {
        tell(*ruxiGetLibVersion());
        tell(*ruxsGetLibVersion());
        writePng(argv[2], framed(readPicture(argv[1]), 16));
    } catch (const std::exception& problem) {
        std::fprintf(stderr, "first_host: %s\n", problem.what());
        return 1;
    }
    std::printf("wrote %s\n", argv[2]);
    return 0;
}
