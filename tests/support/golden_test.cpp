// Stored digests: a missing line and another digest fail, an update writes.
#include <gtest/gtest-spi.h>

#include <cstdio>
#include <cstdlib>

#include "support/digest.h"

namespace rux::test {
namespace {

// Sets a variable of the environment for the length of a test; null removes it.
class Variable {
public:
    Variable(const char* name, const char* value) : name(name)
    {
        if (const char* before = std::getenv(name)) kept = before, stood = true;
        set(value);
    }
    ~Variable() { set(stood ? kept.c_str() : nullptr); }

    void set(const char* value) const
    {
#ifdef _WIN32
        _putenv((name + "=" + (value ? value : "")).c_str());
#else
        if (value) setenv(name.c_str(), value, 1);
        else unsetenv(name.c_str());
#endif
    }

private:
    std::string name, kept;
    bool stood = false;
};

Digest digestOf(const std::string& bytes)
{
    Digest digest;
    digest.add(bytes.data(), bytes.size());
    return digest;
}

TEST(Golden, comparesWithTheStoredLine)
{
    std::string directory = testing::TempDir();
    while (directory.size() > 1 && (directory.back() == '/' || directory.back() == '\\')) directory.pop_back();
    const std::string file = directory + "/rux_golden_test.txt";
    std::remove(file.c_str());
    const Variable place("GOLDEN_DIRECTORY", directory.c_str()), update("UPDATE_GOLDEN", nullptr);

    EXPECT_NONFATAL_FAILURE(expectGolden("rux_golden_test", "move", w7, digestOf("a")), "has no line for move w7");
    update.set("1");
    expectGolden("rux_golden_test", "move", w7, digestOf("a"));
    expectGolden("rux_golden_test", "move", px, digestOf("b"));
    update.set(nullptr);
    expectGolden("rux_golden_test", "move", w7, digestOf("a"));
    expectGolden("rux_golden_test", "move", px, digestOf("b"));
    EXPECT_NONFATAL_FAILURE(expectGolden("rux_golden_test", "move", w7, digestOf("b")), "is the digest of move w7");
    EXPECT_NONFATAL_FAILURE(expectGolden("rux_golden_test", "move", a6, digestOf("a")), "has no line for move a6");
    std::remove(file.c_str());
}

TEST(Digest, feelsEveryByteAndTheLength)
{
    const std::string bytes = "0123456789abcdefghi";
    for (size_t i = 0; i < bytes.size(); i++) {
        std::string other = bytes;
        other[i] ^= 1;
        EXPECT_NE(digestOf(other).value(), digestOf(bytes).value()) << i;
    }
    EXPECT_NE(digestOf(bytes + '\0').value(), digestOf(bytes).value());
    EXPECT_EQ(digestOf(bytes).value(), 0x58B91958BCC1FB37u);
}

}
}
