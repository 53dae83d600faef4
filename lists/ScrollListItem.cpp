#include "lists/ScrollListItem.h"

#include <utility>

ScrollListItem::ScrollListItem(
    LightweightString<wchar_t> text, int flags, TextAlignment alignment, Pictor::FontDesc font, Colour colour)
    : m_text(std::move(text))
    , m_flags(flags)
    , m_alignment(alignment)
    , m_font(std::move(font))
    , m_colour(colour)
{
}
