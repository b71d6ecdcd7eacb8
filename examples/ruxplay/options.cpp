#include "options.h"

#include <string_view>

#include "level.h"

namespace {

constexpr int largestSide = 8192;

ruxiSize readSize(const std::string& text)
{
    const size_t cross = text.find('x');
    ruxiSize size = {};
    if (cross == std::string::npos ||
        !readNumber(std::string_view(text).substr(0, cross), 1, largestSide, size.width) ||
        !readNumber(std::string_view(text).substr(cross + 1), 1, largestSide, size.height))
        throw WrongUsage("--scale wants WIDTHxHEIGHT, such as 320x240, each from 1 to 8192");
    return size;
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
        } else if (word == "--out") {
            options.pngFolder = value();
        } else if (word == "--y4m") {
            options.y4m = value();
        } else if (word == "--sheet") {
            options.sheet = value();
        } else if (word == "--compare") {
            options.reference = value();
        } else if (word == "--quiet") {
            options.quiet = true;
        } else if (word == "--scale") {
            options.scale = readSize(value());
        } else if (word == "--frames") {
            if (!readNumber<size_t>(value(), 1, 1000000000, options.frames))
                throw WrongUsage("--frames wants a number from 1");
        } else if (word == "--level" && canChooseLevel()) {
            if (!chooseLevel(value())) throw WrongUsage("--level wants px, m6, a6 or w7");
        } else if (word.size() > 1 && word[0] == '-') {
            throw WrongUsage("there is no option " + word);
        } else if (!options.input.empty()) {
            throw WrongUsage("one video at a time, not " + options.input + " and " + word);
        } else {
            options.input = word;
        }
    }
    if (options.input.empty() && !options.help) throw WrongUsage("which video?");
    return options;
}

std::string helpText()
{
    std::string text =
        R"(ruxplay decodes MPEG-2 video.

    ruxplay [options] VIDEO

VIDEO is a video elementary stream (.m2v) or a program stream (.mpg): 4:2:0 or 4:2:2, frame pictures, progressive or
interlaced. Without an output it decodes, and tells how fast.

  --out FOLDER          write each picture as FOLDER/0001.png and so on
  --y4m FILE            write all pictures as one YUV4MPEG2 file; - is the standard output
  --sheet FILE.png      write a contact sheet: up to 12 pictures across the video
  --scale WxH           scale the pictures of these outputs
  --frames N            stop after N pictures
  --compare FILE.y4m    print the PSNR of every plane and picture against these pictures
)";
    if (canChooseLevel()) text += "  --level LEVEL         let the library work at px, m6, a6 or w7\n";
    return text + R"(  --quiet               no progress, no summary
  --help                this text

For example

    ruxplay --sheet overview.png --scale 320x180 holiday.mpg
    ruxplay --y4m - clip.m2v | ffplay -

Each coded picture comes out once; repeated fields are counted. A damaged stream is decoded as far as possible: each
damage is told with picture (in the stream's order) and slice, and what is lost is taken from the picture before.

Exit status: 0 decoded, 1 not decoded or not written, 2 wrong usage, 3 decoded, but the stream is damaged.
)";
}
