#include "toolkit/widgets/MultiLineTextBox.h"

#include "toolkit/support/SettingsReader.h"
#include "toolkit/gfx/Painter.h"
#include "toolkit/gfx/WordWrappingTextRenderer.h"
#include "toolkit/ui/GlobManager.h"
#include "toolkit/ui/UifStd.h"

#include <algorithm>
#include <cmath>

namespace {

const bool registeredByName = GlobManager::registerWidget<MultiLineTextBox>("MultiLineTextBox");

} // namespace

MultiLineTextBox::InitArgs::InitArgs(const GlobCreationInfo& info) : GlobCreationInfo(info)
{
    text = SettingsReader(info.config).text("text").value_or(text);
}

MultiLineTextBox::MultiLineTextBox(const InitArgs& args)
    : Glob(args)
    , FontUser(args.font)
    , m_text(args.text)
    , m_gap(args.gap >= 0 ? args.gap : UifStd::getWidgetGap())
    , m_alignment(args.alignment)
{
}

MultiLineTextBox::MultiLineTextBox(uint16_t width, uint16_t height, const Palette& palette, Canvas* canvas)
    : Glob(width, height, palette, canvas), m_gap(UifStd::getWidgetGap())
{
}

MultiLineTextBox::~MultiLineTextBox() = default;

LightweightString<char> MultiLineTextBox::idstring() const
{
    return "MultiLineTextBox";
}

uint16_t MultiLineTextBox::calcHeightForLines(int lines, int fontSize, int gap)
{
    const Cv::Ptr<Pictor::Font> font = Pictor::loadFont(Pictor::FontDesc(getDefaultFontName(), fontSize));
    const double height = std::max(0, lines) * font->lineHeight() + std::max(0, gap);
    return static_cast<uint16_t>(std::clamp(std::ceil(height - 1e-6), 0.0, 65535.0));
}

void MultiLineTextBox::setString(const LightweightString<wchar_t>& text)
{
    if (text == m_text)
        return;
    m_text = text;
    redraw();
}

void MultiLineTextBox::setAlignment(TextAlignment::Horizontal alignment)
{
    m_alignment = alignment;
    redraw();
}

void MultiLineTextBox::setFont(const Pictor::FontDesc& desc)
{
    FontUser::setFont(desc);
    redraw();
}

int MultiLineTextBox::getNumLines() const
{
    return WordWrappingTextRenderer::calcNumDisplayLines(m_text.view(), getFont(), getWidth());
}

void MultiLineTextBox::drawText()
{
    if (m_text.empty())
        return;
    const GlobBox box = getLocalBox();
    const double top = box.top() - m_gap / 2.0;
    painter().drawWrappedText(m_text.view(), getFont(), getPalette().text(isEnabledInTree()),
                              Pictor::PaintRect(box.left(), box.bottom(), box.right(), top),
                              TextAlignment::toPainter(m_alignment));
}
