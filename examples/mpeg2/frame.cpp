#include "frame.h"

#include <new>

ruxiSize chromaSize(ruxiSize luma, ChromaFormat chromaFormat)
{
    return {(luma.width + 1) / 2, chromaFormat == ChromaFormat::yuv420 ? (luma.height + 1) / 2 : luma.height};
}

Frame::Frame(const Sequence& sequence) : chromaFormat_(sequence.chromaFormat)
{
    const ruxiSize coded = {16 * sequence.macroblocksAcross(), 16 * sequence.macroblocksDown()};
    const ruxiSize shown = {sequence.width, sequence.height};
    for (int index = 0; index < 3; ++index) {
        Plane& plane = planes_[index];
        const ruxiSize size = index == 0 ? coded : chromaSize(coded, chromaFormat_);
        const ruxiSize rows = {size.width, size.height + 1};   // scaling down can touch a row more, with weight 0
        plane.width = size.width;
        plane.height = size.height;
        plane.shown = index == 0 ? shown : chromaSize(shown, chromaFormat_);
        plane.samples = ruxiMalloc_8u_C1(rows.width, rows.height, &plane.step);
        if (!plane.samples || ruxiSet_8u_C1R(128, plane.samples, plane.step, rows)) {
            for (const Plane& taken : planes_) ruxiFree(taken.samples);
            throw std::bad_alloc();
        }
    }
}

PlanarView Frame::view() const
{
    PlanarView view = {chromaFormat_, {}};
    for (int index = 0; index < 3; ++index)
        view.planes[index] = {planes_[index].samples, planes_[index].step, planes_[index].shown};
    return view;
}

Frame::~Frame()
{
    for (const Plane& plane : planes_) ruxiFree(plane.samples);
}

Plane Frame::macroblock(int plane, int x, int y) const
{
    Plane part = planes_[plane];
    part.width = plane > 0 ? 8 : 16;
    part.height = plane > 0 && chromaFormat_ == ChromaFormat::yuv420 ? 8 : 16;
    part.samples += int64_t(y) * part.height * part.step + x * part.width;
    return part;
}

void Frame::copyMacroblock(const Frame& from, int x, int y)
{
    for (int plane = 0; plane < 3; ++plane) {
        const Plane source = from.macroblock(plane, x, y);
        const Plane target = macroblock(plane, x, y);
        ruxiCopy_8u_C1R(source.samples, source.step, target.samples, target.step, {target.width, target.height});
    }
}

void Frame::greyMacroblock(int x, int y)
{
    for (int plane = 0; plane < 3; ++plane) {
        const Plane target = macroblock(plane, x, y);
        ruxiSet_8u_C1R(128, target.samples, target.step, {target.width, target.height});
    }
}
