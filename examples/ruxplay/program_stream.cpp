#include "program_stream.h"

#include <cstddef>

namespace {

constexpr uint8_t packStart = 0xBA, firstVideo = 0xE0, lastVideo = 0xEF, firstWithLength = 0xBB;

bool isPrefix(const std::vector<uint8_t>& bytes, size_t at)
{
    return at + 4 <= bytes.size() && bytes[at] == 0 && bytes[at + 1] == 0 && bytes[at + 2] == 1;
}

// Behind a pack header; packs begin 01 in the newer form (with stuffing), 0010 in the older one.
size_t behindPack(const std::vector<uint8_t>& bytes, size_t at)
{
    if (at + 14 <= bytes.size() && bytes[at + 4] >> 6 == 1) return at + 14 + (bytes[at + 13] & 7);
    return at + 12;
}

// Where the payload of a packet begins whose header stands in [at, end); end when the header is not whole.
size_t payload(const std::vector<uint8_t>& bytes, size_t at, size_t end)
{
    size_t place = at + 6;
    if (place + 3 <= end && bytes[place] >> 6 == 2) {
        place += 3 + bytes[place + 2];
        return place < end ? place : end;
    }
    while (place < end && bytes[place] == 0xFF) ++place;
    if (place < end && bytes[place] >> 6 == 1) place += 2;
    if (place < end) {
        switch (bytes[place] >> 4) {
        case 2: place += 5; break;
        case 3: place += 10; break;
        default: place += 1; break;
        }
    }
    return place < end ? place : end;
}

}

bool isProgramStream(const std::vector<uint8_t>& bytes)
{
    return isPrefix(bytes, 0) && bytes[3] == packStart;
}

std::vector<uint8_t> extractVideo(const std::vector<uint8_t>& bytes)
{
    std::vector<uint8_t> video;
    uint8_t chosen = 0;
    size_t at = 0;
    while (at + 6 <= bytes.size()) {
        if (!isPrefix(bytes, at) || bytes[at + 3] < packStart) {
            ++at;   // lost: look for the next start code of the system layer
            continue;
        }
        const uint8_t id = bytes[at + 3];
        if (id == packStart) {
            at = behindPack(bytes, at);
            continue;
        }
        if (id < firstWithLength) return video;
        size_t end = at + 6 + (size_t(bytes[at + 4]) << 8 | bytes[at + 5]);
        if (end > bytes.size()) end = bytes.size();
        if (id >= firstVideo && id <= lastVideo && (chosen == 0 || id == chosen)) {
            chosen = id;
            const size_t begin = payload(bytes, at, end);
            video.insert(video.end(), bytes.begin() + ptrdiff_t(begin), bytes.begin() + ptrdiff_t(end));
        }
        at = end;
    }
    return video;
}
