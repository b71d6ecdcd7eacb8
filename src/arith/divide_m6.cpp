// Division by a constant, element by element: MMX has no floats.
#include "arith/divide_scalar.h"
