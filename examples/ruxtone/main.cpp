// Restores a sound through the library: clicks out, a power curve over it, and a picture of it. See options.cpp.
#include <algorithm>
#include <cstdio>
#include <new>

#include "options.h"
#include "page.h"
#include "restoration.h"

namespace {

constexpr int notDone = 1, wrongUsage = 2;

template <typename... Values>
std::string formatted(const char* format, Values... values)
{
    char text[200];
    std::snprintf(text, sizeof text, format, values...);
    return text;
}

std::vector<Measures> measureAll(const Sound& sound, double milliseconds)
{
    const int32_t window = std::max(1, int32_t(sound.rate * milliseconds / 1000));
    std::vector<Measures> result;
    for (const Channel& channel : sound.channels) result.push_back(measure(toFloats(channel), sound.rate, window));
    return result;
}

Sound curved(const Sound& sound, double power)
{
    Sound result = sound;
    if (power == 1) return result;   // the library's power would be right to 11 bits only
    for (Channel& channel : result.channels) {
        FloatChannel values = toFloats(channel);
        applyPower(values, float(power));
        channel = toSamples(std::move(values));
    }
    return result;
}

std::string nameOf(const std::string& path)
{
    return path.substr(path.find_last_of('/') + 1);
}

PageTexts textsOf(const Options& options, const Sound& sound, size_t clicks)
{
    return {
        formatted("%s: %.2f s, %d Hz, %s", nameOf(options.input).c_str(), sound.seconds(), sound.rate,
                  sound.channels.size() == 1 ? "one channel" : "two channels"),
        formatted("%zu samples in clicks (red), farther than %g%% from the median of %d; white: the mean", clicks,
                  options.click, options.mask),
        options.power == 1 ? "clicks out" : formatted("clicks out, then sign(x) |x| ** %g", options.power),
    };
}

void summarize(const Sound& before, const Sound& after, const std::vector<std::vector<int32_t>>& clicks)
{
    for (size_t channel = 0; channel < clicks.size(); ++channel)
        std::printf("channel %zu: %zu samples in clicks; %.1f zero crossings a second before, %.1f after\n",
                    channel + 1, clicks[channel].size(), crossingRate(before.channels[channel], before.rate),
                    crossingRate(after.channels[channel], after.rate));
    std::printf("%.2f s, level %s\n", before.seconds(), ruxsGetLibVersion()->targetName);
}

void restore(const Options& options)
{
    const Sound original = readWav(options.input);
    Sound restored = original;
    std::vector<std::vector<int32_t>> clicks;
    size_t count = 0;
    for (Channel& channel : restored.channels) {
        clicks.push_back(removeClicks(channel, options.mask, float(options.click / 100)));
        count += clicks.back().size();
    }
    restored = curved(restored, options.power);

    const Stage before = {original, measureAll(original, options.window)};
    const Stage after = {restored, measureAll(restored, options.window)};
    const Picture page = drawPage(before, after, clicks, textsOf(options, original, count));
    writeWav(options.output, restored);
    writePng(options.picture, page);
    if (!options.quiet) summarize(original, restored, clicks);
}

}

int main(int argc, char** argv)
{
    std::string input;
    try {
        const Options options = readOptions(argc, argv);
        if (options.help) {
            std::fputs(helpText().c_str(), stdout);
            return 0;
        }
        input = options.input;
        restore(options);
        return 0;
    } catch (const WrongUsage& problem) {
        std::fprintf(stderr, "ruxtone: %s (ruxtone --help tells more)\n", problem.what());
        return wrongUsage;
    } catch (const std::bad_alloc&) {
        std::fprintf(stderr, "ruxtone: %s: not enough memory\n", input.c_str());
    } catch (const std::exception& problem) {
        std::fprintf(stderr, "ruxtone: %s\n", problem.what());
    }
    return notDone;
}
