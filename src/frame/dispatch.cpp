#include "frame/dispatch.h"

#include "frame/level.h"

// The slots stand beside the stubs that jump through them (stubs.S).
#define OPERATION(name, bytes, form) extern "C" rux::Entry ruxSlot_##name;
#include "frame/operations.def"
#undef OPERATION

namespace rux {

#define BODY(level, name) reinterpret_cast<Entry>(&level::name)
#define OPERATION(name, bytes, form) \
    {&ruxSlot_##name, {BODY(px, name), BODY(m6, name), BODY(a6, name), BODY(w7, name)}},
const DispatchTable dispatchTable = {operationCount, {
#include "frame/operations.def"
}};
#undef OPERATION

int32_t fillSlots(const DispatchTable& table, int32_t level)
{
    for (int32_t row = 0; row < table.count; ++row) {
        const Entry body = table.rows[row].entry[level];
        if (!body) return 0;
        *table.rows[row].slot = body;
    }
    return 1;
}

}

int32_t ruxFillSlots(int32_t level)
{
    return rux::fillSlots(rux::dispatchTable, level);
}
