#include "encode_tables.h"

#include <cstdlib>
#include <stdexcept>

#include "ruxlib.h"

namespace {

template <size_t count>
void fill(std::array<CodeBits, count>& codes, const std::vector<Code>& list, int lowest = 0)
{
    for (const Code& code : list) codes[size_t(code.value - lowest)] = codeBits(code.bits);
}

int significantBits(int magnitude)
{
    int bits = 0;
    for (; magnitude > 0; magnitude >>= 1) ++bits;
    return bits;
}

}

RunLevelTable::RunLevelTable(bool tableOne) : endOfBlock_(codeBits(endOfBlockCodes[tableOne]))
{
    for (auto& run : lengths_) run.fill(escapeLength);
    for (const RunLevelCode& code : coefficientCodes(tableOne))
        lengths_[size_t(code.run)][size_t(code.level)] = uint8_t(codeBits(code.bits).length + 1);
    const ruxStatus status = ruxiCreateRLEncodeTable(coefficientSourceList(tableOne).data(), &table_);
    if (status != ruxStatusOk) throw std::runtime_error(ruxGetStatusString(status));
}

RunLevelTable::~RunLevelTable()
{
    ruxsFree(table_);
}

EncodeTables::EncodeTables()
{
    fill(addressIncrement, macroblockAddressIncrement);
    fill(macroblockType[0], macroblockTypeI);
    fill(macroblockType[1], macroblockTypeP);
    fill(macroblockType[2], macroblockTypeB);
    fill(codedBlockPattern, ::codedBlockPattern);
    fill(motionCode, ::motionCode, -16);
    const std::vector<Code>* const lists[2] = {&dctDcSizeLuminance, &dctDcSizeChrominance};
    for (int chroma = 0; chroma < 2; ++chroma) {
        dcSize[chroma].resize(2 * lists[chroma]->size());
        for (const Code& code : *lists[chroma]) {
            const CodeBits bits = codeBits(code.bits);
            dcSize[chroma][size_t(code.value) * 2] = bits.value;
            dcSize[chroma][size_t(code.value) * 2 + 1] = uint32_t(bits.length);
        }
    }
}

int EncodeTables::dcLength(bool chroma, int difference) const
{
    const int size = significantBits(std::abs(difference));
    return size + int(dcSize[chroma][size_t(size) * 2 + 1]);
}
