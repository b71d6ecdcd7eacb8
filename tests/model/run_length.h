// Run-length encoding: the table made of a list, and the bits of a block.
#pragma once

#include <vector>

#include "model/memory.h"
#include "ruxlib/video_stream.h"

namespace rux::model {

// The status of the builder and the words that it stores; the others of the block are as the allocator left them. A
// list with levels of one sign only can store codes where offsets or centres stand: such a table is built, or refused
// because its lookups would leave it, as its words turn out.
struct EncodeTable {
    ruxStatus status;
    std::vector<uint32_t> words;
    std::vector<bool> written;
    bool damaged = false;
};

EncodeTable buildEncodeTable(const int32_t* table);

ruxStatus ruxiPutIntraBlock(Level, uint32_t** bitStream, int32_t* freeBits, const int16_t* block, int32_t* dcPredictor,
                            const uint32_t* dcTable, const uint32_t* encodeTable, const int32_t* scanTable,
                            uint32_t eobLength, int32_t eobCode, int32_t count);
ruxStatus ruxiPutNonIntraBlock(Level, uint32_t** bitStream, int32_t* freeBits, const int16_t* block,
                               const uint32_t* encodeTable, const int32_t* scanTable, uint32_t eobLength,
                               int32_t eobCode, int32_t count);

}
