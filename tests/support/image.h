// Images, vectors and single results in guarded memory, filled from a seed, compared to their last byte.
//
//     Image<uint8_t> image(Shape{width, height, 3}, seed);      // tight rows, last byte at a faulting page
//     Image<float> around(Shape{w, h}.margins(1, 1, 1, 1), seed, uniform<float>(0, 1));
//     Image<int16_t> samples(vectorOf(length), seed);           // one row
//
// All accessible bytes, also the gaps between rows and the slack around, are filled, cloned and compared.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "ruxlib/types.h"
#include "support/guarded.h"
#include "support/random.h"

namespace rux::test {

// A row stride as an argument: a test of wrong arguments knows it by its type.
struct Step {
    int32_t bytes;
    operator int32_t() const { return bytes; }
};

// The geometry of an image. The region has margins where an operation may read around it.
struct Shape {
    int width = 1;
    int height = 1;
    int channels = 1;
    int step = 0;     // bytes from row to row: any but 0, also shorter than a row or negative; 0: tight
    Place place = {};
    int left = 0, top = 0, right = 0, bottom = 0;   // pixels around the region that belong to the image

    Shape margins(int left, int top, int right, int bottom) const;
    Shape withStep(int bytes) const;
    Shape at(Place) const;
};

Shape vectorOf(int length);

// Memory of an image, without its element type.
class Plane {
public:
    Plane(const Shape&, int elementBytes, uint64_t seed);

    int width() const { return form.width; }
    int height() const { return form.height; }
    Step step() const { return {stride}; }
    ruxiSize roi() const { return {form.width, form.height}; }
    const Shape& shape() const { return form; }
    size_t rowBytes() const { return static_cast<size_t>(form.width) * form.channels * elementBytes; }

    // The first byte of a row of the region.
    uint8_t* row(int y) const { return origin + static_cast<ptrdiff_t>(y) * stride; }

    // All that can be touched, with the slack on both sides.
    const uint8_t* memoryBegin() const { return memory.begin(); }
    const uint8_t* memoryEnd() const { return memory.end(); }

    // Whether every byte, gaps and slack included, is the other's; the message tells the first that is not.
    testing::AssertionResult equals(const Plane& expected) const;

    // Shape, place and seed, for messages.
    std::string describe() const;

protected:
    void copyBytes(const Plane& from);
    int rowsInMemory() const { return form.top + form.height + form.bottom; }
    int elementsInRow() const { return (form.left + form.width + form.right) * form.channels; }
    uint8_t* rowWithMargins(int y) const;   // from -top

private:
    std::string placeOf(ptrdiff_t offset) const;

    Shape form;
    int elementBytes;
    uint64_t seed;
    int stride;
    Guarded memory;
    uint8_t* origin;
};

template <class T>
class Image : public Plane {
public:
    explicit Image(const Shape& shape, uint64_t seed = 1, const Fill<T>& contents = mixture<T>)
        : Plane(shape, sizeof(T), seed)
    {
        fill(seed, contents);
    }

    // Same shape, same place, same bytes.
    Image clone() const
    {
        Image twin(*this, Cloned());
        twin.copyBytes(*this);
        return twin;
    }

    // The first element of the region; it need not stand on a boundary of its type.
    T* data() const { return reinterpret_cast<T*>(row(0)); }

    // Fills the region and its margins, not the bytes around them.
    void fill(uint64_t seed, const Fill<T>& contents)
    {
        Random random(seed * 2 + 1);
        std::vector<T> elements(static_cast<size_t>(elementsInRow()));
        for (int y = 0; y < rowsInMemory(); y++) {
            contents(random, elements.data(), elementsInRow());
            std::memcpy(rowWithMargins(y), elements.data(), elements.size() * sizeof(T));
        }
    }

    // An element of the region, or of its margins; x counts elements, not pixels.
    T get(int x, int y = 0) const
    {
        T value;
        std::memcpy(&value, row(y) + x * static_cast<ptrdiff_t>(sizeof(T)), sizeof value);
        return value;
    }
    void set(int x, int y, const T& value)
    {
        std::memcpy(row(y) + x * static_cast<ptrdiff_t>(sizeof(T)), &value, sizeof value);
    }

private:
    struct Cloned {};
    Image(const Image& from, Cloned) : Plane(from.shape(), sizeof(T), 0) {}
};

}
