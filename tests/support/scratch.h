// Work memory that the caller provides and whose contents mean nothing, before and after: so many bytes at a place
// between faulting pages. Operation and model need not leave the same in it; what surrounds it must stay.
#pragma once

#include "support/operand.h"

namespace rux::test {

class Scratch {
public:
    Scratch(int bytes, Place place, uint64_t seed) : memory(vectorOf(bytes).at(place), seed), before(memory.clone()) {}

    uint8_t* data() const { return memory.data(); }
    std::string describe() const { return memory.describe(); }

    testing::AssertionResult surroundingsStay() const
    {
        const uint8_t* const end = memory.data() + memory.rowBytes();
        const auto isKept = [&](const uint8_t* from, const uint8_t* to) {
            const ptrdiff_t offset = from - memory.memoryBegin();
            return std::memcmp(from, before.memoryBegin() + offset, static_cast<size_t>(to - from)) == 0;
        };
        if (!isKept(memory.memoryBegin(), memory.data())) {
            return testing::AssertionFailure() << "written before the work memory " << describe();
        }
        if (!isKept(end, memory.memoryEnd())) {
            return testing::AssertionFailure() << "written behind the work memory " << describe();
        }
        return testing::AssertionSuccess();
    }

private:
    Image<uint8_t> memory, before;
};

// Wrong is null.
template <>
class Operand<Scratch> {
public:
    Operand(const Scratch& scratch, Clones&) : scratch(scratch) {}

    int choices() const { return 2; }
    void choose(int number) { null = number == 1; }
    uint8_t* forOperation() const { return null ? nullptr : scratch.data(); }
    uint8_t* forModel() const { return forOperation(); }
    testing::AssertionResult matches() const { return scratch.surroundingsStay(); }
    void digest(Digest&) const {}
    void digestAll(Digest&) const {}
    std::string describe() const { return null ? "null" : "work memory " + scratch.describe(); }

private:
    const Scratch& scratch;
    bool null = false;
};

}
