// A video elementary stream in memory, in the form in which the library reads bits, and the list of its start codes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "bitstream.h"
#include "syntax.h"

struct StartCode {
    uint8_t code;
    size_t begin;   // the byte behind the code
    size_t end;     // the first byte of the next start code's prefix, or the stream's end
};

class VideoStream {
public:
    // Takes a video elementary stream or a program stream; throws Refusal.
    explicit VideoStream(const std::string& path);

    const std::vector<StartCode>& startCodes() const { return startCodes_; }
    size_t pictureCount() const;
    BitReader readerAt(size_t byte) { return {words_.data() + byte / 4, 31 - 8 * int32_t(byte % 4)}; }

private:
    std::vector<uint32_t> words_;
    std::vector<StartCode> startCodes_;
};
