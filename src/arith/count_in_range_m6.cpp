// Counts in MMX registers for bytes, singly for floats.
#include "lanes/eight_byte_elements_m6.h"

#include "arith/count_in_range_mmx.h"
#include "arith/count_in_range_scalar.h"
