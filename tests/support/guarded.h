// Memory between two pages that fault.
#pragma once

#include <cstddef>
#include <cstdint>

namespace rux::test {

enum class Edge { start, end };

// Where a buffer stands between its faulting pages. At the end edge with `touching` its last byte is the last before
// the faulting page, at the start edge its first byte is the first behind one. With an offset from 0 to 63 its first
// byte has that address modulo 64, as near to the edge as that allows.
struct Place {
    static constexpr int touching = -1;
    Edge edge = Edge::end;
    int offset = touching;
};

class Guarded {
public:
    Guarded(size_t bytes, Place);
    ~Guarded();
    Guarded(Guarded&&) noexcept;
    Guarded& operator=(Guarded&&) = delete;

    uint8_t* data() const { return first; }          // the buffer's first byte
    uint8_t* begin() const { return pages; }         // all that can be touched, with the slack around the buffer
    uint8_t* end() const { return pages + size; }

private:
    uint8_t* pages;
    size_t size;
    uint8_t* first;
};

}
