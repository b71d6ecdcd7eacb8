#include "support/argument_words.h"

namespace rux::test {
namespace {

// The low bytes of value under a word of garbage.
template <class Word>
Word over(uint64_t garbage, const void* value, size_t bytes)
{
    Word word = static_cast<Word>(garbage);
    std::memcpy(&word, value, bytes);
    return word;
}

}

#ifdef __x86_64__

ArgumentWords::ArgumentWords(uint64_t garbage) : garbage(garbage)
{
    for (auto& word : integer) word = garbage;
    for (auto& word : vector) word = garbage;
}

// Compilers extend narrow arguments to 32 bits, and some rely on it; what lies above is anything.
void ArgumentWords::addInteger(uintptr_t value, size_t, size_t extendedBytes)
{
    const auto word = over<uintptr_t>(garbage, &value, extendedBytes);
    if (integers < 6) integer[integers++] = word;
    else stack.push_back(word);
}

void ArgumentWords::addFloating(const void* value, size_t bytes)
{
    const auto word = over<uint64_t>(garbage, value, bytes);
    if (vectors < 8) vector[vectors++] = word;
    else stack.push_back(word);
}

// A record goes into registers whole or onto the stack whole.
void ArgumentWords::addRecord(const void* value, size_t bytes)
{
    uintptr_t words[2];
    std::memcpy(words, value, bytes);
    const int count = static_cast<int>(bytes / sizeof *words);
    for (int i = 0, inRegisters = integers + count <= 6; i < count; i++) {
        if (inRegisters) integer[integers++] = words[i];
        else stack.push_back(words[i]);
    }
}

#else

ArgumentWords::ArgumentWords(uint64_t garbage) : garbage(garbage) {}

// Hosts of the Windows build push narrow arguments without extending them.
void ArgumentWords::addInteger(uintptr_t value, size_t bytes, size_t extendedBytes)
{
#ifdef _WIN32
    extendedBytes = bytes;
#else
    static_cast<void>(bytes);
#endif
    stack.push_back(over<uintptr_t>(garbage, &value, extendedBytes));
}

void ArgumentWords::addFloating(const void* value, size_t bytes)
{
    addRecord(value, bytes);
}

void ArgumentWords::addRecord(const void* value, size_t bytes)
{
    uintptr_t words[4];
    std::memcpy(words, value, bytes);
    stack.insert(stack.end(), words, words + bytes / sizeof *words);
}

#endif

}
