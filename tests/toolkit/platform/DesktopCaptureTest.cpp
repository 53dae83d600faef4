#include "toolkit/platform/DesktopCapture.h"

#include "toolkit/platform/SdlBackend.h"
#include "toolkit/ui/Screen.h"

#include <gtest/gtest.h>
#include <xcb/xcb.h>

#include <cstdlib>

TEST(DesktopCapture, AnX11DisplayThatCannotBeOpenedGivesNoCapture)
{
    EXPECT_EQ(DesktopCapture::openX11(":4242"), nullptr);
}

// Needs an X display of 24 bits or more (xvfb-run -s "-screen 0 640x480x24 -noreset": a server that resets
// between clients refuses the next connection for a moment); skipped without one.
class OnAnX11Desktop : public ::testing::Test {
protected:
    void SetUp() override
    {
        if (!std::getenv("DISPLAY"))
            GTEST_SKIP() << "no X display";
        capture = DesktopCapture::openX11();
        if (!capture)
            GTEST_SKIP() << "the X display has fewer than 24 bits of colour";
        connection = xcb_connect(nullptr, nullptr);
        root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data;
    }
    void TearDown() override
    {
        if (connection)
            xcb_disconnect(connection);
    }

    // Fills a rectangle of the root window, as another program's window would show it, and waits until the
    // server has done it.
    void paintDesktop(int16_t x, int16_t y, uint16_t w, uint16_t h, uint32_t rgb)
    {
        const xcb_gcontext_t gc = xcb_generate_id(connection);
        const uint32_t values[] = {rgb, 0};
        xcb_create_gc(connection, gc, root->root, XCB_GC_FOREGROUND | XCB_GC_GRAPHICS_EXPOSURES, values);
        const xcb_rectangle_t rect{x, y, w, h};
        xcb_poly_fill_rectangle(connection, root->root, gc, 1, &rect);
        xcb_free_gc(connection, gc);
        std::free(xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr));
    }

    std::unique_ptr<DesktopCapture> capture;
    xcb_connection_t* connection = nullptr;
    xcb_screen_t* root = nullptr;
};

TEST_F(OnAnX11Desktop, ReadsWhatTheDesktopShows)
{
    paintDesktop(10, 20, 4, 3, 0x123456);
    paintDesktop(14, 20, 4, 3, 0xabcdef);
    const Pictor::Image image = capture->capture(12, 20, 4, 3);
    ASSERT_FALSE(image.isNull());
    EXPECT_EQ(image.width(), 4);
    EXPECT_EQ(image.pixel(1, 2), 0xff123456u);
    EXPECT_EQ(image.pixel(2, 0), 0xffabcdefu);
}

TEST_F(OnAnX11Desktop, AnAreaReachingOffTheDesktopIsClippedToIt)
{
    const Pictor::Image image = capture->capture(-5, capture->desktopHeight() - 2, 10, 10);
    ASSERT_FALSE(image.isNull());
    EXPECT_EQ(image.width(), 5);
    EXPECT_EQ(image.height(), 2);
    EXPECT_TRUE(capture->capture(capture->desktopWidth(), 0, 10, 10).isNull());
}

TEST_F(OnAnX11Desktop, AWindowsScreenSamplesTheDesktopBeyondTheWindow)
{
    paintDesktop(0, 0, root->width_in_pixels, root->height_in_pixels, 0x20c040);
    const char* previous = std::getenv("SDL_VIDEODRIVER");
    const std::string restore = previous ? previous : "";
    setenv("SDL_VIDEODRIVER", "x11", 1);
    SdlBackend::Options options;
    options.width = 100;
    options.height = 80;
    std::unique_ptr<SdlBackend> backend = SdlBackend::create(options);
    previous ? setenv("SDL_VIDEODRIVER", restore.c_str(), 1) : unsetenv("SDL_VIDEODRIVER");
    ASSERT_NE(backend, nullptr) << SdlBackend::lastError();
    EXPECT_TRUE(backend->hasDesktopCapture());
    Screen screen(100, 80, std::move(backend));
    // Left of the window, where the screen's own image has nothing.
    const Pictor::Image outside = pictor_getScreenRect(GlobBox(-30, 10, -20, 20));
    ASSERT_FALSE(outside.isNull());
    EXPECT_EQ(outside.pixel(5, 5), 0xff20c040u);
}
