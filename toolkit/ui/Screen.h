#pragma once
// Screen: the editor's one window. It holds the top-level widgets in stacking order (bottom first), composes
// them into one image, and turns the backend's input into events for widgets.
//
// Input. Positions come in bottom-up screen coordinates. The screen tells the global mouse listeners, offers
// the event to the intercept stacks (modal loops, menus, screen-wide captures), then hit-tests: the deepest
// visible widget under the pointer receives the event in its own coordinates; if it does not handle it, its
// parent is offered it, and so on up. A press is taken by the widget that handles it (or the one hit), which
// keeps every drag and the release until all buttons are up. A press on a disabled widget goes nowhere. Keys
// go to the focused widget and up its parents; an unhandled Tab or back-tab moves the focus. Two presses of
// one button on one widget, close in place and within getDoubleClickTime() on the toolkit clock, make a
// double click (Event::clickCount 2).
//
// Painting. invalidate() only records an area. flush() paints every recorded area in one pass, clipped to
// them all: each widget that meets some area is drawn once, however many areas meet it, and inside each only
// the children that meet an area. processEvents() is
// one turn of the loop: input, deferred calls, the tooltip timer, then one flush.

#include "toolkit/gfx/Image.h"
#include "toolkit/support/IdStamp.h"
#include "toolkit/support/LightweightString.h"
#include "toolkit/support/Notifier.h"
#include "toolkit/support/Ptr.h"
#include "toolkit/support/XY.h"
#include "toolkit/ui/Canvas.h"
#include "toolkit/ui/Event.h"
#include "toolkit/ui/Glob.h"
#include "toolkit/ui/ScreenBackend.h"
#include "toolkit/ui/WidgetPosition.h"

#include <memory>
#include <string_view>
#include <vector>

namespace Pictor {
class Painter;
} // namespace Pictor

// Cursor shapes a widget or a tool can ask for.
enum eCursor : int {
    CursorInherit = -1,
    CursorArrow = 0,
    CursorIBeam = 1,
    CursorCrosshair = 2,
    CursorHand = 3,
    CursorWait = 4,
    CursorResizeHorizontal = 5,
    CursorResizeVertical = 6,
    CursorResizeDiagonal = 7,
    CursorMove = 8,
    CursorNotAllowed = 9,
    CursorEyedropper = 26,
};

// Filters that see input before the widgets do: a modal loop swallows clicks outside its panel, a screen-wide
// capture sees every press. The newest filter is asked first. A filter's react() answering true consumes the
// event; mouse events reach it in its own coordinates (screenPos holds the screen position).
class EventInterceptStack {
public:
    enum Flags : int {
        Mouse = 0x100,
        Keys = 0x200,
        // Events aimed inside the filter widget itself go the ordinary way (a modal panel's own buttons).
        OutsideOnly = 0x400,
    };

    // Answers the filter's stamp, for removing it; a null stamp when `filter` is not a live widget.
    explicit EventInterceptStack(bool usable = true)
        : m_usable(usable)
    {
    }

    IdStamp push(Glob* filter, int flags);
    bool remove(IdStamp id);
    bool empty() const;
    size_t size() const;

    // For the screen: offers an event (screen coordinates) to the filters; answers true when one consumed it.
    bool offer(const Event& event, Glob* hit);

private:
    friend class Screen;
    struct Entry {
        GlobWatch filter;
        int flags = 0;
        IdStamp id;
    };
    std::vector<Entry> m_entries;
    bool m_usable = true;
};

// The attached object of a global mouse notification: the event, in screen coordinates.
class MouseEventInfo : public iObject {
public:
    explicit MouseEventInfo(const Event& e)
        : event(e)
    {
    }
    Event event;
};

class Screen : public Canvas {
public:
    static constexpr int NumInterceptPriorities = 2;

