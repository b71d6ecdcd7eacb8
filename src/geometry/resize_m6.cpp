// Resize: linear interpolation and whole boxes in MMX, the rest pixel by pixel.
#include "geometry/resize.h"
#include "geometry/resize_cubic_scalar.h"
#include "geometry/resize_linear_mmx.h"
#include "geometry/resize_super_mmx.h"
#include "geometry/resize_super_scalar.h"
