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
// isScrollBarMsg tells an owner's handler that a message is one of these three.

#include "toolkit/ui/Glob.h"

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
    ScrollBar(const ScrollBar& other);
    ScrollBar(ScrollBar&& other);
    ScrollBar& operator=(const ScrollBar& other);
    ScrollBar& operator=(ScrollBar&& other);
    ~ScrollBar() override;

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

    static const char* const thumbMovedMsg;
    static const char* const upButtonPressedMsg;
    static const char* const downButtonPressedMsg;
    static bool isScrollBarMsg(const LightweightString<char>& name);

    bool react(const Event& event) override;
    void drawBackground() override;
    void drawText() override;

private:
    enum class Part : uint8_t { None, Up, Down, Thumb, Track };
    // Moves the thumb as the user asked and tells the owner when it moved.
    bool userMove(double position);
    double positionForThumbTop(int top) const;

    double m_pos = 0.0;
    double m_size = 1.0;
    // While the thumb is dragged: the pointer's distance below the thumb's top when gripped.
    int m_grip = 0;
    Part m_pressed = Part::None;
};
