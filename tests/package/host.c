#include <ruxlib.h>
#include <stdio.h>

int main(void)
{
    unsigned char image[8 * 2] = {0};
    ruxiSize size;
    size.width = 8;
    size.height = 2;
    if (ruxiSet_8u_C1R(7, image, 8, size) != ruxStatusOk || image[15] != 7) return 1;
    printf("%s %s\n", ruxiGetLibVersion()->targetName, ruxGetStatusString(ruxStatusOk));
    return 0;
}
