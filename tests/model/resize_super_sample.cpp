// The mean over the box of source pixels that a pixel covers: rows are summed into an accumulator, then its columns.
#include <algorithm>
#include <cmath>

#include "model/resize_kernels.h"

namespace rux::model {
namespace {

// The scale of an axis: source pixels for each pixel produced.
struct Scale {
    explicit Scale(double factor) : scale(1.0 / factor), whole(truncated(std::floor(scale))) {}

    bool hasFraction() const { return scale - truncated(scale) != 0.0; }

    double scale;
    int32_t whole;
};

// What a box takes after the weighted rest of the element on which the last box ended.
struct Share {
    Share(double scale, double lastCarry)
        : top(1.0 - lastCarry), remaining(scale - top), whole(std::floor(1e-07 + remaining)), carry(remaining - whole)
    {
    }

    double top, remaining, whole, carry;
};

uint8_t lowByte(double value)
{
    return static_cast<uint8_t>(static_cast<int64_t>(value));
}

// A row of sums, in place: past its end there are zeros, and no box past the last is stored.
template <class T>
class Accumulator {
public:
    Accumulator(int32_t length, int32_t boxes) : elements(length), boxes(boxes) {}

    int32_t length() const { return static_cast<int32_t>(elements.size()); }
    T& operator[](int32_t i) { return elements[i]; }
    T get(int64_t i) const { return i < length() ? elements[i] : T(0); }
    bool isFull() const { return stored == boxes; }
    void push(T box) { elements[stored++] = box; }

private:
    std::vector<T> elements;
    int32_t boxes;
    int32_t stored = 0;
};

// The sum over a box's columns. Levels differ in its precision and its order.
class HorizontalSum {
public:
    HorizontalSum(Level level, const Accumulator<float>& elements)
        : single(level == a6 || level == w7), elements(elements)
    {
    }

    void addWeighted(int64_t position, double weight) { add(elements.get(position) * weight); }

    // `count` elements from `position` on; four lanes where there are enough of them behind a 16-byte boundary.
    void addRun(int64_t position, int64_t count)
    {
        const int64_t head = (4 - position % 4) % 4;
        if (!single || count - head < 8) return addSingly(position, count);
        addSingly(position, head);
        position += head, count -= head;
        float lanes[4] = {static_cast<float>(sum), 0, 0, 0};
        for (; count >= 8; position += 8, count -= 8) {
            for (int lane = 0; lane < 4; lane++) lanes[lane] += elements.get(position + lane);
            for (int lane = 0; lane < 4; lane++) lanes[lane] += elements.get(position + 4 + lane);
        }
        const float even = lanes[0] + lanes[2], odd = lanes[1] + lanes[3];
        sum = even + odd;
        addSingly(position, count);
    }

    float value() const { return static_cast<float>(sum); }

private:
    void addSingly(int64_t position, int64_t count)
    {
        for (int64_t i = 0; i < count; i++) add(elements.get(position + i));
    }

    void add(double value) { sum = single ? static_cast<float>(sum + value) : sum + value; }

    bool single;   // rounded to 32 bits after every addition, not only at the end
    const Accumulator<float>& elements;
    double sum = 0;
};

template <class T>
void write(const Scaling& s, int row, Accumulator<T>& accumulator, double norm)
{
    for (int j = 0; j < s.dstSize.width; j++) {
        *at(s.dst, s.dstStep, j, row) = lowByte(accumulator[j] * norm + 0.5);
    }
}

void sampleWhole(const Scaling& s, const Scale& x, const Scale& y, int32_t length, double norm)
{
    int row = 0;
    for (int i = 0; i < s.dstSize.height; i++) {
        Accumulator<uint32_t> accumulator(length, s.dstSize.width);
        for (int32_t k = 0; k < y.whole; k++, row++) {
            for (int32_t j = 0; j < length; j++) accumulator[j] += *at(s.origin, s.srcStep, j, row);
        }
        for (int64_t position = 0; position < length && !accumulator.isFull(); position += x.whole) {
            uint32_t sum = 0;
            for (int32_t k = 0; k < x.whole; k++) sum += accumulator.get(position + k);
            accumulator.push(sum);
        }
        write(s, i, accumulator, norm);
    }
}

void addRow(Accumulator<float>& accumulator, const uint8_t* row)
{
    for (int32_t j = 0; j < accumulator.length(); j++) accumulator[j] = static_cast<float>(double(row[j]) + accumulator[j]);
}

void addWeightedRow(Level level, Accumulator<float>& accumulator, const uint8_t* row, double weight)
{
    const int32_t length = accumulator.length();
    for (int32_t j = 0; j < length; j++) {
        if (level == w7 && j < length / 8 * 8) {
            const float product = static_cast<float>(row[j]) * static_cast<float>(weight);
            accumulator[j] += product;
        } else {
            accumulator[j] = static_cast<float>(row[j] * weight + accumulator[j]);
        }
    }
}

// The cursor over the rows, and what is left for the next row of boxes.
class Rows {
public:
    Rows(const Scaling& s, const Scale& y) : s(s), y(y), carry(y.scale - y.whole) {}

