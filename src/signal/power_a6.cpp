// Powers on the floating-point stack: SSE alone has no precision that would do.
#include "signal/power_extended.h"
