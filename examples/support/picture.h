// Pictures of the example hosts: three bytes a pixel, R, G, B, rows without gaps.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

struct Picture {
    int width = 0;
    int height = 0;
    std::vector<uint8_t> pixels;

    Picture() = default;
    Picture(int width, int height) : width(width), height(height), pixels(size_t(width) * height * 3) {}

    int step() const { return width * 3; }
    uint8_t* at(int x, int y) { return pixels.data() + size_t(y) * step() + size_t(x) * 3; }
    const uint8_t* at(int x, int y) const { return pixels.data() + size_t(y) * step() + size_t(x) * 3; }
};

// Both throw std::runtime_error with one clear line.
Picture readPicture(const std::string& path);                    // PNG, PPM, JPEG
void writePng(const std::string& path, const Picture& picture);
