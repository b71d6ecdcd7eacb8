// What becomes of the pictures, besides a YUV4MPEG2 file.
#pragma once

#include <memory>
#include <string>

#include "output.h"

// FOLDER/0001.png and so on; the folder is made when it is not there.
std::unique_ptr<Output> pngFolder(const std::string& folder);

// One PNG with up to 12 pictures, evenly chosen from as many as are expected.
std::unique_ptr<Output> contactSheet(const std::string& path, size_t expectedPictures, bool isScaled);

// Prints the PSNR of each plane of each picture against a YUV4MPEG2 file. finish throws when the file holds another
// number of pictures.
std::unique_ptr<Output> comparison(const std::string& referencePath, bool allExpected);
