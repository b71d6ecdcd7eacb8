// The sum in MMX registers.
#include "lanes/eight_byte_elements_m6.h"

#include "arith/sum_mmx.h"
