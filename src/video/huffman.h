// Variable-length codes: lookup structures and the decoding of one code.
//
// The operations stand here once; each level's file gives the fill of a new block.
#pragma once

#include "frame/checks.h"
#include "video/huffman_builder.h"

namespace rux::RUX_LEVEL {
namespace {

template <typename Form>
ruxStatus buildStructure(const int32_t* table, uint32_t** decodeTable)
{
    if (auto failure = firstFailure(pointers(table, decodeTable))) return failure;

    *decodeTable = nullptr;
    uint32_t* const block = reinterpret_cast<uint32_t*>(ruxsMalloc_8u(Form::blockWords * sizeof(uint32_t)));
    if (!block) return ruxStatusMemoryAllocated;
    if (!HuffmanBuilder<Form>(table, block).build()) {
        ruxsFree(block);
        return ruxStatusMemoryAllocated;
    }
    *decodeTable = block;
    return ruxStatusOk;
}

}

ruxStatus RUXCALL ruxiVCHuffmanInitAlloc_32s(const int32_t* table, uint32_t** decodeTable)
{
    return buildStructure<PlainForm>(table, decodeTable);
}

ruxStatus RUXCALL ruxiVCHuffmanInitAllocRL_32s(const int32_t* table, uint32_t** decodeTable)
{
    return buildStructure<RunLevelForm>(table, decodeTable);
}

ruxStatus RUXCALL ruxiVCHuffmanFree_32s(uint32_t** decodeTable)
{
    if (auto failure = firstFailure(pointers(decodeTable))) return failure;

    ruxsFree(*decodeTable);
    *decodeTable = nullptr;
    return ruxStatusOk;
}

ruxStatus RUXCALL ruxiVCHuffmanDecodeOne_1u32s(uint32_t** bitStream, int32_t* bitOffset, int32_t* dst,
                                               const uint32_t* decodeTable)
{
    if (auto failure = firstFailure(pointers(bitStream, decodeTable))) return failure;

    BitReader reader = {*bitStream, *bitOffset};
    const uint32_t leaf = findLeaf(decodeTable, reader);
    const int32_t value = static_cast<int32_t>(leaf) >> 8;
    const bool isLegal = value != illegalCode;
    if (isLegal) reader.giveBack(freeBits(leaf));
    *bitStream = reader.word;
    *bitOffset = reader.offset;
    *dst = value;
    return isLegal ? ruxStatusOk : ruxStatusVlcCode;
}

}
