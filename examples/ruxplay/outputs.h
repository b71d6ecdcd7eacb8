// What becomes of the pictures.
#pragma once

#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "frame.h"

class Output {
public:
    virtual ~Output() = default;
    virtual void take(const PlanarView& picture) = 0;   // in the order of display
    virtual void finish() {}
};

// FOLDER/0001.png and so on; the folder is made when it is not there.
std::unique_ptr<Output> pngFolder(const std::string& folder);

// One file in the YUV4MPEG2 form; "-" is the standard output. size is that of the pictures.
std::unique_ptr<Output> y4mFile(const std::string& path, const Sequence& sequence, ruxiSize size, bool topFieldFirst);

// One PNG with up to 12 pictures, evenly chosen from as many as are expected.
std::unique_ptr<Output> contactSheet(const std::string& path, size_t expectedPictures, bool isScaled);

// Prints the PSNR of each plane of each picture against a YUV4MPEG2 file. finish throws when the file holds another
// number of pictures.
std::unique_ptr<Output> comparison(const std::string& referencePath, bool allExpected);
