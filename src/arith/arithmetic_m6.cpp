// Float arithmetic, element by element: MMX has no floats.
#include "arith/arithmetic_scalar.h"
