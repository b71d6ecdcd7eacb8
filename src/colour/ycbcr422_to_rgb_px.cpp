// YCbCr 4:2:2 to RGB, pixel by pixel.
#include "colour/rows_px.h"
#include "colour/ycbcr422_to_rgb_scalar.h"
