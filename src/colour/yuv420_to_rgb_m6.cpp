// Planar YUV 4:2:0 to RGB, pixel by pixel, clamped in MMX registers.
#include "colour/rows_m6.h"
#include "colour/yuv420_to_rgb_scalar.h"
