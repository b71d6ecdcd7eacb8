#pragma once

#include "ruxlib/types.h"

namespace rux {

// The text of a status code; equal codes give equal pointers, and so do all unknown ones.
const char* statusText(ruxStatus status);

}
