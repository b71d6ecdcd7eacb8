// What px holds while it converts rows: nothing.
#pragma once

#include "colour/clamp_compare.h"

namespace rux::RUX_LEVEL {
namespace {

struct RowState {
    RowState() {}
    ~RowState() {}
};

using StreamedRowState = RowState;

}
}
