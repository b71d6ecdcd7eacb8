// Norms of differences in MMX registers for integers, singly for floats.
#include "lanes/eight_byte_elements_m6.h"

#include "arith/norm_diff_mmx.h"
#include "arith/norm_diff_scalar.h"
