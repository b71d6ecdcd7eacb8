// Packed 4:2:2 in MMX registers; SSE brings nothing to moves of bytes.
#include "colour/split422_mmx.h"
