// Interleaved YCbCr 4:2:2 to RGB of 16 bits a pixel, pixel by pixel, clamped in MMX registers.
#include "colour/rows_m6.h"
#include "colour/ycbcr422_to_rgb16_scalar.h"
