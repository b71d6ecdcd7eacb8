// Planar YCbCr 4:2:0 to RGB in blocks of sixteen columns.
#include "colour/rows_w7.h"
#include "colour/ycbcr420_to_rgb_vector.h"
