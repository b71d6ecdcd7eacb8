// The forward wavelet in vectors of four floats.
#include "geometry/wavelet_forward_sse.h"
