// A sound in memory, its channels apart, and WAV files of it.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <vector>

#include "ruxlib.h"

using Channel = std::vector<int16_t>;
using FloatChannel = std::vector<float>;   // 1.0 is full scale

constexpr float fullScale = 32768.0f;

struct Sound {
    int rate = 0;                    // frames a second
    std::vector<Channel> channels;   // one or two, of equal length

    int32_t length() const { return int32_t(channels[0].size()); }
    double seconds() const { return double(length()) / rate; }
};

// Throw std::runtime_error with one clear line.
Sound readWav(const std::string& path);
void writeWav(const std::string& path, const Sound& sound);

// What is below 0 is an error, above 0 a warning.
inline void require(ruxStatus status)
{
    if (status < ruxStatusOk) throw std::runtime_error(ruxGetStatusString(status));
}
