#pragma once
// HSColourWheel: a round picker of hue and saturation. The angle around the centre is the hue, the distance
// from the centre the saturation; the value (brightness) comes from outside (setDisplayV). The user drags a
// small round cursor; the colour is published through the value-widget binding (ValWidget<ColourData>).
//
// Mouse:
//   input                                              | wheel does
//   ---------------------------------------------------+-----------------------------------------------------
//   left or right press within a widget gap of the     | grabs the cursor and starts a drag
//   cursor                                             |
//   right press (or a chord holding the right button)  | jumps the cursor there and starts a drag
//   elsewhere in the widget                            |
//   drag while grabbed, inside or outside the wheel    | the cursor follows, snapped onto the rim outside it
//   release                                            | the drag ends
//   a left press away from the cursor                  | nothing: the cursor is moved by grabbing it
//
// Moves of less than a whole pixel change nothing, so a drag never republishes the same colour.
//
// Brightness shown. A value arriving through the binding moves the cursor to its hue and saturation and
// stores its brightness; the field is repainted at that brightness, and the display told of the moved
// cursor, only when the start-up setting colour_wheel_reflect_luma is on. setDisplayV always repaints.
//
// The field is painted once per size at full brightness and cached; a brightness change only rescales the
// cached pixels, so dragging a brightness slider repaints the wheel cheaply.

#include "colour/ColourData.h"
#include "toolkit/gfx/Image.h"
#include "toolkit/support/Box.h"
#include "toolkit/ui/Glob.h"
#include "toolkit/ui/Transient.h"
#include "toolkit/widgets/ValWidget.h"

#include <cstdint>

class HSColourWheel : public Glob, public ValWidget<ColourData> {
public:
    struct InitArgs : GlobCreationInfo {
        InitArgs() = default;
        // A square wheel widget `size` pixels across, the wheel inset by `margin` on every side.
        InitArgs(uint16_t size, double v = 1.0, uint16_t wheelMargin = 4, const Palette& pal = Palette(),
                 Canvas* c = nullptr)
            : GlobCreationInfo(size, size, pal, c), value(v), margin(wheelMargin)
        {
        }

        double value = 1.0;
        uint16_t margin = 4;
    };

    HSColourWheel(Canvas* canvas, uint16_t size, double v, uint16_t margin);
    explicit HSColourWheel(const InitArgs& args);
    HSColourWheel(const HSColourWheel&) = default;
    HSColourWheel(HSColourWheel&&) = default;
    HSColourWheel& operator=(const HSColourWheel&) = default;
    HSColourWheel& operator=(HSColourWheel&&) = default;
    ~HSColourWheel() override = default;

    LightweightString<char> idstring() const override { return "HSColourWheel"; }

    // Places the cursor for an RGB colour and takes its brightness; publishes it when `publish` is set.
    void setCol(const Colour& colour, bool publish);
    // The brightness of colours made from positions, and of the field shown.
    void setDisplayV(double v);
    double getDisplayV() const { return m_displayV; }
    // The brightness the field is painted at now.
    double getShownV() const { return m_shownV; }
    void setCursorVisible(bool visible);
    void setBackgrndCol(const Colour& colour);
    bool dragMode() const { return *m_dragging; }
    // The colour the wheel shows (published or not).
    const ColourData& getColour() const { return m_value; }
    // The cursor relative to the wheel's centre, y upward.
    XY<double> getCursor() const { return {m_cursorX, m_cursorY}; }
    double getRadius() const { return m_radius; }
    int getMargin() const { return m_margin; }
    // The wheel's centre in the widget's own coordinates.
    XY<double> getCentre() const { return {m_margin + m_radius, m_margin + m_radius}; }
    // The area the cursor is drawn in, in the widget's own coordinates.
    Cv::Box<double> getAreaForCrosshair() const;

    // ---- Called by the toolkit
    bool react(const Event& event) override;
    void drawBackground() override;
    void drawText() override;
    void resize(double width, double height) override;
    void setActive(bool active, eRedrawFlag redraw = Redraw) override;
    int contextCursor(const XY<int>& local) override;

protected:
    // Maps between the colour shown and the colour stored; the base forms pass the colour through.
    virtual ColourData UIColourToDataColour(const ColourData& shown) const { return shown; }
    virtual ColourData UIColourFromDataColour(const ColourData& stored) const { return stored; }
    // The display: told that the cursor moved, and of a brightness to show.
    virtual void displayCursorMoved();
    virtual void displayBrightness(double v);

    void showValue(const ColourData& value, DataChangeType type) override;
    // A published colour changed: move the cursor and take the brightness (see the header comment).
    void setNewWidgetValue(const ColourData& colour, eRedrawFlag redrawFlag);

private:
    void initFrom(uint16_t margin, double v);
    void updateGeometry();
    int setCursor(double x, double y);
    bool setFromColour(const ColourData& colour, DataChangeType changeType);
    void setFromXY(double x, double y, DataChangeType changeType);
    bool handleMouseCursorEvent(const Event& event, double& x, double& y);
    void drawCursor();
    void redrawCursor();
    const Pictor::Image& shownField();

    double m_displayV = 1.0;
    double m_radius = 0.0;
    int m_margin = 0;
    double m_cursorX = 0.0;
    double m_cursorY = 0.0;
    GlobBox m_hitBox;
    Transient<bool> m_dragging;
    Transient<bool> m_changed;
    bool m_cursorVisible = true;
    bool m_ownBackground = false;
    Colour m_background;
    ColourData m_value;
    double m_shownV = 1.0;
    // The field at full brightness for the current size, and the same rescaled to m_fieldV.
    Pictor::Image m_fullField;
    Pictor::Image m_field;
    double m_fieldV = -1.0;
};
