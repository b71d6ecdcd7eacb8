// The forward wavelet in double.
#include "geometry/wavelet_forward_scalar.h"
