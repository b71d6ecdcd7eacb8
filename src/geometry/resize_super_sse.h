// Supersampling with float sums: the sum of a box, rounded to float after every addition, in four lanes where it is
// long enough.
#pragma once

#include <xmmintrin.h>

#include "geometry/resize_super.h"
#include "geometry/resize_super_steps.h"

namespace rux::RUX_LEVEL {
namespace {

inline float addWeighted(float sum, float element, double weight)
{
    return static_cast<float>(sum + element * weight);
}

inline __m128 addSingly(__m128 sum, const float* elements, int32_t count)
{
    for (; count > 0; --count) sum = _mm_add_ss(sum, _mm_load_ss(elements++));
    return sum;
}

// (lane 0 + lane 2) + (lane 1 + lane 3), in lane 0.
inline __m128 foldLanes(__m128 lanes)
{
    const __m128 halves = _mm_add_ps(lanes, _mm_movehl_ps(lanes, lanes));
    return _mm_add_ss(halves, _mm_shuffle_ps(halves, halves, 1));
}

// Adds a run of elements to the sum so far, both in lane 0. Those before a 16-byte boundary are added singly, then
// eights into four lanes of which the first starts with the sum so far, then singly what is left.
inline __m128 addRun(__m128 sum, const float* elements, int32_t count)
{
    const int32_t head = static_cast<int32_t>(bytesToBoundary(elements, 16) / sizeof(float));
    if (count - head < 8) return addSingly(sum, elements, count);

    __m128 lanes = addSingly(sum, elements, head);
    elements += head, count -= head;
    for (; count >= 8; elements += 8, count -= 8) {
        if (thisLevel == a6::number)
            _mm_prefetch(reinterpret_cast<const char*>(elements) + 64, _MM_HINT_NTA);
        lanes = _mm_add_ps(lanes, _mm_load_ps(elements));
        lanes = _mm_add_ps(lanes, _mm_load_ps(elements + 4));
    }
    return addSingly(foldLanes(lanes), elements, count);
}

void compactBoxes(float* sums, const Box* boxes, int32_t count)
{
    for (int32_t k = 0; k < count; ++k) {
        const Box& box = boxes[k];
        const float* element = sums + box.first;
        __m128 sum = _mm_setzero_ps();
        if (box.head != 0.0) sum = _mm_set_ss(addWeighted(0.0f, *element++, box.head));
        sum = addRun(sum, element, box.count);
        if (box.tail != 0.0)
            sum = _mm_set_ss(addWeighted(_mm_cvtss_f32(sum), element[box.count], box.tail));
        _mm_store_ss(sums + k, sum);
    }
}

}
}
