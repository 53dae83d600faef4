#include "toolkit/gfx/Font.h"

#include "toolkit/gfx/detail/FontEngine.h"

#include <algorithm>
#include <unordered_map>

LightweightString<char> getDefaultFontName()
{
    // Installed with the toolkit's packages everywhere we run, and neutral enough for long working sessions.
    static const LightweightString<char> name("DejaVu Sans");
    return name;
}

int getDefaultFontSize()
{
    // Light text on a dark background looks heavier than dark on light; 13 pixels stays legible without
    // crowding the dense editor panels.
    return 13;
}

namespace Pictor {

FontDesc::FontDesc() : name(getDefaultFontName()), size(getDefaultFontSize()) {}

FontDesc::FontDesc(LightweightString<char> family, int sizeInPixels, uint8_t fontStyle)
    : name(std::move(family)), size(sizeInPixels), style(fontStyle)
{
}

FontDesc FontDesc::withSize(int sizeInPixels) const
{
    FontDesc copy = *this;
    copy.size = sizeInPixels;
    return copy;
}

FontDesc FontDesc::withStyle(uint8_t fontStyle) const
{
    FontDesc copy = *this;
    copy.style = fontStyle;
    return copy;
}

FontDesc getTitleFontDesc()
{
    return FontDesc(getDefaultFontName(), getDefaultFontSize() + 1, fontStyleBold);
}

Font::Font(const FontDesc& desc, std::unique_ptr<FontEngine> engine) : m_desc(desc), m_engine(std::move(engine)) {}

Font::~Font() = default;

double Font::ascent() const
{
    return m_engine->ascent();
}

double Font::descent() const
{
    return m_engine->descent();
}

double Font::lineHeight() const
{
    return m_engine->lineHeight();
}

double Font::measureWidth(std::string_view utf8) const
{
    return m_engine->measure(utf8) / double(kShaperUnits);
}

double Font::measureWidth(std::wstring_view text) const
{
    return m_engine->measure(text) / double(kShaperUnits);
}

TextExtents Font::getExtents(std::string_view utf8) const
{
    return m_engine->extents(utf8);
}

TextExtents Font::getExtents(std::wstring_view text) const
{
    return m_engine->extents(text);
}

Cv::Ptr<Font> loadFont(const FontDesc& desc)
{
    FontDesc key = desc;
    if (key.name.empty())
        key.name = getDefaultFontName();
    key.size = std::clamp(key.size, 1, 1000);
    key.style &= fontStyleBoldItalic;

    // Fonts live as long as the process: a user interface uses a handful, and reloading one would throw
    // away its measured kerning.
    static std::unordered_map<FontDesc, Cv::Ptr<Font>> cache;
    if (auto found = cache.find(key); found != cache.end())
        return found->second;
    Cv::Ptr<Font> font(new Font(key, std::make_unique<FontEngine>(key)));
    cache.emplace(key, font);
    return font;
}

} // namespace Pictor
