#pragma once
// Pictor::FontDesc: which font text is drawn in: a family name, a size and a style.
//
// Sizes are in pixels, not points. The toolkit lays everything out in pixels, and a pixel size gives the same
// text width on every screen, which is what a panel laid out around its labels needs. The size is the em size
// (the font's design size), so a 13-pixel font has a line height of roughly 15 pixels.
//
// An empty family name stands for the default family. Any name is accepted: a family the system does not have
// is replaced by the closest one it does, so a FontDesc always gives a usable font.

#include "toolkit/support/LightweightString.h"

#include <cstddef>
#include <cstdint>
#include <functional>

namespace Pictor {

enum FontStyle : uint8_t {
    fontStyleNormal = 0,
    fontStyleBold = 1,
    fontStyleItalic = 2,
    fontStyleBoldItalic = fontStyleBold | fontStyleItalic,
};

struct FontDesc {
    // The default user-interface font.
    FontDesc();
    FontDesc(LightweightString<char> family, int sizeInPixels, uint8_t fontStyle = fontStyleNormal);

    bool bold() const { return (style & fontStyleBold) != 0; }
    bool italic() const { return (style & fontStyleItalic) != 0; }
    FontDesc withSize(int sizeInPixels) const;
    FontDesc withStyle(uint8_t fontStyle) const;

    bool operator==(const FontDesc&) const = default;

    LightweightString<char> name;
    int size = 13; // pixels; sizes below 1 are drawn at 1, above 1000 at 1000
    uint8_t style = fontStyleNormal;
};

// The bold, slightly larger font of panel titles and headings.
FontDesc getTitleFontDesc();

} // namespace Pictor

// The calm, widely available sans-serif that the whole user interface is set in, and its size in pixels,
// chosen to read well as light text on the editor's dark panels.
LightweightString<char> getDefaultFontName();
int getDefaultFontSize();

template <>
struct std::hash<Pictor::FontDesc> {
    size_t operator()(const Pictor::FontDesc& d) const noexcept
    {
        return std::hash<LightweightString<char>>()(d.name) ^ (static_cast<size_t>(d.size) << 3) ^ d.style;
    }
};
