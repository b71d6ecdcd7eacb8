// Accumulation, element by element: MMX has no floats.
#include "arith/accumulate_scalar.h"
