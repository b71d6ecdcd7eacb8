#include "support/digest.h"

#include <cinttypes>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <map>

namespace rux::test {
namespace {

// Where the stored digests lie: RUX_GOLDEN_DIRECTORY is the build's, GOLDEN_DIRECTORY the user's.
std::string fileOf(const std::string& family)
{
    const char* const chosen = std::getenv("GOLDEN_DIRECTORY");
    return std::string(chosen ? chosen : RUX_GOLDEN_DIRECTORY) + "/" + family + ".txt";
}

std::map<std::string, std::string> readLines(const std::string& path)
{
    std::map<std::string, std::string> digests;
    std::ifstream file(path);
    std::string operation, level, digest;
    while (file >> operation >> level >> digest) digests[operation + " " + level] = digest;
    return digests;
}

}

void Digest::add(const void* bytes, size_t count)
{
    const auto* from = static_cast<const uint8_t*>(bytes);
    for (; count > 0; from += 8) {
        const size_t part = std::min<size_t>(count, 8);
        uint64_t word = 0;
        std::memcpy(&word, from, part);
        state = (state ^ word ^ part) * 0x9E3779B97F4A7C15u;
        state ^= state >> 29;
        count -= part;
    }
}

void Digest::addRegion(const Plane& plane)
{
    for (int y = 0; y < plane.height(); y++) add(plane.row(y), plane.rowBytes());
}

void Digest::addMemory(const Plane& plane)
{
    add(plane.memoryBegin(), static_cast<size_t>(plane.memoryEnd() - plane.memoryBegin()));
}

void expectGolden(const std::string& family, const std::string& operation, Level level, const Digest& digest)
{
    const std::string key = operation + " " + nameOf(level);
    char text[17];
    std::snprintf(text, sizeof text, "%016" PRIx64, digest.value());
    auto lines = readLines(fileOf(family));
    if (const char* update = std::getenv("UPDATE_GOLDEN"); update && *update == '1') {
        lines[key] = text;
        std::ofstream file(fileOf(family), std::ios::binary);
        for (const auto& [name, value] : lines) file << name << " " << value << "\n";
        EXPECT_TRUE(file.good()) << "golden/" << family << ".txt cannot be written";
        return;
    }
    const auto line = lines.find(key);
    if (line == lines.end()) {
        ADD_FAILURE() << "golden/" << family << ".txt has no line for " << key << " (" << text << ")";
    } else {
        EXPECT_EQ(text, line->second) << "is the digest of " << key;
    }
}

}
