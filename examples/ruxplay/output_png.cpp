#include <filesystem>
#include <stdexcept>

#include "outputs.h"
#include "picture.h"
#include "rgb.h"

namespace {

class PngFolder : public Output {
public:
    explicit PngFolder(const std::string& folder) : folder_(folder)
    {
        std::error_code failure;
        std::filesystem::create_directories(folder_, failure);
        if (!std::filesystem::is_directory(folder_)) throw std::runtime_error("cannot make the folder " + folder);
    }

    void take(const PlanarView& picture) override
    {
        char name[32];
        std::snprintf(name, sizeof name, "%04zu.png", ++count_);
        writePng((folder_ / name).string(), toRgb(picture));
    }

private:
    const std::filesystem::path folder_;
    size_t count_ = 0;
};

}

std::unique_ptr<Output> pngFolder(const std::string& folder)
{
    return std::make_unique<PngFolder>(folder);
}
