// Accumulation, element by element.
#include "arith/accumulate_scalar.h"
