// The inverse wavelet in vectors of four floats.
#include "geometry/wavelet_inverse_sse.h"
