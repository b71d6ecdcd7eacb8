// Planar YUV 4:2:0 to RGB of 16 bits a pixel, pixel by pixel, clamped in MMX registers.
#include "colour/rows_m6.h"
#include "colour/yuv420_to_rgb16_scalar.h"
