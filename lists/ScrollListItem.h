#pragma once
// ScrollListItem: the description of one line of a ScrollList, for callers that want lines with a look of
// their own (bold, aligned, coloured, dimmed) or selected from the start.

#include "toolkit/gfx/FontDesc.h"
#include "toolkit/support/Colour.h"
#include "toolkit/support/LightweightString.h"
#include "toolkit/widgets/TextAlignment.h"

class ScrollListItem {
public:
    // Bits of the item's flags.
    enum Flags : int {
        Selected = 1 << 0,
        Inactive = 1 << 1, // drawn dimmed and not selectable
    };

    ScrollListItem() = default;
    // A colour with zero alpha means "the list's own text colour".
    ScrollListItem(LightweightString<wchar_t> text, int flags = 0, TextAlignment alignment = {},
        Pictor::FontDesc font = {}, Colour colour = Colour(0, 0, 0, 0));

    const LightweightString<wchar_t>& text() const { return m_text; }
    bool active() const { return (m_flags & Inactive) == 0; }
    TextAlignment alignment() const { return m_alignment; }
    bool bold() const { return m_font.bold(); }
    Colour getCol() const { return m_colour; }
    bool hasOwnColour() const { return m_colour.a() > 0.0; }
    const Pictor::FontDesc& getFont() const { return m_font; }
    bool getSelected() const { return (m_flags & Selected) != 0; }

private:
    LightweightString<wchar_t> m_text;
    int m_flags = 0;
    TextAlignment m_alignment;
    Pictor::FontDesc m_font;
    Colour m_colour = Colour(0, 0, 0, 0);
};
