// The arguments of a comparison of an operation with its model.
//
// An argument is given once. What stands in memory (images, planes) is cloned: the operation gets the one, the model
// the other, and afterwards all their bytes are compared. For the tests of wrong arguments each kind of argument knows
// its wrong values; choice 0 is the right one.
#pragma once

#include <climits>
#include <map>
#include <memory>
#include <sstream>

#include "support/argument_words.h"
#include "support/digest.h"
#include "support/image.h"
#include "support/planes.h"

namespace rux::test {

// A value with its wrong values: wrongly(5, {0, 13, -1}).
template <class T>
struct Wrongly {
    std::vector<T> values;
};

template <class T>
Wrongly<T> wrongly(T right, std::vector<T> wrong)
{
    wrong.insert(wrong.begin(), right);
    return {wrong};
}

// A pointer to another element of an image than its first.
template <class T>
struct Element {
    const Image<T>* image;
    int x, y;
};

template <class T>
Element<T> elementOf(const Image<T>& image, int x, int y = 0)
{
    return {&image, x, y};
}

// The clones of one comparison; an image that is given twice is cloned once.
class Clones {
public:
    template <class T>
    const Image<T>& of(const Image<T>& image)
    {
        auto& clone = clones[&image];
        if (!clone) clone = std::make_shared<Image<T>>(image.clone());
        return *static_cast<Image<T>*>(clone.get());
    }

private:
    std::map<const void*, std::shared_ptr<void>> clones;
};

template <class T>
std::string toText(const T& value)
{
    std::ostringstream text;
    if constexpr (std::is_enum_v<T>) text << static_cast<int>(value);
    else text << +value;
    return text.str();
}
inline std::string toText(const Step& step) { return std::to_string(step.bytes); }
inline std::string toText(const ruxiSize& size)
{
    return std::to_string(size.width) + "x" + std::to_string(size.height);
}
inline std::string toText(const ruxiPoint& point)
{
    return "(" + std::to_string(point.x) + ", " + std::to_string(point.y) + ")";
}
inline std::string toText(const ruxiRect& rect)
{
    return toText(ruxiPoint{rect.x, rect.y}) + " " + toText(ruxiSize{rect.width, rect.height});
}
inline std::string toText(const FloatBits& value)
{
    std::ostringstream text;
    text << "float 0x" << std::hex << value.bits;
    return text.str();
}

template <class T>
std::vector<T> choicesOf(const T& value)
{
    return {value};
}
template <class T>
std::vector<T> choicesOf(const Wrongly<T>& value)
{
    return value.values;
}
inline std::vector<Step> choicesOf(const Step& step)
{
    return {step, {0}, {-1}, {INT_MIN}};
}
inline std::vector<ruxiSize> choicesOf(const ruxiSize& good)
{
    return {good, {0, good.height}, {good.width, 0}, {-1, good.height}, {good.width, -1}, {0, 0}, {INT_MIN, INT_MIN}};
}

// A plain value: the same for both.
template <class A>
class Operand {
public:
    Operand(const A& value, Clones&) : values(choicesOf(value)) {}

    int choices() const { return static_cast<int>(values.size()); }
    void choose(int number) { chosen = static_cast<size_t>(number); }
    const auto& forOperation() const { return values[chosen]; }
    const auto& forModel() const { return values[chosen]; }
    testing::AssertionResult matches() const { return testing::AssertionSuccess(); }
    void digest(Digest&) const {}
    void digestAll(Digest&) const {}
    std::string describe() const { return toText(values[chosen]); }

private:
    using Value = typename decltype(choicesOf(std::declval<A>()))::value_type;
    std::vector<Value> values;
    size_t chosen = 0;
};

// A pointer into an image; wrong is null.
template <class T>
class Operand<Element<T>> {
public:
    Operand(const Element<T>& element, Clones& clones)
        : image(*element.image), clone(clones.of(image)),
          offset(element.y * static_cast<ptrdiff_t>(image.step()) + element.x * static_cast<ptrdiff_t>(sizeof(T)))
    {
    }

