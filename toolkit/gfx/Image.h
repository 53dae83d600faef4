#pragma once
// Pictor::Image: a block of 32-bit pixels, premultiplied ARGB in native byte order (0xAARRGGBB as a uint32_t),
// the form the drawing code composites in without conversion.
//
// An Image is a handle: copies share the pixels (one reference count, no copying), so images are cheap to
// pass around and to keep in caches. Drawing into one shows in all its copies; take copy() first to change
// pixels privately.
//
// Rows are stored top row first, as in image files and on screen. The toolkit's drawing coordinates grow
// upward; the painter converts, so only code that touches pixels directly sees this order.
//
// A default image, and one whose size is not positive or larger than maxDimension on a side, is null.
// Pixels may be read and written from any thread as long as no two threads write the same image.

#include "toolkit/support/Colour.h"

#include <cstddef>
#include <cstdint>
#include <memory>

namespace Pictor {

class Image {
public:
    static constexpr int maxDimension = 32767;

    Image() = default;
    // Fully transparent pixels; null when the size is out of range or memory runs out.
    Image(int width, int height);

    bool isNull() const { return !m_pixels; }
    explicit operator bool() const { return !isNull(); }

    int width() const { return m_width; }
    int height() const { return m_height; }
    // Bytes from one row to the next.
    int stride() const { return m_stride; }

    // Row 0 is the top row. Rows outside the image are the caller's fault.
    uint32_t* row(int y) { return reinterpret_cast<uint32_t*>(m_pixels.get() + static_cast<size_t>(y) * m_stride); }
    const uint32_t* row(int y) const
    {
        return reinterpret_cast<const uint32_t*>(m_pixels.get() + static_cast<size_t>(y) * m_stride);
    }
    uint8_t* bytes() { return m_pixels.get(); }
    const uint8_t* bytes() const { return m_pixels.get(); }

    // Top-down pixel access; answers 0 (transparent) outside the image.
    uint32_t pixel(int x, int yFromTop) const;
    void setPixel(int x, int yFromTop, uint32_t argb);
    // The colour at a pixel with the premultiplication undone.
    Colour colourAt(int x, int yFromTop) const;

    void fill(uint32_t argb);
    void fill(const Colour& colour) { fill(premultiplied(colour)); }

    // A private copy of the pixels.
    Image copy() const;
    bool sharesPixelsWith(const Image& other) const { return m_pixels && m_pixels == other.m_pixels; }

    static uint32_t premultiplied(const Colour& colour);
    static Colour unpremultiplied(uint32_t argb);

private:
    std::shared_ptr<uint8_t[]> m_pixels;
    int m_width = 0;
    int m_height = 0;
    int m_stride = 0;
};

} // namespace Pictor
