/* Loads the library named by its argument and prints the level that it has bound. */
#include <dlfcn.h>
#include <stdio.h>

#include "ruxlib.h"

int main(int count, char** arguments)
{
    void* const library = count == 2 ? dlopen(arguments[1], RTLD_NOW) : NULL;
    if (!library) {
        puts(count == 2 ? dlerror() : "usage: late_level LIBRARY");
        return 1;
    }
    const ruxLibraryVersion* (*version)(void);
    *(void**)&version = dlsym(library, "ruxiGetLibVersion");
    if (!version) return 1;
    puts(version()->targetName);
    return dlclose(library);
}
