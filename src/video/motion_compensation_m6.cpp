// Motion compensation, exact.
#include "video/motion_compensation_scalar.h"
