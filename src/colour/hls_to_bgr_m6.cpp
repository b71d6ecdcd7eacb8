// Hue, lightness and saturation to B, G, R in double; MMX brings nothing to floating point.
#include "colour/hls_to_bgr_scalar.h"
