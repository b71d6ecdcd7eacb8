// Planar YUV 4:2:0 to RGB of 16 bits a pixel in blocks of sixteen columns.
#include "colour/rows_w7.h"
#include "colour/yuv420_to_rgb16_vector.h"
