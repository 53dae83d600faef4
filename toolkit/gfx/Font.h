#pragma once
// Pictor::Font: a loaded font that measures text. Fonts are shared: loadFont answers the same object for equal
// descriptions, so holding a Cv::Ptr<Font> is cheap and measuring with it needs no look-up.
//
// Measuring is fast because each font keeps its own tables of glyph advances and pair kerning, filled once
// (kerning lazily, pair by pair, as text needs it). Text the tables cannot answer exactly (complex scripts,
// combining marks, tabs, line breaks, characters the font lacks) is measured by the full text shaper instead,
// so every answer agrees with how the text is drawn. Widths are unhinted and fractional, in pixels, so the
// width of a text does not depend on where it starts on the screen.
//
// Threads: fonts are made, measured and drawn with on the user-interface thread only.

#include "toolkit/gfx/FontDesc.h"
#include "toolkit/support/Ptr.h"
#include "toolkit/support/RefCount.h"

#include <cmath>
#include <memory>
#include <string_view>

namespace Pictor {

class FontEngine;

struct TextExtents {
    double width = 0.0;      // the widest line's advance width
    double height = 0.0;     // number of lines times the line height
    double ascent = 0.0;     // from the first baseline up to the top of the line box
    double descent = 0.0;    // from the last baseline down to the bottom of the line box
    double lineHeight = 0.0; // distance between baselines
    int lines = 1;           // an empty text is one empty line

    // The whole pixels needed to show the text without clipping.
    int pixelWidth() const { return static_cast<int>(std::ceil(width - 1e-6)); }
    int pixelHeight() const { return static_cast<int>(std::ceil(height - 1e-6)); }
};

class Font : public Cv::InternalRefCount {
public:
    ~Font() override;
    Font(const Font&) = delete;
    Font& operator=(const Font&) = delete;

    const FontDesc& desc() const { return m_desc; }

    // Vertical metrics of one line, in pixels.
    double ascent() const;
    double descent() const;
    double lineHeight() const;

    // The advance width of text in pixels. A text of several lines answers its widest line.
    double measureWidth(std::string_view utf8) const;
    double measureWidth(std::wstring_view text) const;
    int pixelWidth(std::string_view utf8) const { return static_cast<int>(std::ceil(measureWidth(utf8) - 1e-6)); }
    int pixelWidth(std::wstring_view text) const { return static_cast<int>(std::ceil(measureWidth(text) - 1e-6)); }

    TextExtents getExtents(std::string_view utf8) const;
    TextExtents getExtents(std::wstring_view text) const;

    // The measuring and shaping machinery behind this font, for the rest of the graphics layer.
    FontEngine& engine() const { return *m_engine; }

private:
    friend Cv::Ptr<Font> loadFont(const FontDesc& desc);
    Font(const FontDesc& desc, std::unique_ptr<FontEngine> engine);

    FontDesc m_desc;
    std::unique_ptr<FontEngine> m_engine;
};

// Never null: a family the system lacks is replaced by the closest match.
Cv::Ptr<Font> loadFont(const FontDesc& desc);

} // namespace Pictor
