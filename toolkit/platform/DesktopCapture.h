#pragma once
// DesktopCapture: reads what the whole desktop shows, other programs' windows included, so that a colour
// picked with the eyedropper is the colour the user sees wherever it lies. A window backend keeps one when the
// window system lets it look; without one the screen answers from its own composed image.
//
// Coordinates are the desktop's own: x to the right and y downward from the top-left of the whole desktop.

#include "toolkit/gfx/Image.h"

#include <memory>

class DesktopCapture {
public:
    virtual ~DesktopCapture() = default;

    // The opaque pixels of the desktop area, clipped to the desktop; null when nothing of it lies on the
    // desktop or the display cannot be read.
    virtual Pictor::Image capture(int x, int yFromTop, int width, int height) = 0;
    // The desktop's size in pixels.
    virtual int desktopWidth() const = 0;
    virtual int desktopHeight() const = 0;

    // A capture of an X11 display through XCB (null name: the DISPLAY variable); null when the display cannot
    // be opened or keeps its pixels in a form we do not read (fewer than 24 bits of colour).
    static std::unique_ptr<DesktopCapture> openX11(const char* displayName = nullptr);
};
