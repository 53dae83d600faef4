#pragma once
// ScreenBackend: what the screen needs from a display. The screen composes every widget into one image;
// a backend shows that image (or not, off screen), feeds the user's input back into the screen as plain
// calls (Screen::mouseButton, mouseMove, mouseWheel, key, text), and carries the cursor shape and the
// clipboard. The off-screen backend needs no display at all; a window backend implements the same few calls.

#include "toolkit/support/LightweightString.h"
#include "toolkit/ui/WidgetPosition.h"

#include <vector>

class Screen;
namespace Pictor {
class Image;
}

class ScreenBackend {
public:
    virtual ~ScreenBackend() = default;

    // The screen took the backend; the size is the screen's.
    virtual void attach(Screen& screen) = 0;
    // Feeds the input waiting now into the screen. Answers false once the user has asked to close.
    virtual bool pollEvents(Screen& screen) = 0;
    // Sleeps until input arrives, wake() is called, or the time runs out. Off screen it returns at once.
    virtual void waitForEvents(int timeoutMs) = 0;
    // Called from any thread to end a waitForEvents early (work was handed to the main thread).
    virtual void wake() { }
    // Shows the image; `changed` lists the areas painted since the last call (bottom-up screen coordinates).
    virtual void present(const Pictor::Image& image, const std::vector<GlobBox>& changed) = 0;
    virtual void setCursorShape(int cursorId) = 0;
    // The desktop as the user sees it, other programs included, for an area in the screen's bottom-up
    // coordinates (it may reach beyond the window). Null when the backend cannot see the desktop; the screen
    // then answers from its own composed image.
    virtual Pictor::Image captureDesktop(const GlobBox& area);
    virtual LightweightString<wchar_t> getClipboardText() = 0;
    virtual void setClipboardText(const LightweightString<wchar_t>& text) = 0;
};
