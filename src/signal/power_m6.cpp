// Powers on the floating-point stack: MMX has no floats.
#include "signal/power_extended.h"
