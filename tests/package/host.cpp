#include <ruxlib.h>

#include <cstdio>
#include <vector>

int main()
{
    const std::vector<float> ones(32, 1.0f);
    std::vector<float> sum(32, 2.0f);
    if (ruxiAdd_32f_C1IR(ones.data(), 32 * 4, sum.data(), 32 * 4, {32, 1}) != ruxStatusOk || sum[31] != 3.0f) return 1;
    std::printf("%s %s\n", ruxsGetLibVersion()->targetName, ruxGetStatusString(ruxStatusOk));
}
