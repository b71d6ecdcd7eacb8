// Measures of a block in MMX with the sum of absolute differences and the byte average of SSE.
#include "lanes/samples_a6.h"

#include "video/half_pel_pairs_bytes.h"
#include "video/metrics_mmx.h"

namespace rux::a6 {
namespace {

class AbsoluteSum {
public:
    void add(Samples p, Samples s) { sum = _mm_add_pi32(sum, _mm_sad_pu8(p.value, s.value)); }
    int32_t total() const { return _mm_cvtsi64_si32(sum); }

private:
    __m64 sum = _mm_setzero_si64();
};

class SampleSum {
public:
    void add(Samples s) { differences.add(s, {_mm_setzero_si64()}); }
    int32_t total() const { return differences.total(); }

private:
    AbsoluteSum differences;
};

}
}

#include "video/metrics_vector.h"

namespace rux::a6 {
namespace {

inline ruxStatus absoluteDifferences(int mode, Reference src, Reference reference, ptrdiff_t below, int32_t* result)
{
    return kernels<AbsoluteSum>[mode](src, reference, below, result);
}

}
}
