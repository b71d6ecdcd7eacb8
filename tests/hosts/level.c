/* Prints the level that the load has bound. */
#include <stdio.h>
#include <string.h>

#include "ruxlib.h"

int main(void)
{
    if (strcmp(ruxiGetLibVersion()->targetName, ruxsGetLibVersion()->targetName) != 0) return 1;
    puts(ruxiGetLibVersion()->targetName);
    return 0;
}
