// Decoding of MPEG-2 blocks, against a model that reads the code lists, and the contract's numbers.
#include "code_lists.h"
#include "model/reconstruct.h"
#include "ruxlib.h"
#include "support/family.h"

namespace rux::test {

using model::CodeList;
using model::DecodedBlock;
using model::ListForm;

RUX_FAMILY(Reconstruct, "reconstruct");

static constexpr int32_t untouched = 0x5A5A5A5A;

class Table {
public:
    Table(ListForm form, const std::vector<int32_t>& words) : list(model::parseCodeList(form, words.data()))
    {
        const auto build = form == ListForm::plain ? ruxiVCHuffmanInitAlloc_32s : ruxiVCHuffmanInitAllocRL_32s;
        EXPECT_EQ(call(build, words.data(), &structure), 0);
    }
    ~Table() { call(ruxiVCHuffmanFree_32s, &structure); }
    Table(const Table&) = delete;

    CodeList list;
    uint32_t* structure = nullptr;
};

// All that one call takes; `run` gives what it left.
struct Setting {
    Setting(const std::vector<uint32_t>& words, Place place = {}) : stream(vectorOf(static_cast<int>(words.size())).at(place))
    {
        for (size_t i = 0; i < words.size(); i++) stream.set(static_cast<int>(i), 0, words[i]);
        for (int i = 0; i < 64; i++) scan.set(i, 0, 63 - i == 0 ? 63 : (i * 5) % 63);
    }

    // `second` is the table of the coefficients behind the first.
    ruxStatus run(bool intra, const Table& first, const Table& second)
    {
        return run(intra, first.structure, second.structure);
    }
    ruxStatus run(bool intra, const uint32_t* first, const uint32_t* second)
    {
        uint32_t* word = model::advance(stream.data(), static_cast<ptrdiff_t>(position / 32 * 4));
        int32_t offset = static_cast<int32_t>(31 - position % 32);
        const int16_t* const weights = flat ? nullptr : matrix.data();
        const int32_t* const order = scan.data();
        const ruxStatus status =
            intra ? call(ruxiReconstructDCTBlockIntra_MPEG2_32s, &word, &offset, first, second, order, quantScale,
                         weights, &predictor, dcShift, block.data(), &count)
                  : call(ruxiReconstructDCTBlock_MPEG2_32s, &word, &offset, first, second, order, quantScale, weights,
                         block.data(), &count);
        const ptrdiff_t bytes = reinterpret_cast<uint8_t*>(word) - stream.row(0);
        EXPECT_TRUE(offset >= 0 && offset <= 31 && bytes % 4 == 0);
        position = bytes * 8 + 31 - offset;
        return status;
    }

