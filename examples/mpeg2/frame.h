// A decoded picture: three planes in memory of the library, on whole macroblocks.
#pragma once

#include <cstdint>

#include "syntax.h"
#include "ruxlib.h"

struct Plane {
    uint8_t* samples = nullptr;
    int32_t step = 0;
    int width = 0;         // as coded
    int height = 0;
    ruxiSize shown = {};   // the part to show, at the top left
};

// What outputs see: the samples to show.
struct PlanarView {
    struct Plane {
        const uint8_t* samples;
        int32_t step;
        ruxiSize size;
    };
    ChromaFormat chromaFormat;
    Plane planes[3];
};

// The size of a chroma plane beside a luma plane of this size.
ruxiSize chromaSize(ruxiSize luma, ChromaFormat chromaFormat);

class Frame {
public:
    explicit Frame(const Sequence& sequence);   // mid-grey; throws std::bad_alloc
    ~Frame();
    Frame(const Frame&) = delete;
    Frame& operator=(const Frame&) = delete;

    const Plane& operator[](int plane) const { return planes_[plane]; }
    ChromaFormat chromaFormat() const { return chromaFormat_; }
    ruxiSize shown() const { return planes_[0].shown; }
    PlanarView view() const;

    // Macroblock (x, y) of all planes.
    void copyMacroblock(const Frame& from, int x, int y);
    void greyMacroblock(int x, int y);

    // What the picture in it says about its display.
    bool progressive = false;
    bool topFieldFirst = false;

private:
    Plane macroblock(int plane, int x, int y) const;

    ChromaFormat chromaFormat_;
    Plane planes_[3];
};
