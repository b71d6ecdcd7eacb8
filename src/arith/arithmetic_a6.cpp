// Float arithmetic in vectors of four.
#include "arith/arithmetic_sse.h"
