// The X11 desktop, read through XCB: one GetImage request of the root window per capture. XCB rather than
// Xlib because it reports errors as values instead of calling a process-wide error handler, so a capture that
// fails (the display went away) cannot end the program.
#include "toolkit/platform/DesktopCapture.h"

#include <xcb/xcb.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>

namespace {

class XcbDesktopCapture final : public DesktopCapture {
public:
    XcbDesktopCapture(xcb_connection_t* connection, const xcb_screen_t& screen)
        : m_connection(connection)
        , m_root(screen.root)
        , m_width(screen.width_in_pixels)
        , m_height(screen.height_in_pixels)
    {
    }
    ~XcbDesktopCapture() override { xcb_disconnect(m_connection); }
    XcbDesktopCapture(const XcbDesktopCapture&) = delete;
    XcbDesktopCapture& operator=(const XcbDesktopCapture&) = delete;

    int desktopWidth() const override { return m_width; }
    int desktopHeight() const override { return m_height; }

    Pictor::Image capture(int x, int yFromTop, int width, int height) override
    {
        // GetImage refuses any part outside the root window, so ask only for what lies on it.
        const int x0 = std::max(x, 0);
        const int y0 = std::max(yFromTop, 0);
        const int x1 = std::min(x + width, m_width);
        const int y1 = std::min(yFromTop + height, m_height);
        if (x0 >= x1 || y0 >= y1 || xcb_connection_has_error(m_connection))
            return {};
        const xcb_get_image_cookie_t cookie =
            xcb_get_image(m_connection, XCB_IMAGE_FORMAT_Z_PIXMAP, m_root, static_cast<int16_t>(x0),
                          static_cast<int16_t>(y0), static_cast<uint16_t>(x1 - x0), static_cast<uint16_t>(y1 - y0),
                          ~0u);
        xcb_generic_error_t* error = nullptr;
        xcb_get_image_reply_t* reply = xcb_get_image_reply(m_connection, cookie, &error);
        std::free(error);
        if (!reply)
            return {};
        Pictor::Image image(x1 - x0, y1 - y0);
        const int length = xcb_get_image_data_length(reply);
        const size_t rowBytes = static_cast<size_t>(x1 - x0) * 4;
        // Depths of 24 and 32 bits arrive as 32-bit pixels, 0x00RRGGBB in our byte order; rows are padded
        // to 32 bits, which 32-bit pixels already are.
        if (image.isNull() || (reply->depth != 24 && reply->depth != 32)
            || static_cast<size_t>(length) < rowBytes * static_cast<size_t>(y1 - y0)) {
            std::free(reply);
            return {};
        }
        const uint8_t* data = xcb_get_image_data(reply);
        for (int row = 0; row < image.height(); ++row) {
            uint32_t* out = image.row(row);
            std::memcpy(out, data + rowBytes * static_cast<size_t>(row), rowBytes);
            for (int col = 0; col < image.width(); ++col)
                out[col] |= 0xff000000u;
        }
        std::free(reply);
        return image;
    }

private:
    xcb_connection_t* m_connection;
    xcb_window_t m_root;
    int m_width;
    int m_height;
};

} // namespace

std::unique_ptr<DesktopCapture> DesktopCapture::openX11(const char* displayName)
{
    int screenNumber = 0;
    xcb_connection_t* connection = xcb_connect(displayName, &screenNumber);
    if (xcb_connection_has_error(connection)) {
        xcb_disconnect(connection);
        return nullptr;
    }
    xcb_screen_iterator_t it = xcb_setup_roots_iterator(xcb_get_setup(connection));
    for (int i = 0; i < screenNumber && it.rem; ++i)
        xcb_screen_next(&it);
    if (!it.rem || it.data->root_depth < 24) {
        xcb_disconnect(connection);
        return nullptr;
    }
    return std::make_unique<XcbDesktopCapture>(connection, *it.data);
}
