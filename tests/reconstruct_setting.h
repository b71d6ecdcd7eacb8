// A call that decodes a block: its tables, its buffers, and what it leaves.
#pragma once

#include "code_lists.h"
#include "model/reconstruct.h"
#include "ruxlib.h"
#include "support/family.h"

namespace rux::test {

using model::CodeList;
using model::DecodedBlock;
using model::ListForm;

inline constexpr int32_t untouched = 0x5A5A5A5A;

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

// Where the buffers of a call stand.
struct Places {
    Place stream, matrix, block;
};

template <class T>
inline Image<T> imageOf(const std::vector<T>& elements, Place place)
{
    Image<T> image(vectorOf(static_cast<int>(elements.size())).at(place));
    for (size_t i = 0; i < elements.size(); i++) image.set(static_cast<int>(i), 0, elements[i]);
    return image;
}

// A scan that is neither of the standard's and leaves 0 and 63 in their places.
inline std::vector<int32_t> usualScan()
{
    std::vector<int32_t> scan(64);
    for (int i = 0; i < 63; i++) scan[static_cast<size_t>(i)] = i * 5 % 63;
    scan[63] = 63;
    return scan;
}

// All that one call takes; `run` calls and leaves the new position.
struct Setting {
    explicit Setting(const std::vector<uint32_t>& words, const std::vector<int32_t>& scan = usualScan(),
                     const std::vector<int16_t>& matrix = std::vector<int16_t>(64, 16), const Places& places = {})
        : stream(imageOf(words, places.stream)), scan(imageOf(scan, {})), matrix(imageOf(matrix, places.matrix)),
          block(vectorOf(64).at(places.block))
    {
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
    Image<int32_t> scan;
    Image<int16_t> matrix, block;
    int64_t position = 0;
    int16_t quantScale = 2;
    bool flat = false;
    int16_t predictor = 100;
    int32_t dcShift = 0, count = untouched;
};

}
