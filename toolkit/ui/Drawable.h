#pragma once
// Drawable: the process-wide switches around redrawing.
//
// Asking a widget to redraw never paints; it marks the widget's area dirty, and the screen paints every dirty
// area once per turn of the event loop. While redraws are disabled (a count, so disable/enable pairs nest),
// requests are held back instead; when the count returns to zero they are passed on, unless
// clearPendingRedraws() dropped them first (a builder that will show the finished panel in one go does that).
//
// Pictor::UpdateDeferrer goes one step further: while one lives, the screen does not paint at all, even when
// something asks it to paint at once; the paint happens when the last deferrer ends.

enum eRedrawFlag {
    NoRedraw = 0,
    Redraw = 1,
};

class Drawable {
public:
    static void disableRedraws();
    static void enableRedraws();
    // Forgets the requests held back while disabled.
    static void clearPendingRedraws();
    static bool redrawsEnabled();
};

namespace Pictor {

class UpdateDeferrer {
public:
    UpdateDeferrer();
    ~UpdateDeferrer();
    UpdateDeferrer(const UpdateDeferrer&) = delete;
    UpdateDeferrer& operator=(const UpdateDeferrer&) = delete;

    static bool active();
};

} // namespace Pictor

// Scope form of disableRedraws/enableRedraws.
class RedrawSuppressor {
public:
    RedrawSuppressor() { Drawable::disableRedraws(); }
    ~RedrawSuppressor() { Drawable::enableRedraws(); }
    RedrawSuppressor(const RedrawSuppressor&) = delete;
    RedrawSuppressor& operator=(const RedrawSuppressor&) = delete;
};
