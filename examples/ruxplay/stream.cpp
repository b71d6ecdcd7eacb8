#include "stream.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>

#include "errors.h"
#include "program_stream.h"

namespace {

// Zero words behind the stream. No macroblock takes more than 8 blocks of 64 escapes of 24 bits and its header, 400
// words, before the reader's place is looked at again; the library reads two words ahead. Zeros are no legal code.
constexpr size_t paddingWords = 512;

std::vector<uint8_t> readFile(const std::string& path)
{
    const std::unique_ptr<FILE, int (*)(FILE*)> file(std::fopen(path.c_str(), "rb"), std::fclose);
    if (!file) throw Refusal(std::strerror(errno));
    std::vector<uint8_t> bytes;
    uint8_t piece[1 << 16];
    while (const size_t count = std::fread(piece, 1, sizeof piece, file.get()))
        bytes.insert(bytes.end(), piece, piece + count);
    if (std::ferror(file.get())) throw Refusal("cannot be read");
    return bytes;
}

std::vector<StartCode> findStartCodes(const std::vector<uint8_t>& bytes)
{
    std::vector<StartCode> found;
    for (size_t at = 2; at + 1 < bytes.size(); ++at) {
        const void* const one = std::memchr(bytes.data() + at, 1, bytes.size() - 1 - at);
        if (!one) break;
        at = size_t(static_cast<const uint8_t*>(one) - bytes.data());
        if (bytes[at - 1] != 0 || bytes[at - 2] != 0) continue;
        if (!found.empty()) found.back().end = at - 2;
        found.push_back({bytes[at + 1], at + 2, bytes.size()});
    }
    return found;
}

std::vector<uint32_t> inReadingOrder(const std::vector<uint8_t>& bytes)
{
    std::vector<uint32_t> words(bytes.size() / 4 + 1 + paddingWords);
    for (size_t at = 0; at < bytes.size(); ++at) words[at / 4] |= uint32_t(bytes[at]) << (24 - 8 * (at % 4));
    return words;
}

}

VideoStream::VideoStream(const std::string& path)
{
    std::vector<uint8_t> bytes = readFile(path);
    if (isProgramStream(bytes)) {
        bytes = extractVideo(bytes);
        if (bytes.empty()) throw Refusal("the program stream holds no video");
    }
    startCodes_ = findStartCodes(bytes);
    const bool hasSequence = std::any_of(startCodes_.begin(), startCodes_.end(),
                                         [](const StartCode& start) { return start.code == sequenceHeaderStart; });
    if (!hasSequence) throw Refusal("is no MPEG-2 video stream (it has no sequence header)");
    words_ = inReadingOrder(bytes);
}

size_t VideoStream::pictureCount() const
{
    return size_t(std::count_if(startCodes_.begin(), startCodes_.end(),
                                [](const StartCode& start) { return start.code == pictureStart; }));
}
