#include "toolkit/gfx/Surface.h"

#include <utility>

namespace Cv::Image {

Surface::Surface(int width, int height, uint32_t format)
    : m_pixels(width, height)
    , m_format(format)
{
}

Surface::Surface(Pictor::Image pixels, uint32_t format)
    : m_pixels(std::move(pixels))
    , m_format(format)
{
}

} // namespace Cv::Image
