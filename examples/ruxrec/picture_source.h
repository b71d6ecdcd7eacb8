// Where pictures come from. Everything here throws std::runtime_error with one clear line.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "frame.h"
#include "timing.h"

class PictureSource {
public:
    virtual ~PictureSource() = default;
    virtual Sequence sequence() const = 0;
    virtual size_t expectedPictures() const = 0;     // 0 where it is not known
    virtual std::unique_ptr<Frame> next() = 0;       // null at the end
};

std::unique_ptr<PictureSource> y4mSource(const std::string& path);
std::unique_ptr<PictureSource> rgbSource(const std::vector<std::string>& paths, Ratio frameRate);

// By what the paths are: one YUV4MPEG2 file ("-" is the standard input), pictures, or a folder of pictures.
std::unique_ptr<PictureSource> openSource(const std::vector<std::string>& paths, Ratio frameRate);

// A stream's sequence for such pictures.
Sequence sequenceFor(const std::string& what, ruxiSize size, Ratio frameRate, Ratio sampleAspect);

// The picture in a frame of its own, its edges repeated up to whole macroblocks.
std::unique_ptr<Frame> paddedFrame(const Sequence& sequence, const PlanarView& picture);
