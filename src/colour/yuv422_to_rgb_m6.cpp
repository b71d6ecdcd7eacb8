// YUV 4:2:2 to RGB, pixel by pixel, clamped in MMX registers.
#include "colour/rows_m6.h"
#include "colour/yuv422_to_rgb_scalar.h"