    int choices() const { return 2; }
    void choose(int number) { null = number == 1; }
    T* forOperation() const { return pointer(image); }
    T* forModel() const { return pointer(clone); }
    testing::AssertionResult matches() const { return image.equals(clone); }
    void digest(Digest& digest) const { digest.addRegion(image); }
    void digestAll(Digest& digest) const { digest.addMemory(image); }
    std::string describe() const { return null ? "null" : image.describe(); }

private:
    T* pointer(const Image<T>& of) const { return null ? nullptr : reinterpret_cast<T*>(of.row(0) + offset); }

    const Image<T>& image;
    const Image<T>& clone;
    ptrdiff_t offset;
    bool null = false;
};

template <class T>
class Operand<Image<T>> : public Operand<Element<T>> {
public:
    Operand(const Image<T>& image, Clones& clones) : Operand<Element<T>>({&image, 0, 0}, clones) {}
};

// The array of plane pointers, however constant the operation declares it.
template <class T>
struct PlaneArray {
    T** first;
    operator T**() const { return first; }
    operator T* const*() const { return first; }
    operator const T**() const { return const_cast<const T**>(first); }
    operator const T* const*() const { return first; }
};

// An array of three plane pointers; wrong is a null array, or a null plane in it.
template <class T>
class Operand<Planes<T>> {
public:
    Operand(const Planes<T>& given, Clones& clones) : planes(given)
    {
        for (size_t i = 0; i < 3; i++) cloned[i] = &clones.of(planes[i]);
        choose(0);
    }

    int choices() const { return 5; }
    void choose(int number)
    {
        chosen = number;
        for (size_t i = 0; i < 3; i++) {
            const bool null = number == static_cast<int>(i) + 2;
            pointers[0][i] = null ? nullptr : planes[i].data();
            pointers[1][i] = null ? nullptr : cloned[i]->data();
        }
        kept = pointers[0];
    }
    PlaneArray<T> forOperation() { return {chosen == 1 ? nullptr : pointers[0].data()}; }
    PlaneArray<T> forModel() { return {chosen == 1 ? nullptr : pointers[1].data()}; }
    testing::AssertionResult matches() const
    {
        if (pointers[0] != kept) return testing::AssertionFailure() << "the array of plane pointers was written";
        for (size_t i = 0; i < 3; i++) {
            if (auto same = planes[i].equals(*cloned[i]); !same) return same << "\n    plane " << i;
        }
        return testing::AssertionSuccess();
    }
    void digest(Digest& digest) const
    {
        for (size_t i = 0; i < 3; i++) digest.addRegion(planes[i]);
    }
    void digestAll(Digest& digest) const
    {
        for (size_t i = 0; i < 3; i++) digest.addMemory(planes[i]);
    }
    std::string describe() const
    {
        if (chosen == 1) return "null";
        std::string text;
        for (size_t i = 0; i < 3; i++) text += "\n      " + (pointers[0][i] ? planes[i].describe() : "null");
        return text;
    }

private:
    const Planes<T>& planes;
    std::array<const Image<T>*, 3> cloned;
    std::array<T*, 3> pointers[2], kept;
    int chosen = 0;
};

// An array of three strides; wrong is a null array, or one of them 0 or -1.
template <>
class Operand<Steps> {
public:
    Operand(const Steps& steps, Clones&) : good(steps.bytes) { choose(0); }

    int choices() const { return 8; }
    void choose(int number)
    {
        chosen = number;
        steps = good;
        if (number >= 2) steps[static_cast<size_t>(number - 2) / 2] = -(number & 1);
        kept = steps;
    }
    int32_t* forOperation() { return chosen == 1 ? nullptr : steps.data(); }
    int32_t* forModel() { return forOperation(); }
    testing::AssertionResult matches() const
    {
        if (steps == kept) return testing::AssertionSuccess();
        return testing::AssertionFailure() << "the array of strides was written";
    }
    void digest(Digest&) const {}
    void digestAll(Digest&) const {}
    std::string describe() const
    {
        if (chosen == 1) return "null";
        return std::to_string(steps[0]) + ", " + std::to_string(steps[1]) + ", " + std::to_string(steps[2]);
    }

private:
    std::array<int32_t, 3> good, steps, kept;
    int chosen = 0;
};

}
