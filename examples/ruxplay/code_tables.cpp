#include "code_tables.h"

#include <map>
#include <stdexcept>

#include "code_lists.h"

namespace {

using Record = std::vector<int32_t>;                     // the code, then its values
using RecordsByLength = std::map<int, std::vector<Record>>;

void add(RecordsByLength& records, const char* bits, std::vector<int32_t> values, const char* sign = "")
{
    int32_t code = 0;
    int length = 0;
    for (const char* part : {bits, sign})
        for (; *part; ++part)
            if (*part != ' ') {
                code = code << 1 | (*part == '1');
                ++length;
            }
    values.insert(values.begin(), code);
    records[length].push_back(values);
}

// The library's form: the widths of the lookup levels, then the codes by length.
std::vector<int32_t> sourceList(const RecordsByLength& records, const std::vector<int32_t>& levelWidths)
{
    std::vector<int32_t> list = {0, int32_t(levelWidths.size())};
    list.insert(list.end(), levelWidths.begin(), levelWidths.end());
    const int longest = records.rbegin()->first;
    for (int length = 1; length <= longest; ++length) {
        const auto group = records.find(length);
        list.push_back(group == records.end() ? 0 : int32_t(group->second.size()));
        if (group == records.end()) continue;
        for (const Record& record : group->second) list.insert(list.end(), record.begin(), record.end());
    }
    list.push_back(-1);
    return list;
}

// One lookup for every code.
std::vector<int32_t> plainList(const std::vector<Code>& codes)
{
    RecordsByLength records;
    for (const Code& code : codes) add(records, code.bits, {code.value});
    return sourceList(records, {records.rbegin()->first});
}

constexpr int endOfBlockRun = 254, escapeRun = 255;

// A first level of 9 bits, which the library's fastest level asks for; the longest code has 16 bits and a sign.
std::vector<int32_t> runLevelList(std::initializer_list<const std::vector<RunLevelCode>*> lists, const char* endOfBlock)
{
    RecordsByLength records;
    for (const auto* list : lists)
        for (const RunLevelCode& code : *list) {
            add(records, code.bits, {code.run, code.level}, "0");
            add(records, code.bits, {code.run, -code.level}, "1");
        }
    add(records, "0000 01", {escapeRun, 0});
    if (endOfBlock) add(records, endOfBlock, {endOfBlockRun, 0});
    return sourceList(records, {9, 8});
}

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
    addressIncrement.buildPlain(plainList(macroblockAddressIncrement));
    macroblockType[0].buildPlain(plainList(macroblockTypeI));
    macroblockType[1].buildPlain(plainList(macroblockTypeP));
    macroblockType[2].buildPlain(plainList(macroblockTypeB));
    codedBlockPattern.buildPlain(plainList(::codedBlockPattern));
    motionCode.buildPlain(plainList(::motionCode));
    dmvector.buildPlain(plainList(::dmvector));
    dcSize[0].buildPlain(plainList(dctDcSizeLuminance));
    dcSize[1].buildPlain(plainList(dctDcSizeChrominance));

    const std::vector<RunLevelCode> shortest = {{"11", 0, 1}};
    firstCoefficient.buildRunLevel(runLevelList({&dctCoefficientsZero, &dctCoefficientsShared}, nullptr));
    coefficients[0].buildRunLevel(runLevelList({&shortest, &dctCoefficientsZero, &dctCoefficientsShared}, "10"));
    coefficients[1].buildRunLevel(runLevelList({&dctCoefficientsOne, &dctCoefficientsShared}, "0110"));
}
