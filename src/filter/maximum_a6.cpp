// Maximum filter in MMX registers with the byte maximum of SSE.
#include "lanes/eight_byte_elements_a6.h"

#include "filter/maximum_mmx.h"
