#include "options.h"

#include "level.h"

namespace {

constexpr int longestGroup = 1000, mostBPictures = 7, widestRange = 127;
constexpr int64_t smallestRate = 1000, largestRate = 80000000;

void readWhole(const std::string& word, const std::string& text, int least, int most, int& number)
{
    if (!readNumber(text, least, most, number))
        throw WrongUsage(word + " wants a number from " + std::to_string(least) + " to " + std::to_string(most));
}

// A number of bits a second, or of a thousand or a million of them with k or M behind it.
int64_t readBitRate(std::string text)
{
    int64_t factor = 1;
    if (!text.empty() && (text.back() == 'k' || text.back() == 'M')) {
        factor = text.back() == 'k' ? 1000 : 1000000;
        text.pop_back();
    }
    int64_t number = 0;
    if (!readNumber<int64_t>(text, 1, largestRate / factor, number) || number * factor < smallestRate)
        throw WrongUsage("--bitrate wants bits a second from 1k to 80M, such as 800k");
    return number * factor;
}

Ratio readRate(const std::string& text)
{
    const size_t slash = text.find('/');
    Ratio rate = {1, 1};
    if (!readNumber(std::string_view(text).substr(0, slash), 1, 1000000, rate.numerator) ||
        (slash != std::string::npos &&
         !readNumber(std::string_view(text).substr(slash + 1), 1, 1000000, rate.denominator)))
        throw WrongUsage("--rate wants pictures a second, such as 25 or 30000/1001");
    return rate;
}

}

Options readOptions(int argc, char** argv)
{
    Options options;
    for (int index = 1; index < argc; ++index) {
        const std::string word = argv[index];
        const auto value = [&]() -> std::string {
            if (++index == argc) throw WrongUsage(word + " wants a value");
            return argv[index];
        };
        if (word == "--help" || word == "-h") {
            options.help = true;
        } else if (word == "-o" || word == "--output") {
            options.output = value();
        } else if (word == "--reconstruction") {
            options.reconstruction = value();
        } else if (word == "--quantiser") {
            readWhole(word, value(), 1, largestQuantiser, options.encoder.quantiser);
        } else if (word == "--bitrate") {
            options.encoder.bitRate = readBitRate(value());
        } else if (word == "--gop") {
            readWhole(word, value(), 1, longestGroup, options.encoder.shape.length);
        } else if (word == "--b-pictures") {
            readWhole(word, value(), 0, mostBPictures, options.encoder.shape.bPictures);
        } else if (word == "--search-range") {
            readWhole(word, value(), 1, widestRange, options.encoder.searchRange);
        } else if (word == "--rate") {
            options.frameRate = readRate(value());
        } else if (word == "--frames") {
            if (!readNumber<size_t>(value(), 1, 1000000000, options.frames))
                throw WrongUsage("--frames wants a number from 1");
        } else if (word == "--quiet") {
            options.quiet = true;
        } else if (word == "--level" && canChooseLevel()) {
            if (!chooseLevel(value())) throw WrongUsage("--level wants px, m6, a6 or w7");
        } else if (word.size() > 1 && word[0] == '-') {
            throw WrongUsage("there is no option " + word);
        } else {
            options.inputs.push_back(word);
        }
    }
    if (options.help) return options;
    if (options.inputs.empty()) throw WrongUsage("which pictures?");
    if (options.output.empty()) throw WrongUsage("-o wants to name the stream to write");
    return options;
}

std::string helpText()
{
    std::string text =
        R"(ruxrec encodes pictures to an MPEG-2 video elementary stream (Main Profile, 4:2:0, progressive).

    ruxrec [options] -o STREAM.m2v INPUT...

INPUT is one YUV4MPEG2 file in 4:2:0 (- is the standard input), or PNG or PPM pictures in their order, or a folder of
them.

  -o, --output FILE     the stream; - is the standard output
  --quantiser N         1 (finest) to 31, 4 unless told; B pictures get a coarser one
  --bitrate RATE        bits a second, such as 800k or 4M, in place of one quantiser
  --gop N               pictures from one I picture to the next, 12 unless told
  --b-pictures N        between reference pictures, 0 to 7, 2 unless told
  --search-range N      the longest motion vector in samples, 1 to 127, 31 unless told
  --rate N[/M]          pictures a second of PNG and PPM input, 25 unless told
  --frames N            stop after N pictures
  --reconstruction FILE write the pictures as a decoder will show them, as YUV4MPEG2
)";
    if (canChooseLevel()) text += "  --level LEVEL         let the library work at px, m6, a6 or w7\n";
    return text + R"(  --quiet               no progress, no summary
  --help                this text

For example

    ruxrec -o holiday.m2v --bitrate 2M holiday.y4m
    ffmpeg -i clip.mp4 -pix_fmt yuv420p -f yuv4mpegpipe - | ruxrec -o clip.m2v --quantiser 3 -

A file appears under its name when it is whole.

Exit status: 0 encoded, 1 not encoded or not written, 2 wrong usage.
)";
}
