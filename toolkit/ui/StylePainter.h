#pragma once
// StylePainter: the look of the toolkit, in one place. Panels, bevels, buttons, focus rings, title bars, check
// marks, entry wells, gauges, menus and scroll bars are drawn here from palette roles, so widgets say what they
// are and this file decides how it looks. All coordinates are the painter's current (bottom-up) ones.

#include "toolkit/gfx/Painter.h"
#include "toolkit/ui/Palette.h"
#include "toolkit/ui/WidgetPosition.h"

#include <string_view>

class StylePainter {
public:
    enum ButtonState { Normal, Hovered, Pressed, Disabled };

    // A panel: plain background in window shade 2 inside a one-pixel border.
    static void drawPanel(Pictor::Painter& p, const GlobBox& box, const Palette& pal);
    // A raised (or sunken) edge around the box, from the window shades.
    static void drawBevel(Pictor::Painter& p, const GlobBox& box, const Palette& pal, bool sunken = false);
    static void drawButton(
        Pictor::Painter& p, const GlobBox& box, const Palette& pal, ButtonState state, bool focused = false);
    // A button face with its label centred on it.
    static void drawLabelledButton(Pictor::Painter& p, const GlobBox& box, const Palette& pal, ButtonState state,
        std::wstring_view label, bool focused = false);
    static void drawFocusRing(Pictor::Painter& p, const GlobBox& box, const Palette& pal);
    // A title bar with its text in the title font; an inactive panel's title is drawn dimmer.
    static void drawTitleBar(
        Pictor::Painter& p, const GlobBox& box, const Palette& pal, std::wstring_view title, bool active = true);
    // The box of a check box, with a tick when checked.
    static void drawCheckBox(
        Pictor::Painter& p, const GlobBox& box, const Palette& pal, bool checked, bool enabled = true);
    static void drawCheckMark(Pictor::Painter& p, const GlobBox& box, const Colour& colour);
    // The sunken well a text is typed into.
    static void drawEntryWell(Pictor::Painter& p, const GlobBox& box, const Palette& pal, bool focused = false);
    // A bar filled to `fraction` (clamped to 0..1) from the left.
    static void drawGauge(Pictor::Painter& p, const GlobBox& box, const Palette& pal, double fraction);
    // One line of text in the default font, vertically centred.
    static void drawLabel(Pictor::Painter& p, const GlobBox& box, const Palette& pal, std::wstring_view text,
        Pictor::TextAlign align = Pictor::TextAlign::Left, bool enabled = true);
    static void drawMenuBackground(Pictor::Painter& p, const GlobBox& box, const Palette& pal);
    static void drawMenuItem(Pictor::Painter& p, const GlobBox& box, const Palette& pal, std::wstring_view text,
        bool highlighted, bool enabled = true);
    static void drawSeparator(Pictor::Painter& p, const GlobBox& box, const Palette& pal);
    // A vertical scroll bar: the track, and the thumb covering [thumbStart, thumbStart + thumbSize) of the
    // track as fractions 0..1 from the top.
    static void drawScrollBar(
        Pictor::Painter& p, const GlobBox& box, const Palette& pal, double thumbStart, double thumbSize);
    static void drawTooltip(Pictor::Painter& p, const GlobBox& box, const Palette& pal, std::wstring_view text);
};