    Image<uint32_t> stream;
    Image<int32_t> scan = Image<int32_t>(vectorOf(64));
    Image<int16_t> matrix = Image<int16_t>(vectorOf(64), 1, constant<int16_t>(16));
    Image<int16_t> block = Image<int16_t>(vectorOf(64));
    int64_t position = 0;
    int16_t quantScale = 2;
    bool flat = false;
    int16_t predictor = 100;
    int32_t dcShift = 0, count = untouched;
};

// Widths whose sum reaches the longest code; the first is 9, as w7 has it.
static std::vector<int32_t> widthsFor(Random& random, int longest, int root)
{
    std::vector<int32_t> widths = {root};
    for (int sum = root; sum < longest; sum += widths.back()) widths.push_back(random.between(1, 8));
    return widths;
}

static std::vector<int32_t> sizeList(Random& random)
{
    auto codes = randomTree(random, random.between(2, 13), 11);
    for (SourceCode& code : codes) code.value = random.oneIn(8) ? random.between(0, 16) : random.between(0, 11);
    return sourceList(ListForm::plain, widthsFor(random, longestOf(codes), random.between(1, 9)), codes);
}

// Runs and levels as tables have them, and at times wild ones; some bit patterns have no code.
static std::vector<int32_t> runLevelList(Random& random, int root)
{
    auto codes = randomTree(random, random.between(6, 40), 17);
    const bool wild = random.oneIn(3);
    for (SourceCode& code : codes) {
        code.value = random.oneIn(10) ? random.between(0, wild ? 253 : 31) : random.between(0, 2);
        code.level = wild ? static_cast<int16_t>(random.next()) : random.between(-40, 40);
    }
    codes[random.below(3)].value = 254;
    codes[3 + random.below(2)].value = 255;
    codes.resize(codes.size() - random.below(2));
    return sourceList(ListForm::runLevel, widthsFor(random, longestOf(codes), root), codes);
}

static void putCode(BitWriter& writer, const CodeList& list, Random& random)
{
    const model::Code& code = list.codes[random.below(static_cast<uint32_t>(list.codes.size()))];
    writer.put(code.bits, code.length);
    if ((code.payload & 255) != 255) return;
    writer.put(random.below(4), 6);
    writer.put(random.oneIn(2) ? random.below(64) : static_cast<uint32_t>(random.next()) & 0xFFF, 12);
}

static void putEndOfBlock(BitWriter& writer, const CodeList& list)
{
    for (const model::Code& code : list.codes) {
        if ((code.payload & 255) == 254) return writer.put(code.bits, code.length);
    }
}

// A block's bits at some position, and behind them, or in their place, bits without sense.
static std::vector<uint32_t> randomStream(Random& random, bool intra, const CodeList& first, const CodeList& second,
                                          int position)
{
    BitWriter writer;
    for (int i = 0; i < position; i++) writer.put(random.below(2), 1);
    if (!random.oneIn(5)) {
        if (intra) {
            const model::Code& size = first.codes[random.below(static_cast<uint32_t>(first.codes.size()))];
            writer.put(size.bits, size.length);
            writer.put(static_cast<uint32_t>(random.next()), size.payload);
        } else if (random.oneIn(2)) {
            writer.put(2 + random.below(2), 2);
        } else {
            putCode(writer, first, random);
        }
        for (int codes = random.oneIn(4) ? 64 : random.between(0, 20); codes > 0; codes--) {
            putCode(writer, second, random);
        }
        putEndOfBlock(writer, second);
    }
    const int64_t end = writer.position + 4096;
    while (writer.position < end) writer.put(static_cast<uint32_t>(random.next()), 32);
    return writer.words;
}

static Place evenPlace(Random& random)
{
    if (random.oneIn(2)) return {};
    return {random.oneIn(2) ? Edge::start : Edge::end, 2 * random.between(0, 31)};
}

static void fillScan(Random& random, Image<int32_t>& scan)
{
    for (int i = 0; i < 64; i++) scan.set(i, 0, i);
    for (int i = 63; i > 0; i--) {
        const int other = random.between(0, i);
        const int32_t kept = scan.get(i);
        scan.set(i, 0, scan.get(other));
        scan.set(other, 0, kept);
    }
}

// One block by both; the digest takes what the call left. True for a block with its end.
static bool compareBlock(Random& random, Level level, bool intra, const Table& first, const Table& second,
                         Digest& digest)
{
    const int start = random.between(0, 40);
    auto words = randomStream(random, intra, first.list, second.list, start);

    Setting s({});
    s.block = Image<int16_t>(vectorOf(64).at(evenPlace(random)), random.next());
    const Fill<int16_t> weights = random.oneIn(4) ? Fill<int16_t>(mixture<int16_t>) : uniform<int16_t>(1, 255);
    s.matrix = Image<int16_t>(vectorOf(64).at(evenPlace(random)), random.next(), weights);
    s.flat = !intra && random.oneIn(3);
    s.quantScale = static_cast<int16_t>(random.oneIn(6) ? static_cast<int>(random.next()) : random.between(1, 112));
    s.predictor = static_cast<int16_t>(random.next());
    s.dcShift = random.between(0, 3);
    s.position = start;
    fillScan(random, s.scan);
    return false;
}

}
