#include "toolkit/gfx/SamplePictures.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <vector>

namespace Pictor {

namespace {

uint32_t pack(double r, double g, double b)
{
    auto byte = [](double v) { return static_cast<uint32_t>(std::clamp(v, 0.0, 1.0) * 255.0 + 0.5); };
    return 0xFF000000u | (byte(r) << 16) | (byte(g) << 8) | byte(b);
}

} // namespace

Image makeSamplePicture(int width, int height, unsigned seed)
{
    Image image(width, height);
    if (image.isNull())
        return image;
    const double hue = (seed * 0.618034) - std::floor(seed * 0.618034);
    const double sunX = 0.2 + 0.6 * hue;
    const double sunY = 0.25 + 0.1 * ((seed * 7) % 5);
    const double sunR = 0.08 + 0.02 * (seed % 3);
    // The hill line of each column, as a fraction of the height from the top.
    std::vector<double> ridge(static_cast<size_t>(width));
    for (int x = 0; x < width; ++x) {
        const double u = double(x) / width;
        ridge[static_cast<size_t>(x)] = 0.55 + 0.12 * std::sin(u * 6.0 + seed) + 0.05 * std::sin(u * 17.0 + 2.0 * seed);
    }
    uint32_t noise = seed * 2654435761u + 1;
    for (int y = 0; y < height; ++y) {
        uint32_t* row = image.row(y);
        const double v = double(y) / height;
        for (int x = 0; x < width; ++x) {
            noise = noise * 1664525u + 1013904223u;
            const double grain = ((noise >> 24) / 255.0 - 0.5) * 0.04;
            const double u = double(x) / width;
            double r, g, b;
            if (v > ridge[static_cast<size_t>(x)]) {
                const double depth = (v - ridge[static_cast<size_t>(x)]) * 2.0;
                r = 0.15 + 0.3 * hue - 0.1 * depth;
                g = 0.45 - 0.2 * depth;
                b = 0.12 + 0.1 * hue;
            } else {
                const double dx = (u - sunX) * width / height;
                const double dy = v - sunY;
                const double d = std::sqrt(dx * dx + dy * dy);
                r = 0.35 + 0.4 * v + 0.2 * hue;
                g = 0.55 + 0.25 * v;
                b = 0.9 - 0.2 * v;
                if (d < sunR) {
                    r = 1.0;
                    g = 0.92;
                    b = 0.6;
                }
            }
            row[x] = pack(r + grain, g + grain, b + grain);
        }
    }
    return image;
}

} // namespace Pictor