    void gather(Accumulator<float>& accumulator, bool first)
    {
        if (!y.hasFraction()) return addWhole(accumulator, y.whole);
        if (first) {
            addWhole(accumulator, y.whole);
            if (carry != 0.0) addWeighted(accumulator, carry);
            return;
        }
        const Share share(y.scale, carry);
        carry = share.carry;
        if (share.top > 1e-07) {
            addWeighted(accumulator, share.top);
            cursor++;
        }
        addWhole(accumulator, share.whole);
        if (carry > 1e-07) addWeighted(accumulator, carry);
    }

private:
    const uint8_t* row() const { return at(s.origin, s.srcStep, 0, cursor); }
    void addWeighted(Accumulator<float>& to, double weight) { addWeightedRow(s.level, to, row(), weight); }
    void addWhole(Accumulator<float>& to, double count)
    {
        for (int32_t k = 0; k < count; k++, cursor++) addRow(to, row());
    }

    const Scaling& s;
    const Scale& y;
    double carry;
    int cursor = 0;
};

void gatherWholeColumns(Level level, Accumulator<float>& accumulator, const Scale& x)
{
    for (int64_t position = 0; position < accumulator.length() && !accumulator.isFull(); position += x.whole) {
        HorizontalSum sum(level, accumulator);
        sum.addRun(position, x.whole);
        accumulator.push(sum.value());
    }
}

void gatherColumns(Level level, Accumulator<float>& accumulator, const Scale& x)
{
    double carry = x.scale - x.whole;
    HorizontalSum first(level, accumulator);
    first.addRun(0, x.whole);
    if (carry != 0.0) first.addWeighted(x.whole, carry);
    accumulator.push(first.value());
    const int64_t limit = int64_t(accumulator.length()) - x.whole;
    int64_t position = x.whole;
    while (position < limit && !accumulator.isFull()) {
        const Share share(x.scale, carry);
        carry = share.carry;
        const int64_t whole = static_cast<int64_t>(share.whole);
        HorizontalSum sum(level, accumulator);
        int64_t k = 0;
        if (share.top > 1e-07) sum.addWeighted(position, share.top), k = 1;
        sum.addRun(position + k, whole + 1 - k);   // one element more where the weighted one is missing
        k = whole + 1;
        if (carry > 1e-07) sum.addWeighted(position + k, carry);
        accumulator.push(sum.value());
        position += k;
    }
}

}

void resizeSuperSample(const Scaling& s, double xFactor, double yFactor)
{
    const Scale x(xFactor), y(yFactor);
    const double norm = xFactor * yFactor;
    const int32_t length = std::min(truncated(x.scale * (s.dstSize.width + 1)) + 1, s.rectangle.width);
    if (!x.hasFraction() && !y.hasFraction()) return sampleWhole(s, x, y, length, norm);
    Rows rows(s, y);
    for (int i = 0; i < s.dstSize.height; i++) {
        Accumulator<float> accumulator(length, s.dstSize.width);
        rows.gather(accumulator, i == 0);
        if (x.hasFraction()) gatherColumns(s.level, accumulator, x);
        else gatherWholeColumns(s.level, accumulator, x);
        write(s, i, accumulator, norm);
    }
}

}
