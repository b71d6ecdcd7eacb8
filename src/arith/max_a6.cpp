// The largest element in vectors of four.
#include "arith/max_sse.h"
