#pragma once
// Palette: a widget's colours, by role. Every widget carries one by value, so it is kept small (one packed
// 8-bit RGBA word per role, no allocation) and hands out `Colour`s when asked. The style painter reads roles,
// never literal colours, so changing a palette changes the look of everything drawn with it.

#include "toolkit/support/Colour.h"

#include <array>
#include <cstdint>

class Palette {
public:
    enum Role : uint8_t {
        Window, // the base background; window(shade) derives lighter and darker surfaces from it
        Text,
        SubheadingText, // legends, group titles, slider tracks: text that is read less often
        DisabledText,
        Highlight, // selection, pressed buttons, gauge bars
        HighlightText, // text drawn over Highlight
        Border,
        TitleBar,
        TitleText,
        Focus, // the keyboard focus ring
        Warning,
        Entry, // the background of places the user types into
        NumRoles
    };
    static constexpr int NumShades = 6;

    // The standard scheme (UifStd::getColourScheme()).
    Palette();
    // A palette built around a background and a text colour; the other roles are derived from the two, so
    // that a line with its own colours still has readable disabled text, borders and highlights.
    Palette(const Colour& window, const Colour& text);

    // Shade 0 is the darkest (recesses, wells), 2 the plain background, 5 the lightest (raised edges).
    // Shades outside 0..5 are clamped.
    Colour window(int shade = 2) const;
    Colour text() const { return get(Text); }
    Colour subheadingText() const { return get(SubheadingText); }
    Colour disabledText() const { return get(DisabledText); }
    Colour highlight() const { return get(Highlight); }
    Colour highlightText() const { return get(HighlightText); }
    Colour border() const { return get(Border); }
    Colour titleBar() const { return get(TitleBar); }
    Colour titleText() const { return get(TitleText); }
    Colour focus() const { return get(Focus); }
    Colour warning() const { return get(Warning); }
    Colour entry() const { return get(Entry); }
    // The text colour for a widget that is enabled or not.
    Colour text(bool active) const { return active ? text() : disabledText(); }

    Colour get(Role role) const;
    void set(Role role, const Colour& colour);

    // The palette for a widget nested inside one drawn with this palette: its background is one shade
    // lighter, so that a box inside a panel stands out from it; every other role is kept.
    Palette makeChildPalette() const;

    bool operator==(const Palette&) const = default;

private:
    static const std::array<uint32_t, NumRoles>& standardRoles();
    static uint32_t pack(const Colour& c);
    static Colour unpack(uint32_t rgba);

    std::array<uint32_t, NumRoles> m_roles {};
};

inline Palette makeChildPalette(const Palette& parent)
{
    return parent.makeChildPalette();
}
