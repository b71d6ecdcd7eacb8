// Clamping element by element.
#include "signal/threshold_scalar.h"
