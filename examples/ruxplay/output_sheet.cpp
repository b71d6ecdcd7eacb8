#include <algorithm>
#include <stdexcept>

#include "outputs.h"
#include "picture.h"
#include "rgb.h"
#include "scaler.h"

namespace {

constexpr size_t cells = 12;
constexpr int columns = 4, gap = 8, widestCell = 240;
constexpr uint8_t ground = 32;

ruxiSize cellSize(ruxiSize picture)
{
    if (picture.width <= widestCell) return picture;
    return {widestCell, std::max(1, picture.height * widestCell / picture.width)};
}

class ContactSheet : public Output {
public:
    ContactSheet(const std::string& path, size_t expectedPictures, bool isScaled)
        : path_(path), expected_(expectedPictures), isScaled_(isScaled)
    {
    }

    void take(const PlanarView& picture) override
    {
        if (count_++ != placeOf(chosen_.size()) || chosen_.size() == cells) return;
        const ruxiSize size = picture.planes[0].size, cell = cellSize(size);
        const bool keepSize = isScaled_ || (cell.width == size.width && cell.height == size.height);
        chosen_.push_back(toRgb(keepSize ? picture : Scaler(cell).scale(picture)));
    }

    void finish() override
    {
        if (chosen_.empty()) throw std::runtime_error("no picture for the contact sheet " + path_);
        const int across = std::min(columns, int(chosen_.size()));
        const int down = (int(chosen_.size()) + columns - 1) / columns;
        const int width = chosen_[0].width + gap, height = chosen_[0].height + gap;
        Picture sheet(gap + across * width, gap + down * height);
        ruxiSet_8u_C1R(ground, sheet.pixels.data(), sheet.step(), {sheet.step(), sheet.height});
        for (int index = 0; index < int(chosen_.size()); ++index) {
            const Picture& picture = chosen_[size_t(index)];
            uint8_t* const place = sheet.at(gap + index % columns * width, gap + index / columns * height);
            ruxiCopy_8u_C3R(picture.pixels.data(), picture.step(), place, sheet.step(),
                            {picture.width, picture.height});
        }
        writePng(path_, sheet);
    }

private:
    // The number of the picture that comes into a cell: the first and the last of the video, and evenly between.
    size_t placeOf(size_t cell) const
    {
        return expected_ <= cells ? cell : cell * (expected_ - 1) / (cells - 1);
    }

    const std::string path_;
    const size_t expected_;
    const bool isScaled_;
    size_t count_ = 0;
    std::vector<Picture> chosen_;
};

}

std::unique_ptr<Output> contactSheet(const std::string& path, size_t expectedPictures, bool isScaled)
{
    return std::make_unique<ContactSheet>(path, expectedPictures, isScaled);
}