    // The screen becomes current; a backend of null makes it off screen.
    Screen(uint16_t width, uint16_t height, std::unique_ptr<ScreenBackend> backend = {});
    // Destroys the top-level widgets, topmost first.
    ~Screen() override;
    Screen(const Screen&) = delete;
    Screen& operator=(const Screen&) = delete;

    // The screen made last that still exists, or null.
    static Screen* current();
    Screen* getScreen() override { return this; }
    ScreenBackend& backend() { return *m_backend; }

    XY<int> getSize() const { return { m_width, m_height }; }
    // The window changed size: the image is remade and everything repainted. Top-level widgets keep their
    // positions (GlobManager::makeSafe brings one back into view).
    void setSize(uint16_t width, uint16_t height);
    GlobBox getArea() const { return GlobBox(0, 0, m_width, m_height); }

    // ---- Top-level widgets, bottom of the stack first
    // Takes ownership and shows the widget on top, at its position. Refuses widgets with a parent.
    bool addTopLevel(Glob* glob);
    // Takes the widget off the screen without destroying it; ownership passes to the caller.
    bool removeTopLevel(Glob* glob);
    void raise(Glob* glob);
    void lower(Glob* glob);
    const std::vector<Glob*>& getTopLevels() const { return m_topLevels; }
    // The deepest visible widget at a screen point, or null.
    Glob* widgetAt(XY<int> screenPos) const;

    // ---- Input, in bottom-up screen coordinates
    void mouseButton(XY<int> pos, int button, bool down, int modifiers = 0);
    void mouseMove(XY<int> pos, int modifiers = 0);
    void mouseWheel(XY<int> pos, int notches, int modifiers = 0);
    void key(int key, int modifiers = 0);
    // Each character typed becomes one key event.
    void text(std::wstring_view typed, int modifiers = 0);
    XY<int> getMousePos() const { return m_mousePos; }
    int getButtonsHeld() const { return m_buttons; }
    // When the last press happened, in toolkit clock milliseconds.
    double getLastPressTime() const { return m_lastPressTime; }
    static int getDoubleClickTime() { return 400; }
    static int getDoubleClickDistance() { return 4; }

    // ---- Focus and capture
    Glob* getFocus() const { return m_focus.get(); }
    // Answers false for a dead, hidden or disabled widget (the focus then stays where it was).
    bool setFocus(Glob* glob);
    Glob* getCapture() const { return m_capture.get(); }
    void setCapture(Glob* glob);
    void releaseCapture();
    EventInterceptStack& getInterceptStack(int priority);
    // Global mouse listeners hear every mouse event (message "mouse" with a MouseEventInfo attached) before
    // any widget does; releasing the guard removes the listener.
    Cv::Ptr<Cv::Guard> addMouseListener(const Cv::Ptr<iCallbackBase<int, NotifyMsg>>& listener);

    // ---- Painting
    void invalidate(const GlobBox& area);
    void invalidateAll();
    bool needsPaint() const { return !m_dirty.empty(); }
    // Paints what is dirty and presents it. Does nothing while a Pictor::UpdateDeferrer lives (the last
    // one to end flushes).
    void flush();
    const Pictor::Image& getImage() const { return m_image; }
    // A copy of a screen area as it was last painted, clipped to the screen; a null image when nothing is
    // left of it.
    Pictor::Image grab(const GlobBox& area) const;
    // What the user sees of a screen area: the desktop when the backend can read it (other programs' windows
    // included, and beyond the window's edges), else grab(area).
    Pictor::Image captureShown(const GlobBox& area) const;
    // How many widgets the last flush drew (children included).
    size_t getLastPaintCount() const { return m_lastPaintCount; }
    // The painter of the paint pass in progress, or a scratch painter outside one.
    static Pictor::Painter& currentPainter();

