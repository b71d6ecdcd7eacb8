// Planar YCbCr 4:2:0 to RGB, pixel by pixel.
#include "colour/rows_px.h"
#include "colour/ycbcr420_to_rgb_scalar.h"
