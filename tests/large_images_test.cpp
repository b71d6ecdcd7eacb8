// Copy and fill of large images, on both sides of the sizes from which w7 stores past the caches, as one run and as
// rows, and around the distances between source and destination at which it does not.
#include "model/copy.h"
#include "ruxlib.h"
#include "support/family.h"

namespace rux::test {

RUX_FAMILY(LargeImages, "large_images");

constexpr int copyThreshold = 0x20000, fillThreshold = 0x40000, fill16Threshold = 180000;

// Images whose rows take about so many bytes in all: one row, contiguous rows, rows with gaps.
std::vector<Shape> around(int bytes, int elementBytes, int channels = 1)
{
    const int pixel = elementBytes * channels;
    std::vector<Shape> shapes;
    for (int more : {-1, 0, 1}) {
        shapes.push_back(Shape{bytes / pixel + more, 1, channels});
        shapes.push_back(Shape{bytes / pixel / 64 + more, 64, channels});
        const Shape rows{bytes / pixel / 100 + 1 + more, 100, channels};
        shapes.push_back(rows.withStep(rows.width * pixel + elementBytes).at({Edge::end, 5}));
        shapes.push_back(rows.withStep((rows.width * pixel + 63) / 64 * 64).at({Edge::start, 32}));
    }
    return shapes;
}

template <class T, class Test, class Op>
void copyAround(Test& test, const Op& operation, int channels)
{
    uint64_t seed = 0;
    for (const Shape& shape : around(copyThreshold, sizeof(T), channels)) {
        for (int offset : {0, 1, 4, 8, 12}) {
            const Image<T> src(shape.at({Edge::start, offset}), ++seed, anyBits<T>), dst(shape, ++seed, anyBits<T>);
            test.agree(operation, src, src.step(), dst, dst.step(), dst.roi());
        }
    }
}

TEST_P(LargeImages, copiesAroundTheThreshold)
{
    copyAround<uint8_t>(*this, RUX_OPERATION(ruxiCopy_8u_C1R), 1);
    copyAround<uint8_t>(*this, RUX_OPERATION(ruxiCopy_8u_C3R), 3);
    copyAround<uint8_t>(*this, RUX_OPERATION(ruxiCopy_8u_C4R), 4);
    copyAround<int16_t>(*this, RUX_OPERATION(ruxiCopy_16s_C1R), 1);
    copyAround<float>(*this, RUX_OPERATION(ruxiCopy_32f_C1R), 1);
}

TEST_P(LargeImages, fillsAroundTheThreshold)
{
    for (const Shape& shape : around(fillThreshold, 1)) {
        const Image<uint8_t> dst(shape, 1, anyBits<uint8_t>);
        agree(RUX_OPERATION(ruxiSet_8u_C1R), 0xA5, dst, dst.step(), dst.roi());
    }
    for (const Shape& shape : around(fill16Threshold, 2)) {
        const Image<int16_t> dst(shape, 2, anyBits<int16_t>);
        agree(RUX_OPERATION(ruxiSet_16s_C1R), 0x1234, dst, dst.step(), dst.roi());
    }
    for (const Shape& shape : around(fillThreshold, 4)) {
        const Image<float> dst(shape, 3, anyBits<float>);
        agree(RUX_OPERATION(ruxiSet_32f_C1R), FloatBits{0x7FA12345}, dst, dst.step(), dst.roi());
    }
}

// Source and destination in one buffer, so that their distance modulo 64 KiB is known: inside, at the edges and
// outside the band 0xFEC0 to 0xFFF0, and 0.
TEST_P(LargeImages, copiesAtEveryDistanceOfTheBand)
{
    constexpr int bytes = copyThreshold + 4096, apart = 3 * 65536;
    std::vector<int> distances = {0, 1, 0x8000, 0xFEBF, 0xFEC0, 0xFEC1, 0xFFEF, 0xFFF0, 0xFFF1, 0xFFFF};
    for (int distance = 0xFEA0; distance < 0x10000; distance += 7) distances.push_back(distance);
    for (int distance : distances) {
        for (int offset : {0, 9}) {
            const Image<uint8_t> both(vectorOf(apart + 65536 + bytes + 64).at({Edge::start, 0}), 1, anyBits<uint8_t>);
            agree(RUX_OPERATION(ruxiCopy_8u_C1R), elementOf(both, apart + distance + offset), bytes,
                  elementOf(both, offset), bytes, ruxiSize{bytes, 1});
            if (HasFailure()) return;
        }
    }
}

TEST_P(LargeImages, laterRowWinsWhereRowsOverlap)
{
    const Image<uint8_t> src(Shape{8192, 40}.withStep(128), 1, anyBits<uint8_t>);
    const Image<uint8_t> dst(Shape{8192, 40}.withStep(67), 2, anyBits<uint8_t>);
    agree(RUX_OPERATION(ruxiCopy_8u_C1R), src, src.step(), dst, dst.step(), dst.roi());
    agree(RUX_OPERATION(ruxiSet_8u_C1R), 7, dst, dst.step(), dst.roi());
}

}