    // ---- Cursor, tooltips, clipboard
    void setCursor(int cursorId);
    int getCursor() const { return m_cursor; }
    // When off, the pointer's position no longer chooses the cursor (a tool holds its own).
    void enableMouseContextLogic(bool enabled) { m_mouseContextLogic = enabled; }
    void enableTooltips(bool enabled);
    bool tooltipsEnabled() const { return m_tooltipsEnabled; }
    // The tooltip showing now, or null. It appears when the pointer rests getTooltipDelay() ms on a widget
    // with a context string, and goes at the next movement, press or key.
    Glob* getTooltip() const { return m_tooltip.get(); }
    static int getTooltipDelay() { return 700; }
    LightweightString<wchar_t> getClipboardText();
    void setClipboardText(const LightweightString<wchar_t>& text);

    // ---- The loop
    // One turn: input from the backend, deferred calls and background tasks, timers, then a flush. Answers
    // false once the backend reports that the user closed the window.
    bool processEvents();
    // Timers only (the tooltip): for a loop that feeds input itself.
    void tick();

private:
    friend class Glob;
    friend class Drawable;
    friend class Pictor::UpdateDeferrer;

    // Called by Glob when a widget dies or leaves the tree: every reference to it (or, for the subtree form,
    // to anything inside it) is dropped.
    void forgetGlob(Glob* glob);
    void forgetSubtree(Glob* glob);
    void releaseHeldRedraws();

    Event makeMouseEvent(int type, int button, int modifiers) const;
    bool offerToIntercepts(const Event& event, Glob* hit);
    // Hands an event to `target` and up its parents until one handles it; answers the handler or null.
    Glob* dispatch(Glob* target, const Event& screenEvent);
    void updateHover(Glob* hit, const Event& moveEvent);
    void updateCursor(Glob* hit);
    void hideTooltip();
    void paintAreas(Pictor::Painter& painter, const std::vector<GlobBox>& areas);
    void paintGlob(Pictor::Painter& painter, Glob* glob, XY<int> origin, const GlobBox& clip, XY<int> parentOnScreen,
                   const std::vector<GlobBox>& areas);

    uint16_t m_width;
    uint16_t m_height;
    std::unique_ptr<ScreenBackend> m_backend;
    Pictor::Image m_image;
    std::vector<Glob*> m_topLevels;
    std::vector<GlobBox> m_dirty;
    // Areas asked for while redraws were disabled.
    std::vector<GlobBox> m_held;
    EventInterceptStack m_intercepts[NumInterceptPriorities];
    Notifier m_mouseListeners;

    GlobWatch m_focus;
    GlobWatch m_capture;
    GlobWatch m_hover;
    GlobWatch m_tooltip;
    GlobWatch m_tooltipFor;
    XY<int> m_mousePos;
    int m_buttons = 0;
    int m_cursor = CursorArrow;
    bool m_mouseContextLogic = true;
    bool m_tooltipsEnabled = true;
    bool m_painting = false;
    bool m_flushWanted = false;
    double m_lastMoveTime = 0.0;
    size_t m_lastPaintCount = 0;

    // The press before, for double clicks.
    GlobWatch m_lastPressTarget;
    int m_lastPressButton = 0;
    double m_lastPressTime = -1e9;
    XY<int> m_lastPressPos;
    int m_lastClickCount = 0;

    Screen* m_previous = nullptr;
};

// The toolkit's free functions over the current screen. Each does nothing (or answers null) without one.
// The screen rectangle is Screen::captureShown.
Pictor::Image pictor_getScreenRect(const GlobBox& area);
void pictor_setCursor(int cursorId);
void pictor_enableMouseContextLogic(bool enabled);
void CvTooltipsEnable(bool enabled);
// The first priority (0) is asked before the second (1).
EventInterceptStack& getEventInterceptStack(int priority = 0);
XY<int> glib_getMousePos();

namespace Pictor {
Cv::Ptr<Cv::Guard> addMouseListener(const Cv::Ptr<iCallbackBase<int, NotifyMsg>>& listener);
} // namespace Pictor
