// Division by a constant in vectors of four.
#include "arith/divide_sse.h"
