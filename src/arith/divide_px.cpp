// Division by a constant, element by element.
#include "arith/divide_scalar.h"
