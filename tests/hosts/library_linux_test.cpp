// The built library in hosts that link it, that link its archive, and that load it late; and the end of a load that
// fails. Each host runs in a process of its own.
#include <gtest/gtest.h>

#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <string>

namespace rux::test {
namespace {

struct Ending {
    int status;
    std::string told;
};

// Runs a program of this test's folder; what it tells includes standard error.
Ending run(const std::string& program)
{
    char self[4096];
    const ssize_t length = readlink("/proc/self/exe", self, sizeof self);
    const std::string path(self, length > 0 ? length : 0);
    const std::string folder = path.substr(0, path.rfind('/'));
    FILE* const output = popen(("cd '" + folder + "/../lib' && ../bin/" + program + " 2>&1").c_str(), "r");
    Ending ending{-1, ""};
    if (!output) return ending;
    char piece[256];
    while (fgets(piece, sizeof piece, output)) ending.told += piece;
    ending.status = pclose(output);
    return ending;
}

void expectLevel(const Ending& ending)
{
    __builtin_cpu_init();
    ASSERT_TRUE(WIFEXITED(ending.status));
    EXPECT_EQ(WEXITSTATUS(ending.status), 0);
    EXPECT_EQ(ending.told, __builtin_cpu_supports("sse2") ? "w7\n" : __builtin_cpu_supports("sse") ? "a6\n"
                           : __builtin_cpu_supports("mmx") ? "m6\n" : "px\n");
}

void expectFailedLoad(const Ending& ending)
{
    ASSERT_TRUE(WIFEXITED(ending.status));
    EXPECT_EQ(WEXITSTATUS(ending.status), 127);
    EXPECT_EQ(ending.told, "Set rux library error: No rux matching to CPU was found during the Waterfall\n");
}

TEST(Library, servesAHostThatLinksIt)
{
    expectLevel(run("level"));
}

TEST(Library, servesAHostThatLinksTheArchive)
{
    expectLevel(run("level_static"));
}

TEST(Library, servesAHostThatLoadsItLate)
{
    expectLevel(run("late_level ./" RUX_LIBRARY));
}

TEST(FailedLoad, endsAHostThatLinksTheLibrary)
{
    expectFailedLoad(run("level_gapped"));
}

TEST(FailedLoad, endsAHostThatLoadsTheLibraryLate)
{
    expectFailedLoad(run("late_level ./" RUX_GAPPED_LIBRARY));
}

}
}
