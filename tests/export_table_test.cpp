// The list of operations against the contract's export table: every name, its ordinal and its spelling.
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace rux::test {
namespace {

struct Export {
    std::string name;
    int decoratedBytes;
};

const std::vector<Export> contract = {
#define EXPORT(name, bytes) {#name, bytes},
#include "model/exports.def"
#undef EXPORT
};

struct Listed {
    std::string name;
    int bytes;
    std::string form;
};

const std::vector<Listed> listed = {
#define OPERATION(name, bytes, form) {#name, bytes, #form},
#include "frame/operations.def"
#undef OPERATION
};

TEST(ExportTable, listsTheContractsNamesOrdinalsAndSpellings)
{
    ASSERT_EQ(listed.size(), contract.size());
    for (size_t index = 0; index < contract.size(); ++index) {
        const Export& wanted = contract[index];
        EXPECT_EQ(listed[index].name, wanted.name) << "ordinal " << index + 1;
        EXPECT_EQ(listed[index].form, wanted.decoratedBytes ? "decorated" : "plain") << wanted.name;
        if (!wanted.decoratedBytes) continue;
        EXPECT_EQ(listed[index].bytes, wanted.decoratedBytes) << wanted.name;
    }
}

}
}
