// The cases over which every operation is compared with its model: sizes around the vector blocks, strides, alignments,
// both edges. Contents and geometry come from seeds and are the same on every build.
#pragma once

#include <vector>

#include "support/image.h"

namespace rux::test {

// What a sweep runs over. The defaults suit an image operation without particular demands.
struct SweepOptions {
    std::vector<int> widths;              // empty: 1 to 73, and around 80, 96, 128, 192, 256, 320, 512, 1024
    std::vector<int> heights;             // empty: small heights in turn, mostly 1 to 5
    int strideMultiple = 1;               // every stride is a multiple of this many bytes
    bool tight = false;                   // no gaps between rows (operations that take no strides)
    int repeats = 1;                      // each case this many times, with other contents
    const char* label = "";               // tells two sweeps of one operation apart in the golden file

    SweepOptions& widthsOf(std::vector<int> list) { widths = std::move(list); return *this; }
    SweepOptions& heightsOf(std::vector<int> list) { heights = std::move(list); return *this; }
    SweepOptions& strides(int multiple) { strideMultiple = multiple; return *this; }
    SweepOptions& tightRows() { tight = true; return *this; }
    SweepOptions& repeated(int times) { repeats = times; return *this; }
    SweepOptions& labelled(const char* text) { label = text; return *this; }
};

SweepOptions imageSweep();
SweepOptions vectorSweep();             // lengths where an image sweep has widths, height 1
SweepOptions blockSweep(int repeats);   // fixed-size blocks: the test gives the shapes, the case contents and places

// One case. Images are made in the order in which the test asks; ask in statements of their own, since the order of
// arguments differs between compilers.
class Case {
public:
    int width, height;
    Random random;   // for what else a case needs

    ruxiSize roi() const { return {width, height}; }
    bool isGolden() const { return golden; }

    // An image of the case's size.
    template <class T>
    Image<T> image(int channels = 1, const Fill<T>& contents = mixture<T>)
    {
        return image<T>(Shape{width, height, channels}, contents);
    }

    // An image of another size, or with margins: stride and place are still the case's.
    template <class T>
    Image<T> image(const Shape& shape, const Fill<T>& contents = mixture<T>)
    {
        const Shape placed = place(shape, static_cast<int>(sizeof(T)));
        return Image<T>(placed, random.next(), contents);
    }

    template <class T>
    Image<T> vector(int length, const Fill<T>& contents = mixture<T>)
    {
        return image<T>(vectorOf(length), contents);
    }

    std::string describe() const;

private:
    friend std::vector<Case> casesOf(const SweepOptions&);
    enum class Rows { tight, loose, odd, wide };

    Case(int width, int height, uint64_t seed) : width(width), height(height), random(seed), seed(seed) {}
    Shape place(Shape, int elementBytes);

    uint64_t seed;
    Rows rows = Rows::tight;
    int strideMultiple = 1;
    Place where = {};
    int alignments = -1;   // modulo 16, of the first image and times 16 of the second; -1: `where` decides
    int images = 0;
    bool golden = false;
};

// All cases, the golden ones among them. With RUX_SWEEP=quick in the environment the golden ones alone.
std::vector<Case> casesOf(const SweepOptions&);

}
