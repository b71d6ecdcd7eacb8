// Measures of a block in MMX.
#include "lanes/samples_m6.h"

#include "video/half_pel_pairs_words.h"
#include "video/metrics_mmx.h"

namespace rux::m6 {
namespace {

// Words of two bytes are added as they are, and their upper bytes alone; both sums may wrap, for the lower bytes' sum,
// at most 64 of 255, is the first less 256 times the second in 16 bits.
class SampleSum {
public:
    void add(Samples s)
    {
        both = _mm_add_pi16(both, s.value);
        upper = _mm_add_pi16(upper, _mm_srli_pi16(s.value, 8));
    }
    int32_t total() const
    {
        const __m64 lower = _mm_sub_pi16(both, _mm_slli_pi16(upper, 8));
        const __m64 ones = _mm_set1_pi16(1);
        return static_cast<int32_t>(
            sumOfDoubleWords(_mm_add_pi32(_mm_madd_pi16(lower, ones), _mm_madd_pi16(upper, ones))));
    }

private:
    __m64 both = _mm_setzero_si64();
    __m64 upper = _mm_setzero_si64();
};

class AbsoluteSum {
public:
    void add(Samples p, Samples s) { differences.add(absoluteDifference(p, s)); }
    int32_t total() const { return differences.total(); }

private:
    SampleSum differences;
};

}
}

#include "video/metrics_vector.h"

namespace rux::m6 {
namespace {

inline ruxStatus absoluteDifferences(int mode, Reference src, Reference reference, ptrdiff_t below, int32_t* result)
{
    return kernels<AbsoluteSum>[mode](src, reference, below, result);
}

}
}
