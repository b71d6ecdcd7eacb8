#include "model/frame.h"

namespace rux::model {

const char* textOf(ruxStatus code)
{
    switch (code) {
#define STATUS(number, text) \
    case number: return text;
#define NAMED_STATUS(name, number, text) STATUS(number, text)
#include "model/status_texts.def"
#undef NAMED_STATUS
#undef STATUS
    default: return "Unknown Status Code";
    }
}

namespace {

Version version(Level level, int32_t build, const std::string& family)
{
    const std::string name = test::nameOf(level);
    return {3, 0, 18, build, name, family + name + "l.lib", "v3.0 gold", "Nov 26 2002"};
}

// A number as 32 bits hold it, sign and all.
int32_t wrapped(uint32_t bits)
{
    return static_cast<int32_t>(bits);
}

}

Version imageVersion(Level level)
{
    return version(level, 54, "ruxi");
}

Version signalVersion(Level level)
{
    return version(level, 57, "ruxs");
}

Request vectorRequest(int elementBytes, int32_t length)
{
    Request request;
    if (length < 1) return request;
    const uint32_t bytes = static_cast<uint32_t>(length) * static_cast<uint32_t>(elementBytes) + overhead;
    // A sum may wrap to less than asked, but not to less than the raw pointer needs: no byte is written out of bounds.
    if (bytes < smallest) return request;
    request.isMade = true;
    request.bytes = bytes;
    return request;
}

Request imageRequest(int elementBytes, int32_t width, int32_t height, bool hasStepPointer)
{
    if (!hasStepPointer) return {};
    Request request;
    if (width >= 1 && height >= 1) {
        const uint32_t step = (static_cast<uint32_t>(width) * static_cast<uint32_t>(elementBytes) + 31) / 32 * 32;
        request = vectorRequest(1, wrapped(static_cast<uint32_t>(height) * step));
        request.step = wrapped(step);
    }
    request.storesStep = true;
    return request;
}

uintptr_t blockIn(uintptr_t raw)
{
    return (raw + sizeof(void*) + 31) / 32 * 32;
}

}
