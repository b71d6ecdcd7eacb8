// Program streams (ISO/IEC 13818-1 and 11172-1): packets of several streams in turn, of which one is video.
#pragma once

#include <cstdint>
#include <vector>

bool isProgramStream(const std::vector<uint8_t>& bytes);

// The video elementary stream: the payload of the first video stream's packets.
std::vector<uint8_t> extractVideo(const std::vector<uint8_t>& bytes);
