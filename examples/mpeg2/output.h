// What becomes of pictures.
#pragma once

#include <memory>
#include <string>

#include "frame.h"

class Output {
public:
    virtual ~Output() = default;
    virtual void take(const PlanarView& picture) = 0;   // in the order of display
    virtual void finish() {}
};

// One file in the YUV4MPEG2 form; "-" is the standard output. size is that of the pictures.
std::unique_ptr<Output> y4mFile(const std::string& path, const Sequence& sequence, ruxiSize size, bool topFieldFirst);
