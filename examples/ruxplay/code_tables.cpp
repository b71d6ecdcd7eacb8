#include "code_tables.h"

#include <stdexcept>

#include "code_source_lists.h"

namespace {

void require(ruxStatus status)
{
    if (status != ruxStatusOk) throw std::runtime_error(ruxGetStatusString(status));
}

}

void CodeTable::buildPlain(const std::vector<int32_t>& sourceList)
{
    require(ruxiVCHuffmanInitAlloc_32s(sourceList.data(), &table_));
}

void CodeTable::buildRunLevel(const std::vector<int32_t>& sourceList)
{
    require(ruxiVCHuffmanInitAllocRL_32s(sourceList.data(), &table_));
}

CodeTables::CodeTables()
{
    addressIncrement.buildPlain(plainSourceList(macroblockAddressIncrement));
    macroblockType[0].buildPlain(plainSourceList(macroblockTypeI));
    macroblockType[1].buildPlain(plainSourceList(macroblockTypeP));
    macroblockType[2].buildPlain(plainSourceList(macroblockTypeB));
    codedBlockPattern.buildPlain(plainSourceList(::codedBlockPattern));
    motionCode.buildPlain(plainSourceList(::motionCode));
    dmvector.buildPlain(plainSourceList(::dmvector));
    dcSize[0].buildPlain(plainSourceList(dctDcSizeLuminance));
    dcSize[1].buildPlain(plainSourceList(dctDcSizeChrominance));

    firstCoefficient.buildRunLevel(firstCoefficientSourceList());
    for (const bool tableOne : {false, true}) coefficients[tableOne].buildRunLevel(coefficientSourceList(tableOne));
}
