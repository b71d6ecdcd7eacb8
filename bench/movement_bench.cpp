#include <cstring>

#include "bench.h"
#include "image.h"
#include "ruxlib.h"

namespace rux::bench {
namespace {

ruxiSize roi(Size size)
{
    return {size.width, size.height};
}

template <typename Element, typename Operation>
MakeWork copyWork(Operation operation, int32_t channels)
{
    return [=](Size size) {
        const Image<Element> src(size, channels), dst(size, channels);
        return Work{2 * src.bytes(),
                    [=] { operation(src.data(), src.step(), dst.data(), dst.step(), roi(size)); }};
    };
}

// The C library on the same bytes: the images have no gaps.
MakeWork memcpyWork(int32_t bytesPerPixel)
{
    return [=](Size size) {
        const Image<uint8_t> src(size, bytesPerPixel), dst(size, bytesPerPixel);
        return Work{2 * src.bytes(), [=] {
                        std::memcpy(dst.data(), src.data(), src.bytes());
                        asm volatile("" : : "r"(dst.data()) : "memory");
                    }};
    };
}

MakeWork memsetWork(int32_t bytesPerPixel)
{
    return [=](Size size) {
        const Image<uint8_t> dst(size, bytesPerPixel);
        return Work{dst.bytes(), [=] {
                        std::memset(dst.data(), 7, dst.bytes());
                        asm volatile("" : : "r"(dst.data()) : "memory");
                    }};
    };
}

template <typename Element, typename Operation>
MakeWork setWork(Operation operation)
{
    return [=](Size size) {
        const Image<Element> dst(size);
        return Work{dst.bytes(), [=] { operation(Element(7), dst.data(), dst.step(), roi(size)); }};
    };
}

Work maskedCopy(Size size)
{
    const Image<uint8_t> src(size), dst(size), mask(size);
    for (size_t i = 0; i < mask.bytes(); ++i) mask.data()[i] &= i & 64 ? 0 : 1;   // runs of zeros, and a mixture
    return {3 * src.bytes(), [=] {
                ruxiCopy_8u_C1MR(src.data(), src.step(), dst.data(), dst.step(), roi(size), mask.data(), mask.step());
            }};
}

Work copyToFourChannels(Size size)
{
    const Image<uint8_t> src(size, 3), dst(size, 4);
    return {2 * src.bytes(),
            [=] { ruxiCopy_8u_C3AC4R(src.data(), src.step(), dst.data(), dst.step(), roi(size)); }};
}

Work setOneOfFourChannels(Size size)
{
    const Image<uint8_t> dst(size, 4);
    return {dst.bytes() / 4, [=] { ruxiSet_8u_C4CR(7, dst.data(), dst.step(), roi(size)); }};
}

}

void addMovement(Cases& cases)
{
    cases.push_back({"ruxiCopy_8u_C1R", copyWork<uint8_t>(ruxiCopy_8u_C1R, 1), "memcpy", memcpyWork(1)});
    cases.push_back({"ruxiCopy_8u_C3R", copyWork<uint8_t>(ruxiCopy_8u_C3R, 3), "memcpy", memcpyWork(3)});
    cases.push_back({"ruxiCopy_8u_C4R", copyWork<uint8_t>(ruxiCopy_8u_C4R, 4), "memcpy", memcpyWork(4)});
    cases.push_back({"ruxiCopy_16s_C1R", copyWork<int16_t>(ruxiCopy_16s_C1R, 1), "memcpy", memcpyWork(2)});
    cases.push_back({"ruxiCopy_32f_C1R", copyWork<float>(ruxiCopy_32f_C1R, 1), "memcpy", memcpyWork(4)});
    cases.push_back({"ruxiCopy_8u_C1MR", maskedCopy, "", nullptr});
    cases.push_back({"ruxiCopy_8u_C3AC4R", copyToFourChannels, "", nullptr});
    cases.push_back({"ruxiSet_8u_C1R", setWork<uint8_t>(ruxiSet_8u_C1R), "memset", memsetWork(1)});
    cases.push_back({"ruxiSet_16s_C1R", setWork<int16_t>(ruxiSet_16s_C1R), "memset", memsetWork(2)});
    cases.push_back({"ruxiSet_32f_C1R", setWork<float>(ruxiSet_32f_C1R), "memset", memsetWork(4)});
    cases.push_back({"ruxiSet_8u_C4CR", setOneOfFourChannels, "", nullptr});
}

}
