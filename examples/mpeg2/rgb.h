// Pictures in RGB.
#pragma once

#include "frame.h"
#include "picture.h"

Picture toRgb(const PlanarView& picture);
