#include "toolkit/ui/StylePainter.h"

#include "toolkit/gfx/Font.h"
#include "toolkit/ui/UifStd.h"

#include <algorithm>
#include <array>
#include <cmath>

using Pictor::PaintRect;

namespace {

// Room between a label and the edges of what it sits on.
PaintRect textBox(const GlobBox& box)
{
    const int pad = UifStd::getWidgetGap();
    return PaintRect(box.left() + pad, box.bottom(), box.right() - pad, box.top());
}

} // namespace

void StylePainter::drawPanel(Pictor::Painter& p, const GlobBox& box, const Palette& pal)
{
    p.fillRect(box, pal.window(2));
    p.strokeRect(box, pal.border());
}

void StylePainter::drawBevel(Pictor::Painter& p, const GlobBox& box, const Palette& pal, bool sunken)
{
    const Colour light = pal.window(4);
    const Colour dark = pal.window(0);
    p.drawBevel(box, sunken ? dark : light, sunken ? light : dark, 1);
}

void StylePainter::drawButton(
    Pictor::Painter& p, const GlobBox& box, const Palette& pal, ButtonState state, bool focused)
{
    // Flat faces with a faint vertical gradient: enough shape to read as pressable, calm at rest.
    Colour top = pal.window(4);
    Colour bottom = pal.window(3);
    switch (state) {
    case Normal:
        break;
    case Hovered:
        top = pal.window(5);
        bottom = pal.window(4);
        break;
    case Pressed:
        top = pal.highlight().scale(0.85);
        bottom = pal.highlight();
        break;
    case Disabled:
        top = bottom = pal.window(2);
        break;
    }
    p.fillVerticalGradient(box, bottom, top);
    p.strokeRect(box, pal.border());
    if (focused)
        drawFocusRing(p, box, pal);
}

void StylePainter::drawLabelledButton(Pictor::Painter& p, const GlobBox& box, const Palette& pal, ButtonState state,
    std::wstring_view label, bool focused)
{
    drawButton(p, box, pal, state, focused);
    const Colour ink = state == Disabled ? pal.disabledText() : state == Pressed ? pal.highlightText() : pal.text();
    p.drawTextInBox(label, UifStd::defaultFont(), ink, textBox(box), Pictor::TextAlign::Centre, Pictor::textEllipsis);
}

void StylePainter::drawFocusRing(Pictor::Painter& p, const GlobBox& box, const Palette& pal)
{
    p.strokeRect(box.expanded(-1), pal.focus());
}

void StylePainter::drawTitleBar(
    Pictor::Painter& p, const GlobBox& box, const Palette& pal, std::wstring_view title, bool active)
{
    p.fillRect(box, pal.titleBar());
    // A hairline under the title separates it from the panel's content.
    p.drawLine(box.left(), box.bottom(), box.right() - 1, box.bottom(), pal.border());
    const Colour ink = active ? pal.titleText() : pal.titleText().mix(pal.titleBar(), 0.45);
    p.drawTextInBox(title, UifStd::titleFont(), ink, textBox(box), Pictor::TextAlign::Left, Pictor::textEllipsis);
}

void StylePainter::drawCheckBox(Pictor::Painter& p, const GlobBox& box, const Palette& pal, bool checked, bool enabled)
{
    p.fillRect(box, pal.entry());
    p.strokeRect(box, enabled ? pal.window(5) : pal.window(3));
    if (checked)
        drawCheckMark(p, box.expanded(-3), enabled ? pal.highlight().mix(pal.text(), 0.3) : pal.disabledText());
}

void StylePainter::drawCheckMark(Pictor::Painter& p, const GlobBox& box, const Colour& colour)
{
    const double w = box.width();
    const double h = box.height();
    const std::array<XY<double>, 3> tick = { XY<double>(box.left() + 0.1 * w, box.bottom() + 0.5 * h),
        XY<double>(box.left() + 0.4 * w, box.bottom() + 0.15 * h),
        XY<double>(box.left() + 0.9 * w, box.bottom() + 0.85 * h) };
    p.drawPolyline(tick, colour, std::max(1.5, std::min(w, h) / 6.0));
}

void StylePainter::drawEntryWell(Pictor::Painter& p, const GlobBox& box, const Palette& pal, bool focused)
{
    p.fillRect(box, pal.entry());
    drawBevel(p, box, pal, true);
    if (focused)
        drawFocusRing(p, box, pal);
}

void StylePainter::drawGauge(Pictor::Painter& p, const GlobBox& box, const Palette& pal, double fraction)
{
    const double f = std::isfinite(fraction) ? std::clamp(fraction, 0.0, 1.0) : 0.0;
    p.fillRect(box, pal.window(0));
    const GlobBox inner = box.expanded(-1);
    const double filled = inner.width() * f;
    if (filled > 0.0)
        p.fillVerticalGradient(PaintRect::fromSize(inner.left(), inner.bottom(), filled, inner.height()),
            pal.highlight().scale(0.8), pal.highlight());
    p.strokeRect(box, pal.border());
}

void StylePainter::drawLabel(Pictor::Painter& p, const GlobBox& box, const Palette& pal, std::wstring_view text,
    Pictor::TextAlign align, bool enabled)
{
    p.drawTextInBox(text, UifStd::defaultFont(), pal.text(enabled), box, align, Pictor::textEllipsis);
}

void StylePainter::drawMenuBackground(Pictor::Painter& p, const GlobBox& box, const Palette& pal)
{
    p.fillRect(box, pal.window(3));
    p.strokeRect(box, pal.border());
}

void StylePainter::drawMenuItem(
    Pictor::Painter& p, const GlobBox& box, const Palette& pal, std::wstring_view text, bool highlighted, bool enabled)
{
    if (highlighted && enabled)
        p.fillRect(box, pal.highlight());
    const Colour ink = !enabled ? pal.disabledText() : highlighted ? pal.highlightText() : pal.text();
    p.drawTextInBox(text, UifStd::defaultFont(), ink, textBox(box), Pictor::TextAlign::Left, Pictor::textEllipsis);
}

void StylePainter::drawSeparator(Pictor::Painter& p, const GlobBox& box, const Palette& pal)
{
    const int y = box.bottom() + box.height() / 2;
    p.drawLine(box.left(), y, box.right() - 1, y, pal.window(0));
}

void StylePainter::drawScrollBar(
    Pictor::Painter& p, const GlobBox& box, const Palette& pal, double thumbStart, double thumbSize)
{
    p.fillRect(box, pal.window(1));
    auto unit = [](double v) { return std::isfinite(v) ? std::clamp(v, 0.0, 1.0) : 0.0; };
    const double start = unit(thumbStart);
    const double size = std::min(unit(thumbSize), 1.0 - start);
    const double h = box.height();
    // Fractions run from the top, the way a list scrolls; never thinner than a grip can be.
    const double thumbH = std::max(std::min(h, 8.0), size * h);
    const double top = box.top() - start * h;
    const PaintRect thumb(box.left() + 2, std::max<double>(box.bottom(), top - thumbH), box.right() - 2, top);
    p.fillRoundedRect(thumb, 3.0, pal.window(4));
}

void StylePainter::drawTooltip(Pictor::Painter& p, const GlobBox& box, const Palette& pal, std::wstring_view text)
{
    p.fillRect(box, pal.window(4));
    p.strokeRect(box, pal.border());
    p.drawTextInBox(text, UifStd::defaultFont(), pal.text(), textBox(box), Pictor::TextAlign::Left,
                    Pictor::textNoFlags);
}
