#include "model/signal_vectors.h"

#include <algorithm>
#include <vector>

namespace rux::model {
namespace {

bool onBoundary(const void* pointer)
{
    return reinterpret_cast<uintptr_t>(pointer) % 16 == 0;
}

// In double, even and odd positions apart.
double plainSum(const float* src, int32_t len)
{
    double a = 0, b = 0;
    int32_t i = 0;
    for (; len - i >= 4; i += 4) {
        a += load<float>(src + i);
        b += load<float>(src + i + 1);
        a += load<float>(src + i + 2);
        b += load<float>(src + i + 3);
    }
    b += a;
    for (; i < len; i++) b += load<float>(src + i);
    return b;
}

double accurateSum(const float* src, int32_t len)
{
    double lanes[8] = {}, sum = 0, tail = 0;
    int32_t i = 0;
    for (; len - i >= 8; i += 8) {
        for (int lane = 0; lane < 8; lane++) lanes[lane] += load<float>(src + i + lane);
    }
    for (; i < len; i++) tail += load<float>(src + i);
    for (double lane : lanes) sum += lane;
    return sum + tail;
}

double fastSum(const float* src, int32_t len)
{
    double sum = 0;
    int32_t i = 0;
    while (i < len && !onBoundary(src + i)) sum += load<float>(src + i++);
    while (len - i >= 4) {
        const int32_t end = i + std::min((len - i) / 4 * 4, 32768);
        float lanes[4] = {};
        for (; i < end; i += 4) {
            for (int lane = 0; lane < 4; lane++) lanes[lane] += load<float>(src + i + lane);
        }
        for (float lane : lanes) sum += lane;
    }
    for (; i < len; i++) sum += load<float>(src + i);
    return sum;
}

double sumOf(Level level, const float* src, int32_t len, int32_t hint)
{
    if (level == px) return plainSum(src, len);
    return level == m6 || hint != 1 ? accurateSum(src, len) : fastSum(src, len);
}

}

ruxStatus ruxsCopy_8u(Level, const uint8_t* src, uint8_t* dst, int32_t len)
{
    if (!src || !dst) return ruxStatusNullPointer;
    if (len < 1) return ruxStatusSizeError;
    for (int32_t i = 0; i < len; i++) dst[i] = src[i];
    return ruxStatusOk;
}

ruxStatus ruxsConvert_16s32f(Level, const int16_t* src, float* dst, int32_t len)
{
    if (!src || !dst) return ruxStatusNullPointer;
    if (len < 1) return ruxStatusSizeError;
    for (int32_t i = 0; i < len; i++) store(dst + i, static_cast<float>(load<int16_t>(src + i)));
    return ruxStatusOk;
}

ruxStatus ruxsInterleave_16s(Level, const int16_t* const* src, int32_t channels, int32_t frameLen, int16_t* dst)
{
    if (!src || !dst) return ruxStatusNullPointer;
    if (channels < 1 || frameLen < 1) return ruxStatusSizeError;
    bool aligned = onBoundary(dst);
    for (int32_t c = 0; c < channels; c++) {
        const auto channel = load<const int16_t*>(src + c);
        if (!channel) return ruxStatusNullPointer;
        aligned = aligned && onBoundary(channel);
    }
    for (int32_t f = 0; f < frameLen; f++) {
        for (int32_t c = 0; c < channels; c++) {
            store(dst + f * channels + c, load<int16_t>(load<const int16_t*>(src + c) + f));
        }
    }
    return aligned ? ruxStatusOk : ruxStatusMisaligned;
}

ruxStatus ruxsDeinterleave_16s(Level, const int16_t* src, int32_t channels, int32_t frameLen, int16_t* const* dst)
{
    if (!src || !dst) return ruxStatusNullPointer;
    if (channels < 1 || frameLen < 1) return ruxStatusSizeError;
    bool aligned = onBoundary(src);
    for (int32_t c = 0; c < channels; c++) {
        const auto channel = load<int16_t*>(dst + c);
        if (!channel) return ruxStatusNullPointer;
        aligned = aligned && onBoundary(channel);
    }
    for (int32_t f = 0; f < frameLen; f++) {
        for (int32_t c = 0; c < channels; c++) {
            store(load<int16_t*>(dst + c) + f, load<int16_t>(src + f * channels + c));
        }
    }
    return aligned ? ruxStatusOk : ruxStatusMisaligned;
}

ruxStatus ruxsThreshold_32f_I(Level, float* srcDst, int32_t len, float level, int32_t relOp)
{
    if (!srcDst) return ruxStatusNullPointer;
    if (len < 1) return ruxStatusSizeError;
    for (int32_t i = 0; i < len; i++) {
        const auto x = load<float>(srcDst + i);
        if (relOp == 4 ? x > level : x < level) store(srcDst + i, level);
    }
    return ruxStatusOk;
}

ruxStatus ruxsSum_32f(Level level, const float* src, int32_t len, float* sum, int32_t hint)
{
    if (!src || !sum) return ruxStatusNullPointer;
    if (len < 1) return ruxStatusSizeError;
    store(sum, static_cast<float>(sumOf(level, src, len, hint)));
    return ruxStatusOk;
}

ruxStatus ruxsMean_32f(Level level, const float* src, int32_t len, float* mean, int32_t hint)
{
    if (!src || !mean) return ruxStatusNullPointer;
    if (len < 1) return ruxStatusSizeError;
    store(mean, static_cast<float>(sumOf(level, src, len, hint) / len));
    return ruxStatusOk;
}

ruxStatus ruxsFilterMedian_16s(Level, const int16_t* src, int16_t* dst, int32_t len, int32_t maskSize)
{
    if (!src || !dst) return ruxStatusNullPointer;
    if (len < 1 || maskSize < 1) return ruxStatusSizeError;
    const int32_t half = (maskSize - 1) / 2;
    std::vector<int16_t> window(2 * static_cast<size_t>(half) + 1);
    for (int32_t i = 0; i < len; i++) {
        const bool kept = i == 0 || i == len - 1;
        for (int32_t k = -half; k <= half; k++) {
            window[static_cast<size_t>(k + half)] = load<int16_t>(src + std::clamp(i + k, 0, len - 1));
        }
        std::nth_element(window.begin(), window.begin() + half, window.end());
        store(dst + i, kept ? load<int16_t>(src + i) : window[static_cast<size_t>(half)]);
    }
    return maskSize % 2 == 0 ? ruxStatusEvenMedianMask : ruxStatusOk;
}

ruxStatus ruxsSignChangeRate_16s(Level, const int16_t* src, int32_t len, int32_t* count)
{
    if (!src || !count) return ruxStatusNullPointer;
    if (len < 1) return ruxStatusSizeError;
    int32_t changes = 0;
    for (int32_t i = 1; i < len; i++) changes += load<int16_t>(src + i - 1) * load<int16_t>(src + i) < 0;
    store(count, changes);
    return ruxStatusOk;
}

ruxStatus ruxsSignChangeRate_32f(Level level, const float* src, int32_t len, float* count)
{
    if (!src || !count) return ruxStatusNullPointer;
    if (len < 1) return ruxStatusSizeError;
    int32_t changes = 0;
    for (int32_t i = 1; i < len; i++) {
        const auto before = load<float>(src + i - 1), here = load<float>(src + i);
        const double wide = static_cast<double>(before) * here;
        const float narrow = before * here;
        changes += level == px || level == m6 ? !(wide >= 0) : !(narrow >= 0);
    }
    store(count, static_cast<float>(changes));
    return ruxStatusOk;
}

}
