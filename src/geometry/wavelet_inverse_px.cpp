// The inverse wavelet in double.
#include "geometry/wavelet_inverse_scalar.h"
