// Packed 4:2:2 in MMX registers.
#include "colour/split422_mmx.h"
