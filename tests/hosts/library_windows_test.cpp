// The built DLL as a host sees it: its export table, calls through it, and a load that is refused.
#include <gtest/gtest.h>

#include <windows.h>

#include <cstdio>
#include <cstring>
#include <map>
#include <string>
#include <thread>
#include <vector>

#include "ruxlib.h"

namespace rux::test {
namespace {

const std::vector<std::string> contractSpellings = {   // ordinal 1 comes first
#define EXPORT(name, bytes) (bytes) ? "_" #name "@" + std::to_string(bytes) : std::string(#name),
#include "model/exports.def"
#undef EXPORT
};

// The ordinals of the operations that the library has.
std::vector<int> ordinalsToExport()
{
    std::vector<int> ordinals;
    int ordinal = 0;
#define OPERATION(name, bytes, form) ordinals.push_back(++ordinal);
#include "frame/operations.def"
#undef OPERATION
    return ordinals;
}

class Library : public testing::Test {
protected:
    void SetUp() override
    {
        module = LoadLibraryA(RUX_LIBRARY);
        ASSERT_NE(module, nullptr) << GetLastError();
    }
    void TearDown() override { FreeLibrary(module); }

    template <typename Type>
    Type at(DWORD offset) const
    {
        return reinterpret_cast<Type>(reinterpret_cast<char*>(module) + offset);
    }

    const IMAGE_EXPORT_DIRECTORY& exports() const
    {
        const auto* dos = at<const IMAGE_DOS_HEADER*>(0);
        const auto* headers = at<const IMAGE_NT_HEADERS*>(dos->e_lfanew);
        return *at<const IMAGE_EXPORT_DIRECTORY*>(
            headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_EXPORT].VirtualAddress);
    }

    FARPROC find(const char* spelling) const
    {
        const FARPROC found = GetProcAddress(module, spelling);
        EXPECT_NE(found, nullptr) << spelling;
        return found;
    }

    template <typename Function>
    Function call(const char* spelling) const
    {
        return reinterpret_cast<Function>(reinterpret_cast<void*>(find(spelling)));
    }

    std::string level() const
    {
        return call<decltype(&ruxiGetLibVersion)>("ruxiGetLibVersion")()->targetName;
    }

    HMODULE module = nullptr;
};

TEST_F(Library, exportsTheOperationsByNameAndOrdinal)
{
    const IMAGE_EXPORT_DIRECTORY& table = exports();
    EXPECT_STREQ(at<const char*>(table.Name), "ruxlib.dll");
    std::map<int, std::string> found;
    const auto* names = at<const DWORD*>(table.AddressOfNames);
    const auto* ordinals = at<const WORD*>(table.AddressOfNameOrdinals);
    for (DWORD index = 0; index < table.NumberOfNames; ++index)
        found[static_cast<int>(table.Base + ordinals[index])] = at<const char*>(names[index]);

    std::map<int, std::string> wanted;
    for (const int ordinal : ordinalsToExport()) wanted[ordinal] = contractSpellings[ordinal - 1];
    EXPECT_EQ(found, wanted);
    for (const auto& [ordinal, spelling] : wanted) {
        const FARPROC byOrdinal = GetProcAddress(module, MAKEINTRESOURCEA(ordinal));
        EXPECT_EQ(byOrdinal, find(spelling.c_str())) << spelling;
    }
}

TEST_F(Library, leadsEachNameThroughOneJump)
{
    const auto* functions = at<const DWORD*>(exports().AddressOfFunctions);
    std::map<const void*, int> slots;
    for (const int ordinal : ordinalsToExport()) {
        const auto* code = at<const unsigned char*>(functions[ordinal - exports().Base]);
        EXPECT_EQ(code[0], 0xFF) << ordinal;   // jmp *slot
        EXPECT_EQ(code[1], 0x25) << ordinal;
        void* const* slot;
        std::memcpy(&slot, code + 2, sizeof slot);
        EXPECT_NE(*slot, nullptr) << ordinal;
        EXPECT_EQ(slots[slot]++, 0) << ordinal << " shares its slot";
    }
}

TEST_F(Library, servesCallsOfBothSpellings)
{
    EXPECT_STREQ(call<decltype(&ruxGetStatusString)>("ruxGetStatusString")(0), "No error, it's OK");
    const auto allocate = call<decltype(&ruxsMalloc_32f)>("ruxsMalloc_32f");
    const auto release = call<decltype(&ruxsFree)>("ruxsFree");
    const auto add = call<decltype(&ruxiAdd_32f_C1IR)>("_ruxiAdd_32f_C1IR@24");
    float* const sums = allocate(6);
    ASSERT_NE(sums, nullptr);
    const float addends[6] = {1, 2, 3, 4, 5, 6};
    for (int index = 0; index < 6; ++index) sums[index] = 10;
    EXPECT_EQ(add(addends, 12, sums, 12, ruxiSize{3, 2}), 0);
    for (int index = 0; index < 6; ++index) EXPECT_EQ(sums[index], 11 + index);
    release(sums);
}

TEST_F(Library, bindsTheProcessorsLevel)
{
    __builtin_cpu_init();
    const char* const expected = __builtin_cpu_supports("sse2") ? "w7" : __builtin_cpu_supports("sse") ? "a6"
                                 : __builtin_cpu_supports("mmx") ? "m6" : "px";
    EXPECT_EQ(level(), expected);
}

TEST_F(Library, staysAsItIsWhenThreadsComeAndGo)
{
    const auto* functions = at<const DWORD*>(exports().AddressOfFunctions);
    const auto bodies = [&] {
        std::vector<void*> found;
        for (const int ordinal : ordinalsToExport()) {
            void** slot;
            std::memcpy(&slot, at<const char*>(functions[ordinal - exports().Base]) + 2, sizeof slot);
            found.push_back(*slot);
        }
        return found;
    };
    const std::vector<void*> before = bodies();
    for (int turn = 0; turn < 4; ++turn) {
        std::thread thread([&] { EXPECT_EQ(bodies(), before); });
        thread.join();
    }
    EXPECT_EQ(bodies(), before);
}

TEST(GappedLibrary, isRefusedWithBeepThenBox)
{
    char folder[MAX_PATH], path[MAX_PATH];
    ASSERT_NE(GetTempPathA(sizeof folder, folder), 0u);
    ASSERT_NE(GetTempFileNameA(folder, "rux", 0, path), 0u);
    SetEnvironmentVariableA("RUX_TEST_REPORT", path);

    EXPECT_EQ(LoadLibraryA(RUX_GAPPED_LIBRARY), nullptr);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_DLL_INIT_FAILED));

    std::string told;
    FILE* const report = std::fopen(path, "rb");
    ASSERT_NE(report, nullptr);
    for (int letter; (letter = std::fgetc(report)) != EOF;) told += static_cast<char>(letter);
    std::fclose(report);
    DeleteFileA(path);
    EXPECT_EQ(told, "beep 16\nbox 16|Set rux library error| No rux matching to CPU was found during the Waterfall\n");
}

}
}
