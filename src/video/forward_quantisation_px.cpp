// Quantisation in double precision.
#include "video/forward_quantisation_double.h"
