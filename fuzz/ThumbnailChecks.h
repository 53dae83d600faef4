#pragma once
// What every thumbnail fuzz target checks: the cache's decode of any bytes gives an empty surface or a sound
// one, whose premultiplied pixels keep each colour within its alpha, and which scales down once more.
#include "toolkit/gfx/ImageCache.h"
#include "toolkit/gfx/ImageConverter.h"
#include "toolkit/gfx/ImageIO.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

inline void checkThumbnailDecode(const uint8_t* data, size_t size, Pictor::ImageFormat onlyFormat)
{
    if (Pictor::sniffImageFormat(data, size) != onlyFormat)
        return;
    for (XY<int> atLeast : { XY<int>(0, 40), XY<int>(7, 5), XY<int>() }) {
        const Cv::Image::Surface surface = CvImage::Cache::decode(data, size, atLeast);
        if (surface.empty())
            continue;
        if (surface.width() <= 0 || surface.height() <= 0 || surface.width() > Pictor::Image::maxDimension
            || surface.height() > Pictor::Image::maxDimension
            || int64_t(surface.width()) * surface.height() > CvImage::Cache::maxPixelsPerImage)
            std::abort();
        for (int y = 0; y < surface.height(); ++y)
            for (int x = 0; x < surface.width(); ++x) {
                const uint32_t p = surface.image().row(y)[x];
                const uint32_t a = p >> 24;
                if (((p >> 16) & 0xFF) > a || ((p >> 8) & 0xFF) > a || (p & 0xFF) > a)
                    std::abort();
            }
        Cv::Image::Surface half((surface.width() + 1) / 2, (surface.height() + 1) / 2);
        if (!ImageConverter::resize(surface, half))
            std::abort();
    }
}
