#include "scaler.h"

#include <stdexcept>

PlanarView Scaler::scale(const PlanarView& picture)
{
    PlanarView scaled = {picture.chromaFormat, {}};
    for (int index = 0; index < 3; ++index) {
        const PlanarView::Plane& from = picture.planes[index];
        const ruxiSize size = index == 0 ? size_ : chromaSize(size_, picture.chromaFormat);
        // The mean over the area where both sides shrink, else the cubic polynomial.
        const double xFactor = double(size.width) / from.size.width, yFactor = double(size.height) / from.size.height;
        const bool shrinks = xFactor < 1 && yFactor < 1;
        planes_[index].resize(size_t(size.width) * size_t(size.height));
        const ruxStatus status = ruxiResize_8u_C1R(
            from.samples, from.size, from.step, {0, 0, from.size.width, from.size.height}, planes_[index].data(),
            size.width, size, xFactor, yFactor, shrinks ? ruxInterpolationSuperSample : ruxInterpolationCubic);
        if (status != ruxStatusOk) throw std::runtime_error(ruxGetStatusString(status));
        scaled.planes[index] = {planes_[index].data(), size.width, size};
    }
    return scaled;
}
