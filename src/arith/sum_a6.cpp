// The sum in MMX registers, by sums of absolute differences.
#include "lanes/eight_byte_elements_a6.h"

#include "arith/sum_mmx.h"
