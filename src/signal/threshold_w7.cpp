// Clamping four elements at a time.
#include "signal/threshold_sse.h"
