#include "picture.h"

#include <stdexcept>

#define STB_IMAGE_IMPLEMENTATION
#define STB_IMAGE_WRITE_IMPLEMENTATION
#include <stb/stb_image.h>
#include <stb/stb_image_write.h>

#include "whole_file.h"

Picture readPicture(const std::string& path)
{
    int width = 0, height = 0, channels = 0;
    uint8_t* const loaded = stbi_load(path.c_str(), &width, &height, &channels, 3);
    if (!loaded) throw std::runtime_error("cannot read " + path + ": " + stbi_failure_reason());
    Picture picture(width, height);
    picture.pixels.assign(loaded, loaded + picture.pixels.size());
    stbi_image_free(loaded);
    return picture;
}

void writePng(const std::string& path, const Picture& picture)
{
    WholeFile file(path);
    const auto write = [](void* target, void* bytes, int count) {
        static_cast<WholeFile*>(target)->write(bytes, size_t(count));
    };
    if (!stbi_write_png_to_func(write, &file, picture.width, picture.height, 3, picture.pixels.data(), picture.step()))
        throw std::runtime_error("not enough memory to write " + path);
    file.finish();
}
