#include "sound.h"

#include <sndfile.h>

#include <algorithm>
#include <cstring>
#include <limits>
#include <memory>

#include "whole_file.h"

namespace {

using SoundFile = std::unique_ptr<SNDFILE, int (*)(SNDFILE*)>;

// A file in memory, as libsndfile wants to see files.
struct MemoryFile {
    std::vector<char> bytes;
    sf_count_t place = 0;
};

MemoryFile& fileOf(void* user)
{
    return *static_cast<MemoryFile*>(user);
}

sf_count_t lengthOf(void* user)
{
    return sf_count_t(fileOf(user).bytes.size());
}

sf_count_t seek(sf_count_t offset, int whence, void* user)
{
    const sf_count_t origin = whence == SEEK_SET ? 0 : whence == SEEK_CUR ? fileOf(user).place : lengthOf(user);
    return fileOf(user).place = std::max<sf_count_t>(0, origin + offset);
}

sf_count_t tell(void* user)
{
    return fileOf(user).place;
}

sf_count_t read(void* target, sf_count_t count, void* user)
{
    const sf_count_t left = std::max<sf_count_t>(0, lengthOf(user) - fileOf(user).place);
    count = std::min(count, left);
    std::memcpy(target, fileOf(user).bytes.data() + fileOf(user).place, size_t(count));
    fileOf(user).place += count;
    return count;
}

sf_count_t write(const void* source, sf_count_t count, void* user)
{
    MemoryFile& file = fileOf(user);
    file.bytes.resize(std::max(file.bytes.size(), size_t(file.place + count)));
    std::memcpy(file.bytes.data() + file.place, source, size_t(count));
    file.place += count;
    return count;
}

std::runtime_error refusal(const std::string& path, const std::string& reason)
{
    return std::runtime_error(path + ": " + reason);
}

void check(const SF_INFO& info, const std::string& path)
{
    if ((info.format & SF_FORMAT_TYPEMASK) != SF_FORMAT_WAV && (info.format & SF_FORMAT_TYPEMASK) != SF_FORMAT_WAVEX)
        throw refusal(path, "is no WAV file");
    if ((info.format & SF_FORMAT_SUBMASK) != SF_FORMAT_PCM_16) throw refusal(path, "its samples are not of 16 bits");
    if (info.channels > 2) throw refusal(path, std::to_string(info.channels) + " channels, not one or two");
    if (info.frames < 1) throw refusal(path, "holds no sound");
    if (info.frames > std::numeric_limits<int32_t>::max() / 2) throw refusal(path, "is too long");
}

}

Sound readWav(const std::string& path)
{
    SF_INFO info = {};
    const SoundFile file(sf_open(path.c_str(), SFM_READ, &info), sf_close);
    if (!file) {
        std::string reason = sf_strerror(nullptr);
        while (!reason.empty() && (reason.back() == '\n' || reason.back() == '.')) reason.pop_back();
        throw std::runtime_error("cannot read " + path + ": " + reason);
    }
    check(info, path);
    const int32_t length = int32_t(info.frames), channels = info.channels;
    std::vector<int16_t> frames(size_t(length) * size_t(channels));
    if (sf_readf_short(file.get(), frames.data(), length) != length) throw refusal(path, "ends before its time");

    Sound sound{info.samplerate, std::vector<Channel>(size_t(channels), Channel(size_t(length)))};
    std::vector<int16_t*> targets;
    for (Channel& channel : sound.channels) targets.push_back(channel.data());
    require(ruxsDeinterleave_16s(frames.data(), channels, length, targets.data()));
    return sound;
}

// libsndfile writes into memory, so that the file itself appears whole or not at all.
void writeWav(const std::string& path, const Sound& sound)
{
    const int32_t length = sound.length(), channels = int32_t(sound.channels.size());
    std::vector<const int16_t*> sources;
    for (const Channel& channel : sound.channels) sources.push_back(channel.data());
    std::vector<int16_t> frames(size_t(length) * size_t(channels));
    require(ruxsInterleave_16s(sources.data(), channels, length, frames.data()));

    SF_INFO info = {};
    info.samplerate = sound.rate;
    info.channels = channels;
    info.format = SF_FORMAT_WAV | SF_FORMAT_PCM_16;
    SF_VIRTUAL_IO functions = {lengthOf, seek, read, write, tell};
    MemoryFile memory;
    SoundFile file(sf_open_virtual(&functions, SFM_WRITE, &info, &memory), sf_close);
    if (!file || sf_writef_short(file.get(), frames.data(), length) != length)
        throw refusal(path, sf_strerror(file.get()));
    file.reset();   // completes the header

    WholeFile whole(path);
    whole.write(memory.bytes.data(), memory.bytes.size());
    whole.finish();
}
