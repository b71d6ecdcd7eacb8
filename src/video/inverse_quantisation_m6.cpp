// Inverse quantisation in 32-bit integers.
#include "video/inverse_quantisation_scalar.h"
