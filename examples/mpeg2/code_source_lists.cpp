#include "code_source_lists.h"

#include <map>

namespace {

using Record = std::vector<int32_t>;                     // the code, then its values
using RecordsByLength = std::map<int, std::vector<Record>>;

constexpr int endOfBlockRun = 254, escapeRun = 255;

void add(RecordsByLength& records, CodeBits code, std::vector<int32_t> values)
{
    values.insert(values.begin(), int32_t(code.value));
    records[code.length].push_back(values);
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

// A first level of 9 bits, which the library's fastest level asks for; the longest code has 16 bits and a sign.
std::vector<int32_t> runLevelSourceList(const std::vector<RunLevelCode>& codes, const char* endOfBlock)
{
    RecordsByLength records;
    for (const RunLevelCode& code : codes) {
        const CodeBits bits = codeBits(code.bits);
        add(records, {bits.value << 1, bits.length + 1}, {code.run, code.level});
        add(records, {bits.value << 1 | 1, bits.length + 1}, {code.run, -code.level});
    }
    add(records, codeBits("0000 01"), {escapeRun, 0});
    if (endOfBlock) add(records, codeBits(endOfBlock), {endOfBlockRun, 0});
    return sourceList(records, {9, 8});
}

std::vector<RunLevelCode> joined(std::vector<RunLevelCode> codes, const std::vector<RunLevelCode>& more)
{
    codes.insert(codes.end(), more.begin(), more.end());
    return codes;
}

}

const char* const endOfBlockCodes[2] = {"10", "0110"};

CodeBits codeBits(const char* bits)
{
    CodeBits code;
    for (; *bits; ++bits)
        if (*bits != ' ') {
            code.value = code.value << 1 | (*bits == '1');
            ++code.length;
        }
    return code;
}

std::vector<RunLevelCode> coefficientCodes(bool tableOne)
{
    if (tableOne) return joined(dctCoefficientsOne, dctCoefficientsShared);
    return joined(joined({{"11", 0, 1}}, dctCoefficientsZero), dctCoefficientsShared);
}

std::vector<int32_t> plainSourceList(const std::vector<Code>& codes)
{
    RecordsByLength records;
    for (const Code& code : codes) add(records, codeBits(code.bits), {code.value});
    return sourceList(records, {records.rbegin()->first});
}

std::vector<int32_t> coefficientSourceList(bool tableOne)
{
    return runLevelSourceList(coefficientCodes(tableOne), endOfBlockCodes[tableOne]);
}

std::vector<int32_t> firstCoefficientSourceList()
{
    return runLevelSourceList(joined(dctCoefficientsZero, dctCoefficientsShared), nullptr);
}
