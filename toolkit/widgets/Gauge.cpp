#include "toolkit/widgets/Gauge.h"

#include "toolkit/gfx/Font.h"
#include "toolkit/gfx/Painter.h"
#include "toolkit/ui/GlobManager.h"
#include "toolkit/ui/Screen.h"
#include "toolkit/ui/UifStd.h"

#include <algorithm>
#include <cmath>

namespace {

double unit(double v)
{
    return std::isfinite(v) ? std::clamp(v, 0.0, 1.0) : (v > 0 ? 1.0 : 0.0);
}

const bool registeredByName = GlobManager::registerWidget<Gauge>("Gauge");

} // namespace

Gauge::Gauge(const InitArgs& args) : Glob(args), m_measure(unit(args.measure)), m_text(args.text)
{
    if (getHeight() == 0)
        resize(getWidth(), UifStd::getButtonHeight());
}

Gauge::Gauge(uint16_t width, uint16_t height, const Palette& palette, Canvas* canvas)
    : Glob(width, height, palette, canvas)
{
}

Gauge::~Gauge() = default;

LightweightString<char> Gauge::idstring() const
{
    return "Gauge";
}

void Gauge::setMeasure(double fraction)
{
    const double f = unit(std::isnan(fraction) ? 0.0 : fraction);
    if (f == m_measure)
        return;
    m_measure = f;
    redraw();
}

void Gauge::setString(const UIString& text)
{
    if (text == m_text)
        return;
    m_text = text;
    redraw();
}

void Gauge::setCols(const Colour& bar, const Colour& background)
{
    m_bar = bar;
    m_back = background;
    redraw();
}

void Gauge::setTextCol(const Colour& text)
{
    m_textCol = text;
    redraw();
}

Colour Gauge::getBarCol() const
{
    return m_bar ? *m_bar : getPalette().highlight();
}

Colour Gauge::getBackgroundCol() const
{
    return m_back ? *m_back : getPalette().window(0);
}

Colour Gauge::getTextCol() const
{
    return m_textCol ? *m_textCol : getPalette().text();
}

void Gauge::display()
{
    redraw();
    if (Screen* screen = Screen::current())
        screen->flush();
}

int Gauge::filledRight() const
{
    const int inner = std::max(0, getWidth() - 2);
    return 1 + static_cast<int>(std::lround(inner * m_measure));
}

void Gauge::drawBackground()
{
    Pictor::Painter& p = painter();
    const GlobBox box = getLocalBox();
    p.fillRect(box, getBackgroundCol());
    const int right = filledRight();
    if (right > 1) {
        const Colour bar = getBarCol();
        p.fillVerticalGradient(Pictor::PaintRect(1, 1, right, std::max(1, getHeight() - 1)), bar.scale(0.8), bar);
    }
    p.strokeRect(box, getPalette().border());
}

void Gauge::drawText()
{
    const LightweightString<wchar_t> text = m_text.getString();
    if (text.empty())
        return;
    const int gap = UifStd::getWidgetGap();
    painter().drawTextInBox(text.view(), UifStd::defaultFont(), getTextCol(),
                            Pictor::PaintRect(gap, 0, std::max(gap, getWidth() - gap), getHeight()),
                            Pictor::TextAlign::Centre, Pictor::textEllipsis);
}
