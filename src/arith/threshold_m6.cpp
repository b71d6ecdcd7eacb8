// Thresholds in MMX registers: integers, and by their bits the floats of one channel. Other floats go singly.
#include "lanes/eight_byte_elements_m6.h"

#include "arith/threshold_bits.h"
#include "arith/threshold_integers.h"
#include "arith/threshold_scalar.h"
#include "frame/mmx_state.h"

namespace rux::m6 {
namespace {

inline EightBytes twice(uint32_t bits)
{
    return {_mm_set1_pi32(static_cast<int32_t>(bits))};
}

// Unsigned order is signed order with the top bits turned.
inline EightBytes greaterUnsigned32(EightBytes a, EightBytes b)
{
    const EightBytes top = twice(0x80000000);
    return greater32(a ^ top, b ^ top);
}

template <Signs signs>
inline EightBytes isAbove(EightBytes x, EightBytes threshold)
{
    return signs == Signs::bothBelowZero ? greaterUnsigned32(threshold, x) : greater32(x, threshold);
}

template <Signs signs>
inline EightBytes isBelow(EightBytes x, EightBytes threshold)
{
    return signs == Signs::noneBelowZero ? greater32(threshold, x) : greaterUnsigned32(x, threshold);
}

class PutWhole {
public:
    static constexpr int lanes = 1;

    void put(uint8_t* dst, EightBytes value) const { value.store(dst); }
    void putPartial(uint8_t* dst, EightBytes value, size_t bytes) const { storePartial(value, dst, bytes); }
};

// With thresholds of -0.0 or NaN an element can be both: above is asked first.
template <Signs signs>
class BitsPattern : public PutWhole {
public:
    explicit BitsPattern(Band<float> band)
        : all{twice(band.thresholdLT), twice(band.valueLT), twice(band.thresholdGT), twice(band.valueGT)}
    {
    }

    EightBytes apply(EightBytes x, int) const
    {
        const EightBytes above = isAbove<signs>(x, all.thresholdGT);
        const EightBytes below = isBelow<signs>(x, all.thresholdLT);
        return (above & all.valueGT) | andNot(above, (below & all.valueLT) | andNot(below, x));
    }

private:
    BandLanes<EightBytes> all;
};

template <Signs signs>
class LowerBitsPattern : public PutWhole {
public:
    LowerBitsPattern(uint32_t threshold, uint32_t value) : threshold(twice(threshold)), value(twice(value)) {}

    EightBytes apply(EightBytes x, int) const
    {
        const EightBytes below = isBelow<signs>(x, threshold);
        return (below & value) | andNot(below, x);
    }

private:
    EightBytes threshold;
    EightBytes value;
};

// Not inlined: no MMX instruction may move up among the float comparisons of the thresholds.
template <typename Pattern, typename... Thresholds>
[[gnu::noinline]] void thresholdBits(const RowPairs& rows, Thresholds... thresholds)
{
    const MmxState state;
    thresholdRowsInLanes<EightBytes, sizeof(float)>(rows, Pattern(thresholds...));
}

template <typename Element, Layout layout>
void thresholdRows(const RowPairs& rows, const Band<Element>* bands)
{
    if constexpr (comparesBits<Element, layout>) {
        const Band<float> band = bands[0];
        chooseSigns(band.thresholdLT, band.thresholdGT, [&](auto signs) {
            thresholdBits<BitsPattern<decltype(signs)::value>>(rows, band);
        });
    } else if constexpr (sizeof(Element) == sizeof(float)) {
        thresholdElements<Element, layout>(rows, bands);
    } else {
        const MmxState state;
        thresholdIntegers<EightBytes, Element, layout>(rows, bands);
    }
}

void thresholdRowsBelow(const RowPairs& rows, uint32_t threshold, uint32_t value)
{
    chooseSign(threshold, [&](auto signs) {
        thresholdBits<LowerBitsPattern<decltype(signs)::value>>(rows, threshold, value);
    });
}

}
}
