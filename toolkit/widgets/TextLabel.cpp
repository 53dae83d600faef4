#include "toolkit/widgets/TextLabel.h"

#include "toolkit/support/SettingsReader.h"
#include "toolkit/gfx/Painter.h"
#include "toolkit/gfx/WordWrappingTextRenderer.h"
#include "toolkit/ui/GlobManager.h"
#include "toolkit/ui/UifStd.h"

#include <algorithm>

namespace {

const bool registeredByName = GlobManager::registerWidget<TextLabel>("TextLabel");

} // namespace

TextLabel::InitArgs::InitArgs(const GlobCreationInfo& info) : GlobCreationInfo(info)
{
    const SettingsReader settings(info.config);
    text = settings.text("text").value_or(text.getString());
    wordWrap = settings.boolean("wrap").value_or(wordWrap);
}

TextLabel::TextLabel(const InitArgs& args)
    : Glob(args)
    , FontUser(args.font)
    , m_text(args.text)
    , m_colour(args.colour)
    , m_alignment(args.alignment)
    , m_wordWrap(args.wordWrap)
{
    if (getHeight() == 0)
        resize(getWidth(), UifStd::getButtonHeight());
}

TextLabel::TextLabel(uint16_t width, uint16_t height, const Palette& palette, Canvas* canvas)
    : Glob(width, height ? height : static_cast<uint16_t>(UifStd::getButtonHeight()), palette, canvas)
{
}

TextLabel::~TextLabel() = default;

LightweightString<char> TextLabel::idstring() const
{
    return "TextLabel";
}

void TextLabel::setString(const UIString& text)
{
    if (text == m_text)
        return;
    m_text = text;
    redraw();
}

void TextLabel::setAlignment(TextAlignment alignment)
{
    m_alignment = alignment;
    redraw();
}

void TextLabel::setColour(const Colour& colour)
{
    m_colour = colour;
    redraw();
}

void TextLabel::clearColour()
{
    m_colour.reset();
    redraw();
}

Colour TextLabel::getTextColour() const
{
    if (!isEnabledInTree())
        return getPalette().disabledText();
    return m_colour ? *m_colour : getPalette().text();
}

void TextLabel::setWordWrap(bool wrap)
{
    m_wordWrap = wrap;
    redraw();
}

void TextLabel::setFont(const Pictor::FontDesc& desc)
{
    FontUser::setFont(desc);
    redraw();
}

int TextLabel::getNumLines() const
{
    if (!m_wordWrap)
        return 1;
    const LightweightString<wchar_t> text = m_text.getString();
    return WordWrappingTextRenderer::calcNumDisplayLines(text.view(), getFont(), getWidth());
}

void TextLabel::drawText()
{
    const LightweightString<wchar_t> text = m_text.getString();
    if (text.empty())
        return;
    Pictor::Painter& p = painter();
    const Pictor::Font& font = getFont();
    const GlobBox box = getLocalBox();
    const double lineHeight = font.lineHeight();
    const double textHeight = m_wordWrap ? getNumLines() * lineHeight : lineHeight;
    // The band the text occupies, placed by the vertical alignment; clipped to the label when it overflows.
    double top = box.top();
    if (m_alignment.vertical == TextAlignment::VCentre)
        top = box.top() - std::max(0.0, (box.height() - textHeight) / 2.0);
    else if (m_alignment.vertical == TextAlignment::Bottom)
        top = box.bottom() + std::min<double>(box.height(), textHeight);
    const Pictor::PaintRect band(box.left(), top - textHeight, box.right(), top);
    if (m_wordWrap) {
        Pictor::StateSaver saver(p);
        p.clipTo(box);
        p.drawWrappedText(text.view(), font, getTextColour(), band, TextAlignment::toPainter(m_alignment.horizontal));
        return;
    }
    p.drawTextInBox(text.view(), font, getTextColour(), band, TextAlignment::toPainter(m_alignment.horizontal),
                    Pictor::textEllipsis);
}
