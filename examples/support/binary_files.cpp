#include "binary_files.h"

#include <cerrno>
#include <cstring>
#include <stdexcept>

#ifdef _WIN32
#include <fcntl.h>
#include <io.h>
#else
#include <unistd.h>
#endif

namespace {

File open(const std::string& path, const char* mode)
{
    FILE* const file = std::fopen(path.c_str(), mode);
    if (!file) throw std::runtime_error("cannot open " + path + ": " + std::strerror(errno));
    return File(file, std::fclose);
}

}

File openForReading(const std::string& path)
{
    if (path != "-") return open(path, "rb");
#ifdef _WIN32
    _setmode(_fileno(stdin), _O_BINARY);
#endif
    return File(stdin, [](FILE*) {});
}

File openForWriting(const std::string& path)
{
    if (path != "-") return open(path, "wb");
#ifdef _WIN32
    _setmode(_fileno(stdout), _O_BINARY);
#endif
    return File(stdout, [](FILE*) {});
}

bool isTerminal(FILE* file)
{
#ifdef _WIN32
    return _isatty(_fileno(file));
#else
    return isatty(fileno(file));
#endif
}
