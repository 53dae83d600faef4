#pragma once
// Cv::Image::Surface: a picture held for drawing, with the pixel format and the kind of transparency it has.
// The pixels are a Pictor::Image handle, so surfaces are cheap to copy and copies share pixels.

#include "toolkit/gfx/Image.h"

#include <cstdint>

namespace Cv::Image {

class Surface {
public:
    // Four bytes a pixel, premultiplied 0xAARRGGBB words: the code spells "ARGB" in memory order.
    static constexpr uint32_t formatARGB = 0x42475241;

    // How the alpha of the pixels is to be treated by whoever composites the surface.
    enum Transparency : uint8_t {
        UnknownTransparency = 0,
        Opaque = 1,
        BinaryAlpha = 2,
        FullAlpha = 3,
    };

    Surface() = default;
    // Transparent pixels of that size; empty when the size is out of range.
    Surface(int width, int height, uint32_t format = formatARGB);
    explicit Surface(Pictor::Image pixels, uint32_t format = formatARGB);

    bool empty() const { return m_pixels.isNull(); }
    int width() const { return m_pixels.width(); }
    int height() const { return m_pixels.height(); }
    uint32_t getFormat() const { return m_format; }
    const Pictor::Image& image() const { return m_pixels; }
    Pictor::Image& image() { return m_pixels; }
    // Bytes held by the pixels.
    size_t byteSize() const { return empty() ? 0 : size_t(m_pixels.stride()) * size_t(m_pixels.height()); }

    void setTransparencyType(uint8_t type) { m_transparency = type; }
    uint8_t getTransparencyType() const { return m_transparency; }

private:
    Pictor::Image m_pixels;
    uint32_t m_format = formatARGB;
    uint8_t m_transparency = UnknownTransparency;
};

} // namespace Cv::Image
