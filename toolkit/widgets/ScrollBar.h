#pragma once
// ScrollBar: a vertical bar with an arrow button at each end and a thumb whose size is the visible fraction
// of what scrolls and whose position is where the view starts.
//
// Positions are fractions of the whole, measured from the top: a thumb at 0.25 of size 0.5 shows the second
// and third quarters. The position is kept within 0..1 - size, so the thumb never leaves the track.
//
// The bar does not scroll anything itself; it tells its owner, who moves the view and sets the thumb back:
//
//   input                                  | owner hears            | the bar itself
//   ---------------------------------------+------------------------+-------------------------------------
//   press on the up (down) arrow           | upButtonPressedMsg     | (downButtonPressedMsg)
//   wheel away from (towards) the user     | up (down), per notch   |
//   press in the track above (below) thumb | thumbMovedMsg          | pages: position -= (+=) size
//   drag of the thumb                      | thumbMovedMsg per move | position follows the pointer
//
// Holding an arrow or the track down repeats it: after repeatDelay ms, then every repeatInterval ms, on the
// toolkit clock, checked once per turn of the event loop. Track paging stops when the thumb reaches the
// pointer.
//
// isScrollBarMsg tells an owner's handler that a message is one of these three.

#include "toolkit/support/BackgroundTasks.h"
#include "toolkit/ui/Glob.h"
#include "toolkit/ui/Transient.h"

#include <cstdint>

class ScrollBar : public Glob {
public:
    struct InitArgs : GlobCreationInfo {
        InitArgs() = default;
        // A width of 0 is the standard scroll bar width.
        InitArgs(uint16_t h, uint16_t w = 0, const Palette& pal = Palette(), Canvas* c = nullptr)
            : GlobCreationInfo(w, h, pal, c)
        {
        }
        InitArgs(const GlobCreationInfo& info) : GlobCreationInfo(info) {}

        double thumbSize = 1.0;
        double thumbPos = 0.0;
    };

    explicit ScrollBar(const InitArgs& args);
    ScrollBar(uint16_t width, uint16_t height, const Palette& palette = Palette(), Canvas* canvas = nullptr);
    ScrollBar(const ScrollBar&) = default;
    ScrollBar(ScrollBar&&) = default;
    ScrollBar& operator=(const ScrollBar&) = default;
    ScrollBar& operator=(ScrollBar&&) = default;

    LightweightString<char> idstring() const override;

    // Clamped to 0..1 - size; NaN is ignored.
    void setThumbPos(double position);
    double getThumbPos() const { return m_pos; }
    // The visible fraction, clamped to 0..1 (1 or more: everything is visible and the thumb fills the
    // track); the position is clamped again.
    void setThumbSize(double size);
    double getThumbSize() const { return m_size; }
    // Whether there is anything to scroll.
    bool isScrollable() const { return m_size < 1.0; }

    // ---- Geometry, in the bar's own coordinates
    GlobBox upButtonBox() const;
    GlobBox downButtonBox() const;
    GlobBox trackBox() const;
    GlobBox thumbBox() const;

    static constexpr const char* thumbMovedMsg = "scrollbar_thumb_moved";
    static constexpr const char* upButtonPressedMsg = "scrollbar_up_pressed";
    static constexpr const char* downButtonPressedMsg = "scrollbar_down_pressed";
    static bool isScrollBarMsg(const LightweightString<char>& name);

    static constexpr double repeatDelay = 400.0;
    static constexpr double repeatInterval = 50.0;

    // Called by the toolkit
    bool react(const Event& event) override;
    void setActive(bool active, eRedrawFlag redraw = Redraw) override;
    void drawBackground() override;
    void drawText() override;

private:
    enum class Part : uint8_t { None, Up, Down, Thumb, Track };
    // Moves the thumb as the user asked and tells the owner when it moved.
    bool userMove(double position);
    double positionForThumbTop(int top) const;
    // One step of what the pressed part does: an arrow message, or a page towards the pointer. Answers
    // whether the bar still exists.
    bool stepPressedPart();
    void startRepeating();
    void stopRepeating();
    void repeatIfDue();

    double m_pos = 0.0;
    double m_size = 1.0;
    struct Press {
        Part part = Part::None;
        // While the thumb is dragged: the pointer's distance below the thumb's top when gripped.
        int grip = 0;
        // Where the pointer is while the track is held, for paging towards it.
        int pointerY = 0;
        double nextRepeat = 0.0;
    };
    Transient<Press> m_press;
    Transient<Cv::ScopedBackgroundPoller> m_repeater; // only while an arrow or the track is held
};
