#include "options.h"

Options readOptions(int argc, char** argv)
{
    Options options;
    std::string* const files[] = {&options.input, &options.output, &options.picture};
    size_t given = 0;
    for (int index = 1; index < argc; ++index) {
        const std::string word = argv[index];
        const auto value = [&]() -> std::string {
            if (++index == argc) throw WrongUsage(word + " wants a value");
            return argv[index];
        };
        const auto number = [&](double least, double most, double& target, const char* wish) {
            if (!readNumber(value(), least, most, target)) throw WrongUsage(word + " wants " + wish);
        };
        if (word == "--help" || word == "-h") {
            options.help = true;
        } else if (word == "--mask") {
            if (!readNumber(value(), 1, 999, options.mask) || options.mask % 2 == 0)
                throw WrongUsage("--mask wants an odd number of samples from 1 to 999");
        } else if (word == "--click") {
            number(0, 200, options.click, "a share of full scale, 0 to 200 percent");
        } else if (word == "--power") {
            number(0.1, 10, options.power, "an exponent from 0.1 to 10");
        } else if (word == "--window") {
            number(1, 10000, options.window, "1 to 10000 milliseconds");
        } else if (word == "--quiet") {
            options.quiet = true;
        } else if (word.size() > 1 && word[0] == '-') {
            throw WrongUsage("there is no option " + word);
        } else if (given < 3) {
            *files[given++] = word;
        } else {
            throw WrongUsage("one sound, one result and one picture, and not " + word + " too");
        }
    }
    if (options.help) return options;
    if (given < 3) throw WrongUsage("a sound, the result's name and the picture's name, please");
    if (options.output == options.picture) throw WrongUsage("the result and the picture want two names");
    return options;
}

std::string helpText()
{
    return R"(ruxtone takes clicks out of a sound, lifts what is quiet, and draws what it did.

    ruxtone [options] SOUND.wav RESULT.wav PICTURE.png

SOUND.wav has 16 bits a sample and one or two channels. A click is a sample that lies far from the median of those
around it; it becomes that median, and all others stay as they are. Then each sample x becomes sign(x) |x| ** power,
right to about 11 bits. PICTURE.png shows the sound before and after, its level, and how often it crosses zero.

  --mask N          median of N samples, odd (7); it takes clicks of fewer than N / 2 samples. 1 takes none
  --click PERCENT   how far from the median, in percent of full scale, a click begins (25)
  --power Y         exponent of the curve (0.7); below 1 lifts what is quiet, 1 leaves the sound as it is
  --window MS       measure level, mean and crossings over MS milliseconds (20)
  --quiet           no summary
  --help            this text

Exit status: 0 written, 1 not read or not written, 2 wrong usage.
)";
}
