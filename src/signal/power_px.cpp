// Powers on the floating-point stack.
#include "signal/power_extended.h"
