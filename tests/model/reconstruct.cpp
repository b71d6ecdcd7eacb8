#include "model/reconstruct.h"

#include <algorithm>

#include "model/wrapping.h"

namespace rux::model {
namespace {

constexpr int endOfBlock = 254, escape = 255;

struct RunLevel {
    int run;
    int32_t level;
    bool isEscape = false;
};

// The bits of one call, and the block as it grows.
class Reader {
public:
    Reader(Level level, const BitSequence& stream, int64_t position) : level(level), stream(stream), position(position)
    {
    }

    uint32_t take(int count)
    {
        const uint32_t value = stream.bits(position, count);
        position += count;
        touch(position);
        return value;
    }

    uint32_t next()
    {
        touch(position + 1);
        return stream.bit(position);
    }

    int32_t code(const CodeList& list)
    {
        const Decoded decoded = decodeFromList(list, stream, position);
        touch(position + decoded.looked);
        position += decoded.taken;
        return decoded.payload;
    }

    RunLevel runLevel(const CodeList& list)
    {
        const int32_t payload = code(list);
        const int run = payload & 255;
        if (run != escape) return {run, payload >> 8};
        const int escapedRun = static_cast<int>(take(6));
        const int32_t escapedLevel = static_cast<int32_t>(take(12) << 20) >> 20;
        return {escapedRun, escapedLevel, true};
    }

    // Where position 63 is left behind.
    DecodedBlock& illegal()
    {
        block.status = level == w7 ? ruxStatusOk : ruxStatusVlcCode;
        block.writesPosition = level != w7;
        block.writesCount = false;
        block.position = position;
        return block;
    }

    DecodedBlock& finish(int32_t count, int32_t sum)
    {
        if (sum % 2 == 0) block.coefficients[63] = static_cast<int16_t>(block.coefficients[63] ^ 1);
        block.position = position;
        block.count = count;
        return block;
    }

    DecodedBlock block;

private:
    void touch(int64_t end) { block.looked = std::max(block.looked, end); }

    Level level;
    const BitSequence& stream;
    int64_t position;
};

int16_t wrapped(int32_t value)
{
    return Wrapping(value).low16();
}

int16_t intraValue(Level level, int16_t weight, int16_t quantScale, int32_t value)
{
    const Wrapping product = Wrapping(2) * quantScale * value;
    const Wrapping weighed = Wrapping(weight) * (level == w7 ? Wrapping(product.low16()) : product);
    return wrapped(weighed.value() / 32);
}

int16_t nonIntraValue(Level level, const int16_t* weight, int16_t quantScale, int32_t value)
{
    const int32_t sign = (value > 0) - (value < 0);
    const Wrapping product = Wrapping(2 * value + sign) * quantScale;
    if (level != w7) return wrapped((product * (weight ? load<int16_t>(weight) : 16)).value() / 32);
    const int16_t cut = product.low16();
    if (!weight) return static_cast<int16_t>((cut + (cut < 0)) >> 1);
    return wrapped((Wrapping(cut) * load<int16_t>(weight)).value() / 32);
}

}

DecodedBlock decodeIntraBlock(Level level, const BitSequence& stream, int64_t position, const CodeList& dc,
                              const CodeList& ac, const int32_t* scan, int16_t quantScale, const int16_t* matrix,
                              int16_t predictor, int32_t dcShift)
{
    Reader reader(level, stream, position);
    int16_t* const block = reader.block.coefficients;
    const int size = reader.code(dc);
    Wrapping differential = 0;
    if (size != 0) {
        const uint32_t b = reader.take(size);
        const bool negative = (b >> (size - 1) & 1) == 0;
        differential = Wrapping(static_cast<int32_t>(b));
        if (negative) differential = differential + 1 - (Wrapping(1) << size);
    }
    reader.block.predictor = (differential + predictor).low16();
    block[0] = (Wrapping(reader.block.predictor) << dcShift).low16();
    int32_t sum = block[0];
    for (int k = 0;;) {
        RunLevel pair = reader.runLevel(ac);
        if (!pair.isEscape && pair.run == endOfBlock) return reader.finish(k, sum);
        if (!pair.isEscape && level != w7) pair.level = static_cast<int8_t>(pair.level & 255);
        k += pair.run + 1;
        if (k > 63) return reader.illegal();
        const int32_t p = load<int32_t>(scan + k);
        block[p] = intraValue(level, load<int16_t>(matrix + p), quantScale, pair.level);
        sum += block[p];
    }
}

DecodedBlock decodeNonIntraBlock(Level level, const BitSequence& stream, int64_t position, const CodeList& first,
                                 const CodeList& ac, const int32_t* scan, int16_t quantScale, const int16_t* matrix)
{
    Reader reader(level, stream, position);
    int16_t* const block = reader.block.coefficients;
    RunLevel pair{0, 0};
    if (reader.next() == 1) pair.level = reader.take(2) == 2 ? 1 : -1;
    else pair = reader.runLevel(first);
    int32_t sum = 0;
    for (int k = pair.run;; k += pair.run + 1) {
        if (k > 63) return reader.illegal();
        const int32_t p = load<int32_t>(scan + k);
        block[p] = nonIntraValue(level, matrix ? matrix + p : nullptr, quantScale, pair.level);
        sum += block[p];
        pair = reader.runLevel(ac);
        if (!pair.isEscape && pair.run == endOfBlock) return reader.finish(k == 0 ? 1 : k, sum);
    }
}

}
