// Lowpass filter in MMX registers.
#include "filter/lowpass_mmx.h"
