// The words in which a call's arguments travel, by the platform's convention: x86-64 SysV, or i386 (cdecl and stdcall
// alike). Every bit without a meaning holds garbage: upper halves of 64-bit words, unused registers.
#pragma once

#include <cstdint>
#include <cstring>
#include <type_traits>
#include <vector>

namespace rux::test {

// A float argument given by its bits: no floating-point register sees it, so a signalling NaN arrives as it is.
struct FloatBits {
    uint32_t bits;
};

class ArgumentWords {
public:
    explicit ArgumentWords(uint64_t garbage);

    // Adds the argument of a parameter of type Parameter.
    template <class Parameter, class Argument>
    void add(const Argument& argument)
    {
        using P = std::decay_t<Parameter>;
        if constexpr (std::is_same_v<Argument, FloatBits>) {
            static_assert(std::is_same_v<P, float>, "FloatBits stands for a float");
            addFloating(&argument.bits, sizeof argument.bits);
        } else if constexpr (std::is_floating_point_v<P>) {
            const P value = static_cast<P>(argument);
            addFloating(&value, sizeof value);
        } else if constexpr (std::is_pointer_v<P>) {
            const P value = argument;
            addInteger(reinterpret_cast<uintptr_t>(value), sizeof value, sizeof value);
        } else if constexpr (std::is_integral_v<P> || std::is_enum_v<P>) {
            static_assert(sizeof(P) <= sizeof(int32_t));
            addInteger(static_cast<uintptr_t>(static_cast<int32_t>(static_cast<P>(argument))), sizeof(P),
                       sizeof(int32_t));
        } else {
            static_assert(sizeof(P) == 8 || sizeof(P) == 16, "records of 8 or 16 bytes of integers");
            const P value = argument;
            addRecord(&value, sizeof value);
        }
    }

    std::vector<uintptr_t> stack;   // from the first argument upwards
#ifdef __x86_64__
    uintptr_t integer[6];
    uint64_t vector[8];
#endif

private:
    void addInteger(uintptr_t value, size_t bytes, size_t extendedBytes);
    void addFloating(const void* value, size_t bytes);
    void addRecord(const void* value, size_t bytes);

    uint64_t garbage;
#ifdef __x86_64__
    int integers = 0;
    int vectors = 0;
#endif
};

}
