// What the tests of the colour conversions share.
#pragma once

#include "support/family.h"

namespace rux::test {

// Strides of planes, of an operation that does not test their array for null.
struct StepsInPlace {
    Steps steps;
};

template <>
class Operand<StepsInPlace> : public Operand<Steps> {
public:
    Operand(const StepsInPlace& given, Clones& clones) : Operand<Steps>(given.steps, clones) {}
    int choices() const { return Operand<Steps>::choices() - 1; }
    void choose(int number) { Operand<Steps>::choose(number == 0 ? 0 : number + 1); }
};

// One chroma sample serves 1 << rowShift rows of two pixels.
inline Shape chromaShape(ruxiSize size, int rowShift)
{
    return Shape{(size.width + 1) / 2, (size.height + rowShift) >> rowShift};
}

// The three planes of a case.
inline Planes<uint8_t> planesOf(Case& c, int rowShift)
{
    auto luma = c.image<uint8_t>();
    auto cb = c.image<uint8_t>(chromaShape(c.roi(), rowShift));
    auto cr = c.image<uint8_t>(chromaShape(c.roi(), rowShift));
    return Planes<uint8_t>(std::move(luma), std::move(cb), std::move(cr));
}

// Tight planes of one colour.
inline Planes<uint8_t> planesOfColour(ruxiSize size, int rowShift, int y, int cb, int cr)
{
    const Shape chroma = chromaShape(size, rowShift);
    return Planes<uint8_t>(Image<uint8_t>(Shape{size.width, size.height}, 1, uniform<uint8_t>(y, y)),
                           Image<uint8_t>(chroma, 2, uniform<uint8_t>(cb, cb)),
                           Image<uint8_t>(chroma, 3, uniform<uint8_t>(cr, cr)));
}

// Every pair of chroma samples once with any luma; then every luma with every chroma sample, Cb and Cr the same. A
// chroma row holds one pair in all its columns: fill(row, cb, cr, luma), luma below 0 for any.
template <class FillRow>
void everyColour(bool lumaGiven, const FillRow& fill)
{
    for (int row = 0; row < 65536; row++) {
        const auto low = static_cast<uint8_t>(row), high = static_cast<uint8_t>(row >> 8);
        if (lumaGiven) fill(row, high, high, low);
        else fill(row, low, high, -1);
    }
}

// Planes of such colours, 65536 rows of chroma or, where two rows share them, one more for an odd last row.
inline Planes<uint8_t> planesOfEveryColour(int width, int rowShift, bool lumaGiven)
{
    const int height = rowShift ? 2 * 65536 + 1 : 65536;
    const Shape chroma = chromaShape({width, height}, rowShift);
    Image<uint8_t> y(Shape{width, height}, 1, anyBits<uint8_t>), cb(chroma, 2), cr(chroma, 3);
    everyColour(lumaGiven, [&](int row, uint8_t blue, uint8_t red, int luma) {
        std::memset(cb.row(row), blue, cb.rowBytes());
        std::memset(cr.row(row), red, cr.rowBytes());
        if (luma < 0) return;
        for (int r = row << rowShift; r < (row + 1) << rowShift; r++) std::memset(y.row(r), luma, y.rowBytes());
    });
    return Planes<uint8_t>(std::move(y), std::move(cb), std::move(cr));
}

// The same, interleaved.
inline Image<uint8_t> interleavedOfEveryColour(int width, bool lumaGiven)
{
    Image<uint8_t> image(Shape{width, 65536, 2}, 1, anyBits<uint8_t>);
    everyColour(lumaGiven, [&](int row, uint8_t cb, uint8_t cr, int luma) {
        for (int x = 0; x < width; x++) {
            if (luma >= 0) image.row(row)[2 * x] = static_cast<uint8_t>(luma);
            image.row(row)[2 * x + 1] = x & 1 ? cr : cb;
        }
    });
    return image;
}

// Interleaved rows of one colour.
inline Image<uint8_t> interleavedOfColour(ruxiSize size, int y, int cb, int cr)
{
    Image<uint8_t> image(Shape{size.width, size.height, 2});
    for (int row = 0; row < size.height; row++) {
        for (int x = 0; x < size.width; x++) {
            image.row(row)[2 * x] = static_cast<uint8_t>(y);
            image.row(row)[2 * x + 1] = static_cast<uint8_t>(x & 1 ? cr : cb);
        }
    }
    return image;
}

}
