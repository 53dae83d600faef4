#include "toolkit/gfx/Image.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>

namespace Pictor {

Image::Image(int width, int height)
{
    if (width <= 0 || height <= 0 || width > maxDimension || height > maxDimension)
        return;
    const int stride = width * 4;
    // calloc: large images come back as untouched zero pages, so a transparent image costs nothing until drawn on.
    auto* memory = static_cast<uint8_t*>(std::calloc(static_cast<size_t>(stride) * static_cast<size_t>(height), 1));
    if (!memory)
        return;
    m_pixels = std::shared_ptr<uint8_t[]>(memory, [](uint8_t* p) { std::free(p); });
    m_width = width;
    m_height = height;
    m_stride = stride;
}

uint32_t Image::pixel(int x, int yFromTop) const
{
    if (isNull() || x < 0 || yFromTop < 0 || x >= m_width || yFromTop >= m_height)
        return 0;
    return row(yFromTop)[x];
}

void Image::setPixel(int x, int yFromTop, uint32_t argb)
{
    if (isNull() || x < 0 || yFromTop < 0 || x >= m_width || yFromTop >= m_height)
        return;
    row(yFromTop)[x] = argb;
}

Colour Image::colourAt(int x, int yFromTop) const
{
    return unpremultiplied(pixel(x, yFromTop));
}

void Image::fill(uint32_t argb)
{
    for (int y = 0; y < m_height; ++y)
        std::fill_n(row(y), m_width, argb);
}

Image Image::copy() const
{
    if (isNull())
        return {};
    Image result(m_width, m_height);
    if (!result.isNull())
        std::memcpy(result.bytes(), bytes(), static_cast<size_t>(m_stride) * static_cast<size_t>(m_height));
    return result;
}

uint32_t Image::premultiplied(const Colour& colour)
{
    const double a = colour.a();
    const auto channel = [a](double c) { return static_cast<uint32_t>(std::lround(c * a * 255.0)); };
    return (static_cast<uint32_t>(colour.a8()) << 24) | (channel(colour.r()) << 16) | (channel(colour.g()) << 8)
        | channel(colour.b());
}

Colour Image::unpremultiplied(uint32_t argb)
{
    const uint32_t a = argb >> 24;
    if (a == 0)
        return Colour(0, 0, 0, 0);
    const auto channel = [a](uint32_t c) { return std::min(1.0, static_cast<double>(c) / static_cast<double>(a)); };
    return Colour(channel((argb >> 16) & 0xFF), channel((argb >> 8) & 0xFF), channel(argb & 0xFF), a / 255.0);
}

} // namespace Pictor
