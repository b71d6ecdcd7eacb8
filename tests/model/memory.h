// Memory as the models see it: elements at any address, rows at any stride. Elements that are only moved are moved as
// unsigned integers, never as floats: a signalling NaN would not survive every compiler's float registers.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <type_traits>

#include "ruxlib/status.h"
#include "ruxlib/types.h"
#include "support/level.h"

namespace rux::model {

using test::Level;
using test::a6;
using test::m6;
using test::px;
using test::w7;

template <class T>
T load(const void* from)
{
    T value;
    std::memcpy(&value, from, sizeof value);
    return value;
}

template <class T>
void store(void* to, const T& value)
{
    std::memcpy(to, &value, sizeof value);
}

// The address so many bytes on.
template <class T>
T* advance(T* pointer, ptrdiff_t bytes)
{
    using Byte = std::conditional_t<std::is_const_v<T>, const uint8_t, uint8_t>;
    return reinterpret_cast<T*>(reinterpret_cast<Byte*>(pointer) + bytes);
}

// The address of an element, x counting elements of type T.
template <class T>
T* at(T* image, int32_t step, int x, int y)
{
    return advance(image, static_cast<ptrdiff_t>(y) * step + x * static_cast<ptrdiff_t>(sizeof(T)));
}

}
