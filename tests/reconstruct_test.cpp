// Decoding of MPEG-2 blocks, against a model that reads the code lists.
#include "reconstruct_setting.h"

namespace rux::test {

RUX_FAMILY(Reconstruct, "reconstruct");

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

static std::vector<int32_t> randomScan(Random& random)
{
    std::vector<int32_t> scan(64);
    for (int i = 0; i < 64; i++) scan[static_cast<size_t>(i)] = i;
    for (uint32_t i = 63; i > 0; i--) std::swap(scan[i], scan[random.below(i + 1)]);
    return scan;
}

// One block by both, over a stream that ends at a faulting page: behind the last word that the lookups touch, at w7
// two words later. True for a block with its end.
static bool compareBlock(Random& random, Level level, bool intra, const Table& first, const Table& second,
                         Digest& digest)
{
    const int start = random.between(0, 40);
    auto words = randomStream(random, intra, first.list, second.list, start);
    const auto scan = randomScan(random);
    std::vector<int16_t> matrix(64);
    if (random.oneIn(4)) mixture(random, matrix.data(), 64);
    else uniform<int16_t>(1, 255)(random, matrix.data(), 64);
    const bool flat = !intra && random.oneIn(3);
    const auto quantScale =
        static_cast<int16_t>(random.oneIn(6) ? static_cast<int>(random.below(65536)) : random.between(1, 112));
    const auto predictor = static_cast<int16_t>(random.next());
    const int32_t dcShift = random.between(0, 3);

    const model::BitSequence bits(words.data());
    const DecodedBlock expected =
        intra ? model::decodeIntraBlock(level, bits, start, first.list, second.list, scan.data(), quantScale,
                                        matrix.data(), predictor, dcShift)
              : model::decodeNonIntraBlock(level, bits, start, first.list, second.list, scan.data(), quantScale,
                                           flat ? nullptr : matrix.data());
    words.resize(static_cast<size_t>((expected.looked + 31) / 32 + (level == w7 ? 2 : 0)));

    Places places;
    if (random.oneIn(4)) places.stream = {Edge::start, random.between(0, 63)};
    places.matrix = evenPlace(random);
    places.block = evenPlace(random);
    Setting s(words, scan, matrix, places);
    s.position = start, s.quantScale = quantScale, s.flat = flat, s.predictor = predictor, s.dcShift = dcShift;
    const auto stream = s.stream.clone();
    const auto weights = s.matrix.clone();
    const auto order = s.scan.clone();
    auto block = s.block.clone();
    for (int i = 0; i < 64; i++) block.set(i, 0, expected.coefficients[i]);

    EXPECT_EQ(s.run(intra, first, second), expected.status);
    EXPECT_EQ(s.position, expected.writesPosition ? expected.position : start);
    EXPECT_EQ(s.count, expected.writesCount ? expected.count : untouched);
    EXPECT_EQ(s.predictor, intra ? expected.predictor : predictor);
    EXPECT_TRUE(s.block.equals(block));
    EXPECT_TRUE(s.stream.equals(stream) && s.matrix.equals(weights) && s.scan.equals(order)) << "an input was written";
    digest.add(expected.status);
    digest.add(static_cast<int32_t>(s.position));
    digest.add(s.count);
    digest.add(s.predictor);
    digest.addRegion(s.block);
    return expected.writesCount;
}

static void compareBlocks(Level level, bool intra, Digest& digest)
{
    int whole = 0, broken = 0;
    for (int i = 0; i < 60 && !testing::Test::HasFailure(); i++) {
        Random random(static_cast<uint64_t>(i) * 2 + intra);
        const int anyRoot = random.between(1, 12);
        const int root = level == w7 || i % 3 ? 9 : anyRoot;
        const auto firstWords = intra ? sizeList(random) : runLevelList(random, root);
        const auto secondWords = runLevelList(random, root);
        const Table first(intra ? ListForm::plain : ListForm::runLevel, firstWords);
        const Table second(ListForm::runLevel, secondWords);
        for (int repeat = 0; repeat < 40 && !testing::Test::HasFailure(); repeat++) {
            const Note note([=] { return "tables " + std::to_string(i) + ", block " + std::to_string(repeat); });
            SCOPED_TRACE(Note::all());
            (compareBlock(random, level, intra, first, second, digest) ? whole : broken)++;
        }
    }
    EXPECT_GT(whole, 300);
    EXPECT_GT(broken, 300);
}

TEST_P(Reconstruct, ruxiReconstructDCTBlockIntra_MPEG2_32s)
{
    Digest digest;
    compareBlocks(level(), true, digest);
    expectGolden("reconstruct", "ruxiReconstructDCTBlockIntra_MPEG2_32s", level(), digest);
}

TEST_P(Reconstruct, ruxiReconstructDCTBlock_MPEG2_32s)
{
    Digest digest;
    compareBlocks(level(), false, digest);
    expectGolden("reconstruct", "ruxiReconstructDCTBlock_MPEG2_32s", level(), digest);
}

}
