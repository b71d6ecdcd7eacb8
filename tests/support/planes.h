// Three planes, handed to an operation as an array of three pointers and, as a rule, an array of three strides.
#pragma once

#include <array>

#include "support/image.h"

namespace rux::test {

// The array of strides as an argument.
struct Steps {
    std::array<int32_t, 3> bytes;
};

template <class T>
class Planes {
public:
    Planes(Image<T>&& first, Image<T>&& second, Image<T>&& third)
        : planes{std::move(first), std::move(second), std::move(third)},
          pointers{planes[0].data(), planes[1].data(), planes[2].data()}
    {
    }

    Image<T>& operator[](size_t i) { return planes[i]; }
    const Image<T>& operator[](size_t i) const { return planes[i]; }

    // The argument: an array that an operation only reads.
    T** data() const { return const_cast<T**>(pointers.data()); }
    Steps steps() const { return {{planes[0].step(), planes[1].step(), planes[2].step()}}; }

private:
    std::array<Image<T>, 3> planes;
    std::array<T*, 3> pointers;
};

}
