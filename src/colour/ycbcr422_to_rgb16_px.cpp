// Interleaved YCbCr 4:2:2 to RGB of 16 bits a pixel, pixel by pixel.
#include "colour/rows_px.h"
#include "colour/ycbcr422_to_rgb16_scalar.h"
