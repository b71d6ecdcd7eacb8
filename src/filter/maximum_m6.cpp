// Maximum filter in MMX registers; the maximum is composed of saturating bytes.
#include "lanes/eight_byte_elements_m6.h"

#include "filter/maximum_mmx.h"
