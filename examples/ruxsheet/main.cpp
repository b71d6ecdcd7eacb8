// Lays pictures of several videos below each other on one sheet, each video with its caption, and the PSNR of every
// video behind the first against that one.
#include <algorithm>
#include <cstdio>
#include <stdexcept>
#include <vector>

#include "picture.h"
#include "psnr.h"
#include "rgb.h"
#include "text.h"
#include "y4m_reader.h"

namespace {

constexpr size_t columns = 4;
constexpr int gap = 8;
constexpr uint8_t ground = 32;
constexpr Colour ink = {240, 240, 240};

// The samples of a whole video.
struct Video {
    std::string caption;
    ruxiSize size = {};
    std::vector<std::vector<uint8_t>> pictures;   // luma, Cb, Cr without gaps
};

PlanarView viewOf(const Video& video, size_t picture)
{
    PlanarView view = {ChromaFormat::yuv420, {}};
    const uint8_t* samples = video.pictures[picture].data();
    for (int index = 0; index < 3; ++index) {
        const ruxiSize size = index == 0 ? video.size : chromaSize(video.size, view.chromaFormat);
        view.planes[index] = {samples, size.width, size};
        samples += size_t(size.width) * size_t(size.height);
    }
    return view;
}

Video readVideo(const std::string& path, const std::string& caption)
{
    Y4mReader reader(path);
    if (reader.chromaFormat() != ChromaFormat::yuv420) throw std::runtime_error(path + " is not 4:2:0");
    Video video = {caption, reader.size(), {}};
    for (PlanarView picture; reader.next(picture);) {
        std::vector<uint8_t> samples;
        for (const PlanarView::Plane& plane : picture.planes)
            samples.insert(samples.end(), plane.samples,
                           plane.samples + size_t(plane.size.width) * size_t(plane.size.height));
        video.pictures.push_back(std::move(samples));
    }
    if (video.pictures.empty()) throw std::runtime_error(path + " holds no picture");
    return video;
}

std::string lumaText(const Video& video, const Video& first)
{
    uint64_t squares = 0, samples = 0;
    for (size_t picture = 0; picture < video.pictures.size(); ++picture) {
        const PlanarView::Plane plane = viewOf(first, picture).planes[0];
        squares += squaredDifference(viewOf(video, picture).planes[0], plane.samples, plane.step);
        samples += uint64_t(plane.size.width) * uint64_t(plane.size.height);
    }
    if (squares == 0) return "equal to the first";
    char text[40];
    std::snprintf(text, sizeof text, "%.2f dB", psnr(squares, samples));
    return text;
}

Picture drawSheet(const std::vector<Video>& videos)
{
    const Video& first = videos[0];
    const size_t shown = std::min(columns, first.pictures.size());
    const int cellWidth = first.size.width + gap, rowHeight = lineHeight + first.size.height + gap;
    Picture sheet(gap + int(shown) * cellWidth, gap + int(videos.size()) * rowHeight);
    ruxiSet_8u_C1R(ground, sheet.pixels.data(), sheet.step(), {sheet.step(), sheet.height});
    int top = gap;
    for (const Video& video : videos) {
        const std::string measured = &video == &first ? "" : ", " + lumaText(video, first);
        drawText(sheet, gap, top, sheet.width - 2 * gap, video.caption + measured, ink);
        for (size_t cell = 0; cell < shown; ++cell) {
            const size_t picture = shown == 1 ? 0 : cell * (video.pictures.size() - 1) / (shown - 1);
            const Picture rgb = toRgb(viewOf(video, picture));
            ruxiCopy_8u_C3R(rgb.pixels.data(), rgb.step(), sheet.at(gap + int(cell) * cellWidth, top + lineHeight),
                            sheet.step(), {rgb.width, rgb.height});
        }
        top += rowHeight;
    }
    return sheet;
}

void run(int count, char** words)
{
    std::vector<Video> videos;
    for (int index = 2; index + 1 < count; index += 2) {
        videos.push_back(readVideo(words[index + 1], words[index]));
        const Video& video = videos.back();
        const Video& first = videos.front();
        if (video.size.width != first.size.width || video.size.height != first.size.height ||
            video.pictures.size() != first.pictures.size())
            throw std::runtime_error(std::string(words[index + 1]) + " has pictures of another size or number");
    }
    writePng(words[1], drawSheet(videos));
}

}

int main(int argc, char** argv)
{
    if (argc < 4 || argc % 2 != 0) {
        std::fprintf(stderr, "usage: ruxsheet SHEET.png CAPTION VIDEO.y4m [CAPTION VIDEO.y4m]...\n");
        return 2;
    }
    try {
        run(argc, argv);
        return 0;
    } catch (const std::exception& problem) {
        std::fprintf(stderr, "ruxsheet: %s\n", problem.what());
        return 1;
    }
}
