// The dispatch table: one row for each exported name, with its slot and its four bodies.
#pragma once

#include <stdint.h>

namespace rux {

using Entry = void (*)();

struct DispatchEntry {
    Entry* slot;      // the word that the exported name jumps through
    Entry entry[4];   // the bodies px, m6, a6, w7
};

#define OPERATION(name, bytes, form) +1
constexpr int32_t operationCount = 0
#include "frame/operations.def"
    ;
#undef OPERATION

struct DispatchTable {
    int32_t count;
    DispatchEntry rows[operationCount];
};

extern const DispatchTable dispatchTable;

// Copies one column of a table into its slots. 1: every row was copied; 0: a null entry stopped the copying there.
int32_t fillSlots(const DispatchTable& table, int32_t level);

}

extern "C" int32_t ruxFillSlots(int32_t level);
