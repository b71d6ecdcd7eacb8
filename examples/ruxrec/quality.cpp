#include "quality.h"

#include "psnr.h"

void Quality::add(const PlanarView& source, const PlanarView& decoded)
{
    for (int index = 0; index < 3; ++index) {
        const PlanarView::Plane& plane = source.planes[index];
        squares_[index] += squaredDifference(plane, decoded.planes[index].samples, decoded.planes[index].step);
        samples_[index] += uint64_t(plane.size.width) * uint64_t(plane.size.height);
    }
}

double Quality::psnr(int plane) const
{
    return ::psnr(squares_[plane], samples_[plane]);
}
