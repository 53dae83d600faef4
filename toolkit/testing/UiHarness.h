#pragma once
// UiHarness: everything a widget test needs, without a display and without sleeping.
//
// It makes an off-screen screen, stops the toolkit clock (time moves only by advance()), and shows one
// RecordingOwner covering the screen: widgets made with make<T>() are its children, so every message they
// send their owner is recorded there. Input is given at a widget, in the widget's own bottom-up coordinates
// (its centre when no point is given), and goes through the screen exactly as a window's input would.
//
//     UiHarness ui;
//     auto* button = ui.make<MyButton>(MyButton::InitArgs(...), Glob::BottomLeft(10, 10));
//     ui.click(button);
//     EXPECT_EQ(ui.owner().count(MyButton::clickedMsg), 1u);
//
// click() is always a single click: if the last press was recent enough to pair with it, the clock is moved
// past the double-click time first. doubleClick() makes a pair on purpose.
//
// Painting happens only in step() or flush(); the pixel readers flush first.

#include "toolkit/gfx/Image.h"
#include "toolkit/platform/OffscreenBackend.h"
#include "toolkit/support/Clock.h"
#include "toolkit/testing/RecordingOwner.h"
#include "toolkit/ui/Event.h"
#include "toolkit/ui/Glob.h"
#include "toolkit/ui/Screen.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>

class UiHarness {
public:
    explicit UiHarness(uint16_t width = 1024, uint16_t height = 768);
    ~UiHarness();
    UiHarness(const UiHarness&) = delete;
    UiHarness& operator=(const UiHarness&) = delete;

    Screen& screen() { return *m_screen; }
    OffscreenBackend& backend() { return *m_backend; }
    RecordingOwner& owner() { return *m_owner; }
    Cv::TestClock& clock() { return m_clock; }

    // A child of the recording owner, placed in it.
    template <typename T>
    T* make(const typename T::InitArgs& args, const WidgetPosition& position = Glob::BottomLeft(0, 0))
    {
        return m_owner->addWidget<T>(args, position);
    }
    // A top-level widget shown on the screen with its bottom-left corner at `at`.
    template <typename T> T* makeTopLevel(const typename T::InitArgs& args, XY<int> at)
    {
        T* made = new T(args);
        show(made, at);
        return made;
    }
    void show(Glob* topLevel, XY<int> at);

    // ---- Input at a widget, in its own coordinates (default: its centre)
    void click(Glob* widget, std::optional<XY<int>> at = {}, int button = Event::LeftButton, int modifiers = 0);
    void doubleClick(Glob* widget, std::optional<XY<int>> at = {}, int button = Event::LeftButton);
    void press(Glob* widget, std::optional<XY<int>> at = {}, int button = Event::LeftButton, int modifiers = 0);
    void release(Glob* widget, std::optional<XY<int>> at = {}, int button = Event::LeftButton, int modifiers = 0);
    // Moves the pointer there (a drag when a button is held).
    void moveTo(Glob* widget, std::optional<XY<int>> at = {}, int modifiers = 0);
    // Press at `from`, move in `steps` even steps to `to` (both in the widget's coordinates; `to` may lie
    // outside it), release there.
    void drag(Glob* widget, XY<int> from, XY<int> to, int steps = 4, int button = Event::LeftButton);
    void wheel(Glob* widget, int notches, std::optional<XY<int>> at = {});
    // Input in screen coordinates, for places no widget covers.
    void clickAt(XY<int> screenPos, int button = Event::LeftButton, int modifiers = 0);
    // Keys go to the focused widget.
    void typeText(std::wstring_view text);
    void pressKey(int key, int modifiers = 0);
    bool focus(Glob* widget);

    // ---- The loop and the clock
    // Turns of the event loop: queued input, deferred calls, background tasks, timers, one flush each.
    void step(int turns = 1);
    // Moves the toolkit clock on and runs the timers (tooltips); no real time passes.
    void advance(double ms);
    void flush();

    // ---- Pixels (bottom-up screen coordinates; each flushes first)
    Colour pixel(XY<int> screenPos);
    // A pixel of a widget, in its own coordinates.
    Colour pixelAt(const Glob* widget, XY<int> local);
    Pictor::Image grab(const GlobBox& screenArea);
    bool savePng(const std::string& utf8Path);

    // The screen position of a point of a widget (its centre when none is given).
    static XY<int> toScreen(const Glob* widget, std::optional<XY<int>> at = {});

private:
    // Moves the clock past the double-click time when the last press could still pair with the next.
    void separateFromLastPress();

private:
    Cv::TestClock m_clock;
    OffscreenBackend* m_backend = nullptr;
    std::unique_ptr<Screen> m_screen;
    RecordingOwner* m_owner = nullptr;
};
