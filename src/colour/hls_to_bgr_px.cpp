// Hue, lightness and saturation to B, G, R in double.
#include "colour/hls_to_bgr_scalar.h"
