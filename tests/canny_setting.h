// What the tests of Canny share: gradients in memory as a host must provide it, and the work buffer's size.
#pragma once

#include "model/sobel.h"
#include "support/image.h"
#include "support/scratch.h"

namespace rux::test {

inline bool inWords(Level level)
{
    return level == a6 || level == w7;
}

// Up to 4 elements beyond the row may be read at a6 and w7: what the last block of 4 covers, and one more.
inline Shape gradientShape(Level level, int width, int height)
{
    return Shape{width, height}.margins(0, 0, inWords(level) ? (width + 4) / 4 * 4 - width : 0, 0);
}

inline int scratchBytes(int width, int height)
{
    return 12 * (width + 2) * (height + 2);
}

inline uint32_t bitsOf(float value)
{
    uint32_t bits;
    std::memcpy(&bits, &value, sizeof bits);
    return bits;
}

// Two gradient images of a picture with bows, slopes and noise.
struct Gradients {
    Image<int16_t> dx, dy;

    Gradients(Level level, int width, int height)
        : dx(gradientShape(level, width, height), 1), dy(gradientShape(level, width, height), 2)
    {
        Image<uint8_t> picture(Shape{width, height}, 3);
        Random random(4);
        for (int y = 0; y < height; y++) {
            for (int x = 0; x < width; x++) {
                const int distance = (x - width / 3) * (x - width / 3) + (y - height / 2) * (y - height / 2);
                const int slope = (distance / 40 & 127) + (3 * x + 2 * y) / 8 % 97 + random.between(0, 4);
                picture.set(x, y, static_cast<uint8_t>(slope));
            }
        }
        model::ruxiSobel3x3_Dx_8u16s_C1R(w7, picture.data(), picture.step(), dx.data(), dx.step(), picture.roi());
        model::ruxiSobel3x3_Dy_8u16s_C1R(w7, picture.data(), picture.step(), dy.data(), dy.step(), 0, picture.roi());
    }
};

}
