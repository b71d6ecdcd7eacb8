#include "rgb.h"

#include <stdexcept>

Picture toRgb(const PlanarView& picture)
{
    const PlanarView::Plane* const planes = picture.planes;
    const uint8_t* const samples[3] = {planes[0].samples, planes[1].samples, planes[2].samples};
    const int32_t steps[3] = {planes[0].step, planes[1].step, planes[2].step};
    Picture rgb(planes[0].size.width, planes[0].size.height);
    const auto convert = picture.chromaFormat == ChromaFormat::yuv420 ? ruxiYCbCr420ToRGB_8u_P3C3R
                                                                      : ruxiYCbCr422ToRGB_8u_P3C3R;
    const ruxStatus status = convert(samples, steps, rgb.pixels.data(), rgb.step(), planes[0].size);
    if (status != ruxStatusOk) throw std::runtime_error(ruxGetStatusString(status));
    return rgb;
}
