// Planar YCbCr 4:2:0 to RGB in blocks of eight columns.
#include "colour/rows_a6.h"
#include "colour/ycbcr420_to_rgb_vector.h"
