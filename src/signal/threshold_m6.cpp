// Clamping element by element: MMX has no floats.
#include "signal/threshold_scalar.h"
