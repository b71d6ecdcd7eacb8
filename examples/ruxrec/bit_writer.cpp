#include "bit_writer.h"

#include <algorithm>

void BitWriter::put(uint32_t value, int length)
{
    if (length == 0) return;
    const uint64_t bits = value & (0xFFFFFFFFu >> (32 - length));
    const uint64_t two = bits << (32 + freeBits_ - length);   // this word and the next
    word_[0] |= uint32_t(two >> 32);
    freeBits_ -= length;
    if (freeBits_ > 0) return;
    freeBits_ += 32;
    *++word_ = uint32_t(two);
}

void BitWriter::putStartCode(uint8_t code)
{
    put(0x100u | code, 32);
}

void BitWriter::alignToByte()
{
    put(0, freeBits_ % 8);
}

void BitWriter::moveTo(std::vector<uint8_t>& bytes)
{
    const size_t count = bits() / 8;
    for (size_t at = 0; at < count; ++at) bytes.push_back(uint8_t(words_[at / 4] >> (24 - 8 * (at % 4))));
    std::fill(words_.data(), word_ + 1, 0);
    word_ = words_.data();
    freeBits_ = 32;
}
