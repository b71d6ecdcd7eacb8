// Texts, versions and allocation. For those that move nothing one call counts as one byte.
#include <cstdlib>

#include "bench.h"
#include "ruxlib.h"

namespace rux::bench {
namespace {

Work statusText(Size)
{
    return {1, [] { asm volatile("" : : "r"(ruxGetStatusString(ruxStatusStepError))); }};
}

Work versions(Size)
{
    return {2, [] { asm volatile("" : : "r"(ruxiGetLibVersion()), "r"(ruxsGetLibVersion())); }};
}

template <typename Allocate>
MakeWork allocation(Allocate allocate)
{
    return [=](Size size) {
        return Work{1, [=] { ruxiFree(allocate(size)); }};
    };
}

MakeWork mallocWork(int32_t elementBytes)
{
    return [=](Size size) {
        return Work{1, [=] {
                        void* block = std::malloc(static_cast<size_t>(size.width) * size.height * elementBytes);
                        asm volatile("" : "+r"(block));
                        std::free(block);
                    }};
    };
}

template <typename Operation>
auto image(Operation operation)
{
    return allocation([=](Size size) {
        int32_t step = 0;
        return operation(size.width, size.height, &step);
    });
}

template <typename Operation>
auto vector(Operation operation)
{
    return allocation([=](Size size) { return operation(size.width * size.height); });
}

}

void addFrame(Cases& cases)
{
    cases.push_back({"ruxGetStatusString", statusText, "", nullptr});
    cases.push_back({"ruxiGetLibVersion, ruxsGetLibVersion", versions, "", nullptr});
    cases.push_back({"ruxiMalloc_8u_C1, ruxiFree", image(ruxiMalloc_8u_C1), "malloc", mallocWork(1)});
    cases.push_back({"ruxiMalloc_16s_C1, ruxiFree", image(ruxiMalloc_16s_C1), "malloc", mallocWork(2)});
    cases.push_back({"ruxiMalloc_32f_C1, ruxiFree", image(ruxiMalloc_32f_C1), "malloc", mallocWork(4)});
    cases.push_back({"ruxsMalloc_8u, ruxsFree", vector(ruxsMalloc_8u), "malloc", mallocWork(1)});
    cases.push_back({"ruxsMalloc_32f, ruxsFree", vector(ruxsMalloc_32f), "malloc", mallocWork(4)});
}

}
