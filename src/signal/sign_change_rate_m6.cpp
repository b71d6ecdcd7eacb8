// Zero crossings: integers in MMX registers, floats by products in double.
#include "signal/sign_change_rate_double.h"
#include "signal/sign_change_rate_mmx.h"
