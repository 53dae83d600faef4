#pragma once
// Pictor::FontUser: the base of widgets that draw text in a font of their own. It keeps the description and
// the loaded font together, so a widget measures and draws without looking the font up each time.

#include "toolkit/gfx/Font.h"
#include "toolkit/gfx/FontDesc.h"

namespace Pictor {

class FontUser {
public:
    FontUser() = default;
    explicit FontUser(const FontDesc& desc) : m_desc(desc) {}
    virtual ~FontUser() = default;

    const FontDesc& getFontDesc() const { return m_desc; }
    // Widgets override this to re-lay themselves out, calling the base first.
    virtual void setFont(const FontDesc& desc)
    {
        if (desc == m_desc)
            return;
        m_desc = desc;
        m_font = nullptr;
    }
    // Loaded on first use.
    const Font& getFont() const
    {
        if (!m_font)
            m_font = loadFont(m_desc);
        return *m_font;
    }

private:
    FontDesc m_desc;
    mutable Cv::Ptr<Font> m_font;
};

} // namespace Pictor
