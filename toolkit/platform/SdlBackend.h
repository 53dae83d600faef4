#pragma once
// SdlBackend: the screen shown in a real desktop window.
//
// The screen composes everything into one image; this backend uploads the parts of it that changed into a
// streaming texture and shows it, and turns the window's mouse, wheel, keyboard and text input into the plain
// calls of the screen. The window may be resized by the user; the screen is then resized to follow it.
//
// Headless use: with SDL_VIDEODRIVER=offscreen the window exists only in memory, so the whole loop (and
// readPixels) runs without a display.
//
// Threads: everything here runs on the user-interface thread, except wake(), which any thread may call.

#include "toolkit/gfx/Image.h"
#include "toolkit/support/LightweightString.h"
#include "toolkit/ui/ScreenBackend.h"

#include <cstdint>
#include <memory>
#include <string>

class Screen;

class SdlBackend : public ScreenBackend {
public:
    struct Options {
        std::string title = "tessel";
        int width = 1280;
        int height = 800;
        bool resizable = true;
        // Made but not shown (tests, off-screen renders).
        bool hidden = false;
    };

    // Opens the window; null (with the reason in lastError()) when the video system or the window cannot be
    // set up, so a caller can fall back to an off-screen screen.
    static std::unique_ptr<SdlBackend> create(const Options& options);
    static std::string lastError();
    ~SdlBackend() override;
    SdlBackend(const SdlBackend&) = delete;
    SdlBackend& operator=(const SdlBackend&) = delete;

    // ---- ScreenBackend
    void attach(Screen& screen) override;
    bool pollEvents(Screen& screen) override;
    void waitForEvents(int timeoutMs) override;
    void wake() override;
    void present(const Pictor::Image& image, const std::vector<GlobBox>& changed) override;
    void setCursorShape(int cursorId) override;
    // On an X11 display: the whole desktop through XCB. Elsewhere null (the screen's own image serves).
    Pictor::Image captureDesktop(const GlobBox& area) override;
    LightweightString<wchar_t> getClipboardText() override;
    void setClipboardText(const LightweightString<wchar_t>& text) override;

    // The window's drawable size in pixels.
    XY<int> getWindowSize() const;
    // Asks for a new window size; the screen follows when the window reports the change.
    void setWindowSize(XY<int> size);
    // What the window shows now, read back from the renderer: proof that what was presented arrived.
    Pictor::Image readPixels() const;
    // Whether the desktop beyond the window can be read (an X11 display).
    bool hasDesktopCapture() const;
    // How many pixels the last present() uploaded (only the changed areas are sent).
    int64_t getLastUploadPixels() const { return m_lastUpload; }

    // The main loop: input, deferred calls and redraws, once per turn, sleeping while nothing happens. Ends
    // when the user closes the window, or when the last top-level widget has gone (once there was one).
    // Answers the number of turns taken.
    static int64_t run(Screen& screen);
    // The longest sleep of one turn, so that the toolkit's timers (tooltips) are served without input.
    static constexpr int timerServiceMs = 100;

private:
    struct State;
    explicit SdlBackend(std::unique_ptr<State> state);

    std::unique_ptr<State> m_state;
    int64_t m_lastUpload = 0;
};
