// Reads a file in the YUV4MPEG2 form. Everything here throws std::runtime_error with one clear line.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "binary_files.h"
#include "frame.h"
#include "timing.h"

class Y4mReader {
public:
    // "-" is the standard input.
    explicit Y4mReader(const std::string& path);

    const std::string& name() const { return path_; }
    ruxiSize size() const { return size_; }
    ChromaFormat chromaFormat() const { return chromaFormat_; }
    Ratio frameRate() const { return frameRate_; }
    Ratio sampleAspect() const { return sampleAspect_; }
    bool interlaced() const { return interlaced_; }

    // False at the end. The picture lasts until the next call; one that is cut short throws.
    bool next(PlanarView& picture);

    // Pictures that the file's length gives, 0 where it cannot be known.
    size_t expectedPictures() const;

private:
    std::string readLine();
    void readHeader();

    std::string path_;
    File file_;
    ruxiSize size_ = {};
    ChromaFormat chromaFormat_ = ChromaFormat::yuv420;
    Ratio frameRate_ = {25, 1};
    Ratio sampleAspect_ = {0, 0};
    bool interlaced_ = false;
    size_t headerBytes_ = 0;
    size_t read_ = 0;
    std::vector<uint8_t> samples_[3];
};
