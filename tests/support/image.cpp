#include "support/image.h"

#include <cstdio>
#include <cstdlib>

namespace rux::test {
namespace {

int tightStep(const Shape& shape, int elementBytes)
{
    return (shape.left + shape.width + shape.right) * shape.channels * elementBytes;
}

// Bytes from the first of the image to its last.
size_t extent(const Shape& shape, int elementBytes, int stride)
{
    const size_t rows = static_cast<size_t>(shape.top + shape.height + shape.bottom);
    if (rows == 0) return 0;
    return (rows - 1) * static_cast<size_t>(std::abs(stride)) + static_cast<size_t>(tightStep(shape, elementBytes));
}

std::string hex(const uint8_t* bytes, const uint8_t* end)
{
    std::string text;
    for (int i = 0; i < 16 && bytes + i < end; i++) {
        char digits[4];
        std::snprintf(digits, sizeof digits, "%02X ", bytes[i]);
        text += digits;
    }
    return text;
}

}

Shape Shape::margins(int l, int t, int r, int b) const
{
    Shape with = *this;
    with.left = l, with.top = t, with.right = r, with.bottom = b;
    return with;
}

Shape Shape::withStep(int bytes) const
{
    Shape with = *this;
    with.step = bytes;
    return with;
}

Shape Shape::at(Place where) const
{
    Shape with = *this;
    with.place = where;
    return with;
}

Shape vectorOf(int length)
{
    return Shape{length, 1};
}

Plane::Plane(const Shape& shape, int elementBytes, uint64_t seed)
    : form(shape), elementBytes(elementBytes), seed(seed),
      stride(shape.step ? shape.step : tightStep(shape, elementBytes)),
      memory(extent(shape, elementBytes, stride), shape.place)
{
    // With a negative stride the first row is the last in memory.
    const ptrdiff_t fromFirst = static_cast<ptrdiff_t>(stride < 0 ? rowsInMemory() - 1 : 0) * -stride;
    origin = memory.data() + fromFirst + static_cast<ptrdiff_t>(form.top) * stride +
             static_cast<ptrdiff_t>(form.left) * form.channels * elementBytes;
    Random random(seed);
    fillBytes(random, memory.begin(), static_cast<size_t>(memory.end() - memory.begin()));
}

uint8_t* Plane::rowWithMargins(int y) const
{
    return row(y - form.top) - static_cast<ptrdiff_t>(form.left) * form.channels * elementBytes;
}

void Plane::copyBytes(const Plane& from)
{
    seed = from.seed;
    std::memcpy(memory.begin(), from.memory.begin(), static_cast<size_t>(memory.end() - memory.begin()));
}

testing::AssertionResult Plane::equals(const Plane& expected) const
{
    const size_t bytes = static_cast<size_t>(memory.end() - memory.begin());
    if (std::memcmp(memory.begin(), expected.memory.begin(), bytes) == 0) return testing::AssertionSuccess();
    size_t at = 0, differing = 0;
    for (size_t i = bytes; i-- > 0;) {
        if (memory.begin()[i] != expected.memory.begin()[i]) at = i, differing++;
    }
    const uint8_t* const place = memory.begin() + at;
    return testing::AssertionFailure() << differing << " bytes differ, first at " << placeOf(place - origin)
                                       << "\n    is     " << hex(place, memory.end()) << "\n    not    "
                                       << hex(expected.memory.begin() + at, expected.memory.end())
                                       << "\n    in " << describe();
}

std::string Plane::placeOf(ptrdiff_t offset) const
{
    char text[160];
    const ptrdiff_t fromFirst = memory.data() - origin;
    const auto extentBytes = static_cast<ptrdiff_t>(extent(form, elementBytes, stride));
    if (offset < fromFirst) {
        std::snprintf(text, sizeof text, "%td bytes before the image", fromFirst - offset);
        return text;
    }
    if (offset >= fromFirst + extentBytes) {
        std::snprintf(text, sizeof text, "%td bytes behind the image's last", offset - fromFirst - extentBytes + 1);
        return text;
    }
    for (int y = form.height - 1; y >= 0; y--) {
        const ptrdiff_t inRow = offset - static_cast<ptrdiff_t>(y) * stride;
        if (inRow < 0 || inRow >= static_cast<ptrdiff_t>(rowBytes())) continue;
        const int element = static_cast<int>(inRow) / elementBytes;
        std::snprintf(text, sizeof text, "x %d, y %d, channel %d, byte %d of its element", element / form.channels, y,
                      element % form.channels, static_cast<int>(inRow) % elementBytes);
        return text;
    }
    std::snprintf(text, sizeof text, "%td bytes from the region's first, in a gap between rows or a margin", offset);
    return text;
}

std::string Plane::describe() const
{
    char text[240];
    std::snprintf(text, sizeof text,
                  "%dx%d, %d channels of %d bytes, stride %d, margins %d %d %d %d, address modulo 64 is %d, %s edge, "
                  "seed %llu",
                  form.width, form.height, form.channels, elementBytes, stride, form.left, form.top, form.right,
                  form.bottom, static_cast<int>(reinterpret_cast<uintptr_t>(origin) % 64),
                  form.place.edge == Edge::end ? "end" : "start", static_cast<unsigned long long>(seed));
    return text;
}

}
