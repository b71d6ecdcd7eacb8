// Plays an MPEG-2 video through the library, into files. See options.cpp for what it can do.
#include <algorithm>
#include <cstdio>
#include <optional>
#include <vector>

#include "binary_files.h"
#include "decoder.h"
#include "errors.h"
#include "options.h"
#include "outputs.h"
#include "progress.h"
#include "scaler.h"

namespace {

constexpr int notDecoded = 1, wrongUsage = 2, damaged = 3;
constexpr size_t mostLines = 20;   // of damage; the rest is counted

class Player : public Decoder::Listener {
public:
    Player(const Options& options, size_t expected)
        : options_(options), progress_(expected, !options.quiet && isTerminal(stderr))
    {
        if (options.scale) scaler_.emplace(*options.scale);
        if (!options.pngFolder.empty()) outputs_.push_back(pngFolder(options.pngFolder));
        if (!options.sheet.empty())
            outputs_.push_back(contactSheet(options.sheet, expected, options.scale.has_value()));
        if (!options.reference.empty()) comparison_ = comparison(options.reference, options.frames == 0);
    }

    void begin(const Sequence& sequence) override { sequence_ = sequence; }

    bool show(const Frame& frame) override
    {
        PlanarView picture = frame.view();
        if (comparison_) comparison_->take(picture);
        if (scaler_ && (!outputs_.empty() || !options_.y4m.empty())) picture = scaler_->scale(picture);
        if (!options_.y4m.empty() && progress_.pictures() == 0)
            outputs_.push_back(y4mFile(options_.y4m, sequence_, picture.planes[0].size, frame.topFieldFirst));
        for (const auto& output : outputs_) output->take(picture);
        progress_.advance();
        return options_.frames == 0 || progress_.pictures() < options_.frames;
    }

    void tell(const std::string& line) override
    {
        if (++lines_ <= mostLines) progress_.tell(options_.input + ": " + line);
    }

    void finish(const DecodingReport& report)
    {
        progress_.finish();
        if (lines_ > mostLines) std::fprintf(stderr, "and %zu lines more\n", lines_ - mostLines);
        if (comparison_) comparison_->finish();
        for (const auto& output : outputs_) output->finish();
        if (!options_.quiet) summarize(report);
    }

    bool foundDamage() const { return lines_ > 0; }

private:
    void summarize(const DecodingReport& report) const
    {
        const double seconds = progress_.seconds();
        std::fprintf(stderr, "%dx%d, %zu pictures in %.3f s, %.1f frames/s, level %s\n", sequence_.width,
                     sequence_.height, report.shown, seconds, double(report.shown) / seconds,
                     ruxiGetLibVersion()->targetName);
        if (report.repeatedFields) std::fprintf(stderr, "%zu fields repeated on display\n", report.repeatedFields);
        if (foundDamage())
            std::fprintf(stderr, "%zu pictures damaged, %zu macroblocks concealed, %zu pictures dropped\n",
                         report.damagedPictures, report.concealedMacroblocks, report.dropped);
    }

    const Options& options_;
    Progress progress_;
    Sequence sequence_;
    std::optional<Scaler> scaler_;
    std::unique_ptr<Output> comparison_;
    std::vector<std::unique_ptr<Output>> outputs_;
    size_t lines_ = 0;
};

int play(const Options& options)
{
    try {
        VideoStream stream(options.input);
        const size_t pictures = stream.pictureCount();
        Player player(options, options.frames ? std::min(options.frames, pictures) : pictures);
        player.finish(Decoder(stream, player).run());
        return player.foundDamage() ? damaged : 0;
    } catch (const Refusal& refusal) {
        std::fprintf(stderr, "ruxplay: %s: %s\n", options.input.c_str(), refusal.what());
    } catch (const std::bad_alloc&) {
        std::fprintf(stderr, "ruxplay: %s: not enough memory for its pictures\n", options.input.c_str());
    } catch (const std::exception& problem) {
        std::fprintf(stderr, "ruxplay: %s\n", problem.what());
    }
    return notDecoded;
}

}

int main(int argc, char** argv)
{
    try {
        const Options options = readOptions(argc, argv);
        if (options.help) {
            std::fputs(helpText().c_str(), stdout);
            return 0;
        }
        return play(options);
    } catch (const WrongUsage& problem) {
        std::fprintf(stderr, "ruxplay: %s (ruxplay --help tells more)\n", problem.what());
        return wrongUsage;
    }
}
