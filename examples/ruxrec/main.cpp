// Encodes pictures through the library to an MPEG-2 video stream. See options.cpp for what it can do.
#include <algorithm>
#include <cstdio>
#include <new>

#include "encoder.h"
#include "options.h"
#include "output.h"
#include "picture_source.h"
#include "progress.h"
#include "quality.h"
#include "whole_file.h"

namespace {

constexpr int notEncoded = 1, wrongUsage = 2;

class Recorder : public Encoder::Listener {
public:
    Recorder(const Options& options, const Sequence& sequence, size_t expected)
        : options_(options), sequence_(sequence), progress_(expected, !options.quiet && isTerminal(stderr)),
          stream_(options.output)
    {
        if (!options.reconstruction.empty())
            reconstruction_ = y4mFile(options.reconstruction, sequence, {sequence.width, sequence.height}, false);
    }

    void write(const std::vector<uint8_t>& bytes) override
    {
        stream_.write(bytes.data(), bytes.size());
        bytes_ += bytes.size();
    }

    void show(const Frame& source, const Frame& decoded, PictureType type) override
    {
        quality_.add(source.view(), decoded.view());
        if (reconstruction_) reconstruction_->take(decoded.view());
        ++counts_[int(type) - 1];
        progress_.advance();
    }

    void finish()
    {
        progress_.finish();
        if (reconstruction_) reconstruction_->finish();
        stream_.finish();
        if (!options_.quiet) summarize();
    }

private:
    void summarize() const
    {
        const Ratio rate = frameRate(sequence_);
        const double seconds = progress_.seconds(), pictures = double(progress_.pictures());
        const double bits = 8 * double(bytes_) * rate.numerator / rate.denominator / pictures;
        std::fprintf(stderr, "%dx%d, %zu pictures (%zu I, %zu P, %zu B) in %.3f s, %.1f frames/s, level %s\n",
                     sequence_.width, sequence_.height, progress_.pictures(), counts_[0], counts_[1], counts_[2],
                     seconds, pictures / seconds, ruxiGetLibVersion()->targetName);
        std::fprintf(stderr, "%zu bytes, %.1f kbit/s, PSNR Y %.2f Cb %.2f Cr %.2f dB\n", bytes_, bits / 1000,
                     quality_.psnr(0), quality_.psnr(1), quality_.psnr(2));
    }

    const Options& options_;
    const Sequence sequence_;
    Progress progress_;
    WholeFile stream_;
    std::unique_ptr<Output> reconstruction_;
    Quality quality_;
    size_t bytes_ = 0;
    size_t counts_[3] = {};   // I, P, B
};

void encode(const Options& options)
{
    const std::unique_ptr<PictureSource> source = openSource(options.inputs, options.frameRate);
    std::unique_ptr<Frame> picture = source->next();
    if (!picture) throw std::runtime_error(options.inputs[0] + " holds no picture");
    const size_t most = options.frames ? options.frames : SIZE_MAX;
    const size_t expected = std::min(source->expectedPictures(), most);
    Recorder recorder(options, source->sequence(), expected);
    Encoder encoder(source->sequence(), options.encoder, recorder);
    for (size_t count = 1;; ++count) {
        encoder.take(std::move(picture));
        if (count == most) break;
        picture = source->next();
        if (!picture) break;
    }
    encoder.finish();
    recorder.finish();
}

int run(const Options& options)
{
    try {
        encode(options);
        return 0;
    } catch (const std::bad_alloc&) {
        std::fprintf(stderr, "ruxrec: not enough memory for these pictures\n");
    } catch (const std::exception& problem) {
        std::fprintf(stderr, "ruxrec: %s\n", problem.what());
    }
    return notEncoded;
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
        return run(options);
    } catch (const WrongUsage& problem) {
        std::fprintf(stderr, "ruxrec: %s (ruxrec --help tells more)\n", problem.what());
        return wrongUsage;
    }
}
