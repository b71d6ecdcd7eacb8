// Float arithmetic, element by element.
#include "arith/arithmetic_scalar.h"
