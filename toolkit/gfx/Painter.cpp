#include "toolkit/gfx/Painter.h"

#include "toolkit/gfx/detail/FontEngine.h"
#include "toolkit/gfx/WordWrappingTextRenderer.h"

#include <cairo.h>

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <numbers>
#include <vector>

namespace Pictor {

namespace {

thread_local Painter* t_current = nullptr;

// Cairo stops drawing for good once given a non-finite number, and its fixed-point coordinates overflow far
// out; keep every coordinate finite and within reach.
double safe(double v)
{
    if (!std::isfinite(v))
        return 0.0;
    return std::clamp(v, -1.0e6, 1.0e6);
}

bool finite(std::initializer_list<double> values)
{
    for (double v : values) {
        if (!std::isfinite(v))
            return false;
    }
    return true;
}

void setSource(cairo_t* cr, const Colour& colour)
{
    cairo_set_source_rgba(cr, colour.r(), colour.g(), colour.b(), colour.a());
}

// Text in a font's encoding for the shaper: wide text becomes UTF-8.
std::string utf8Of(std::wstring_view text)
{
    return toUTF8(text).str();
}

void roundedRectPath(cairo_t* cr, double x, double y, double w, double h, double radius)
{
    const double r = std::clamp(radius, 0.0, std::min(w, h) / 2.0);
    if (r <= 0.0) {
        cairo_rectangle(cr, x, y, w, h);
        return;
    }
    constexpr double quarter = std::numbers::pi / 2.0;
    cairo_new_sub_path(cr);
    cairo_arc(cr, x + w - r, y + r, r, -quarter, 0.0);
    cairo_arc(cr, x + w - r, y + h - r, r, 0.0, quarter);
    cairo_arc(cr, x + r, y + h - r, r, quarter, 2.0 * quarter);
    cairo_arc(cr, x + r, y + r, r, 2.0 * quarter, 3.0 * quarter);
    cairo_close_path(cr);
}

} // namespace

struct Painter::State {
    cairo_surface_t* surface = nullptr;
    cairo_t* cr = nullptr;
    double height = 0.0;
    XY<double> origin;
    std::vector<XY<double>> saved;

    // Device (top-down) coordinates of a point in the painter's bottom-up coordinates.
    double deviceX(double x) const { return safe(origin.x + x); }
    double deviceY(double y) const { return safe(height - (origin.y + y)); }

    struct DeviceRect {
        double x, y, w, h;
    };
    DeviceRect device(const PaintRect& r) const
    {
        const double left = deviceX(r.x0);
        const double top = deviceY(r.y1);
        return {left, top, deviceX(r.x1) - left, deviceY(r.y0) - top};
    }
};

Painter::Painter(Image target) : m_target(std::move(target)), m_state(std::make_unique<State>())
{
    State& s = *m_state;
    if (m_target.isNull())
        s.surface = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, 0, 0); // draws nothing, safely
    else
        s.surface = cairo_image_surface_create_for_data(m_target.bytes(), CAIRO_FORMAT_ARGB32, m_target.width(),
                                                        m_target.height(), m_target.stride());
    s.cr = cairo_create(s.surface);
    s.height = m_target.height();
    m_outer = t_current;
    t_current = this;
}

Painter::~Painter()
{
    if (t_current == this)
        t_current = m_outer;
    cairo_destroy(m_state->cr);
    cairo_surface_flush(m_state->surface);
    cairo_surface_destroy(m_state->surface);
}

Painter* Painter::current()
{
    return t_current;
}

void Painter::save()
{
    cairo_save(m_state->cr);
    m_state->saved.push_back(m_state->origin);
}

void Painter::restore()
{
    if (m_state->saved.empty())
        return;
    cairo_restore(m_state->cr);
    m_state->origin = m_state->saved.back();
    m_state->saved.pop_back();
}

void Painter::translate(double dx, double dy)
{
    if (!finite({dx, dy}))
        return;
    m_state->origin.x += dx;
    m_state->origin.y += dy;
}

XY<double> Painter::origin() const
{
    return m_state->origin;
}

void Painter::clipTo(const PaintRect& rect)
{
    cairo_t* cr = m_state->cr;
    if (rect.empty() || !finite({rect.x0, rect.y0, rect.x1, rect.y1})) {
        cairo_rectangle(cr, 0, 0, 0, 0); // nothing may be drawn any more
        cairo_clip(cr);
        return;
    }
    const auto d = m_state->device(rect);
    cairo_rectangle(cr, d.x, d.y, d.w, d.h);
    cairo_clip(cr);
}

void Painter::clipTo(std::span<const PaintRect> rects)
{
    cairo_t* cr = m_state->cr;
    cairo_new_path(cr);
    for (const PaintRect& rect : rects) {
        if (rect.empty() || !finite({rect.x0, rect.y0, rect.x1, rect.y1}))
            continue;
        const auto d = m_state->device(rect);
        cairo_rectangle(cr, d.x, d.y, d.w, d.h);
    }
    cairo_clip(cr); // an empty path leaves nothing to draw in
}

PaintRect Painter::clipBounds() const
{
    double x1, y1, x2, y2;
    cairo_clip_extents(m_state->cr, &x1, &y1, &x2, &y2);
    if (!(x1 < x2) || !(y1 < y2))
        return {};
    const State& s = *m_state;
    return PaintRect(x1 - s.origin.x, s.height - y2 - s.origin.y, x2 - s.origin.x, s.height - y1 - s.origin.y);
}

bool Painter::isVisible(const PaintRect& rect) const
{
    const PaintRect clip = clipBounds();
    return !rect.empty() && !clip.empty() && rect.x0 < clip.x1 && clip.x0 < rect.x1 && rect.y0 < clip.y1
        && clip.y0 < rect.y1;
}

void Painter::clear(const Colour& colour)
{
    cairo_t* cr = m_state->cr;
    cairo_save(cr);
    cairo_set_operator(cr, CAIRO_OPERATOR_SOURCE);
    setSource(cr, colour);
    cairo_paint(cr);
    cairo_restore(cr);
}

void Painter::fillRect(const PaintRect& rect, const Colour& colour)
{
    if (rect.empty())
        return;
    cairo_t* cr = m_state->cr;
    const auto d = m_state->device(rect);
    cairo_rectangle(cr, d.x, d.y, d.w, d.h);
    setSource(cr, colour);
    cairo_fill(cr);
}

void Painter::fillRects(std::span<const PaintRect> rects, const Colour& colour)
{
    cairo_t* cr = m_state->cr;
    cairo_new_path(cr);
    for (const PaintRect& rect : rects) {
        if (rect.empty())
            continue;
        const auto d = m_state->device(rect);
        cairo_rectangle(cr, d.x, d.y, d.w, d.h);
    }
    setSource(cr, colour);
    cairo_fill(cr); // an empty path fills nothing
}

void Painter::strokeRect(const PaintRect& rect, const Colour& colour, double lineWidth)
{
    if (rect.empty() || !(lineWidth > 0.0))
        return;
    if (rect.width() <= 2 * lineWidth || rect.height() <= 2 * lineWidth) {
        fillRect(rect, colour); // the outline would cover it all
        return;
    }
    cairo_t* cr = m_state->cr;
    const auto d = m_state->device(rect);
    const double half = lineWidth / 2.0;
    cairo_rectangle(cr, d.x + half, d.y + half, d.w - lineWidth, d.h - lineWidth);
    cairo_set_line_width(cr, lineWidth);
    cairo_set_line_join(cr, CAIRO_LINE_JOIN_MITER);
    setSource(cr, colour);
    cairo_stroke(cr);
}

void Painter::fillRoundedRect(const PaintRect& rect, double radius, const Colour& colour)
{
    if (rect.empty() || !std::isfinite(radius))
        return;
    cairo_t* cr = m_state->cr;
    const auto d = m_state->device(rect);
    roundedRectPath(cr, d.x, d.y, d.w, d.h, radius);
    setSource(cr, colour);
    cairo_fill(cr);
}

void Painter::strokeRoundedRect(const PaintRect& rect, double radius, const Colour& colour, double lineWidth)
{
    if (rect.empty() || !std::isfinite(radius) || !(lineWidth > 0.0) || !std::isfinite(lineWidth))
        return;
    cairo_t* cr = m_state->cr;
    const auto d = m_state->device(rect);
    const double half = lineWidth / 2.0;
    if (d.w <= lineWidth || d.h <= lineWidth) {
        fillRoundedRect(rect, radius, colour);
        return;
    }
    roundedRectPath(cr, d.x + half, d.y + half, d.w - lineWidth, d.h - lineWidth, radius - half);
    cairo_set_line_width(cr, lineWidth);
    setSource(cr, colour);
    cairo_stroke(cr);
}

void Painter::drawEllipse(const EllipseDescription& e)
{
    if (!finite({e.centre.x, e.centre.y, e.radii.x, e.radii.y, e.lineWidth}) || !(e.radii.x > 0.0)
        || !(e.radii.y > 0.0))
        return;
    cairo_t* cr = m_state->cr;
    // The path is built in a scaled space, then the scale is dropped so the outline keeps an even width.
    cairo_save(cr);
    cairo_translate(cr, m_state->deviceX(e.centre.x), m_state->deviceY(e.centre.y));
    cairo_scale(cr, std::min(e.radii.x, 1.0e6), std::min(e.radii.y, 1.0e6));
    cairo_new_path(cr);
    cairo_arc(cr, 0.0, 0.0, 1.0, 0.0, 2.0 * std::numbers::pi);
    cairo_restore(cr);
    if (e.fill.a() > 0.0) {
        setSource(cr, e.fill);
        cairo_fill_preserve(cr);
    }
    if (e.outline.a() > 0.0 && e.lineWidth > 0.0) {
        setSource(cr, e.outline);
        cairo_set_line_width(cr, e.lineWidth);
        cairo_stroke_preserve(cr);
    }
    cairo_new_path(cr);
}

void Painter::drawLine(double xA, double yA, double xB, double yB, const Colour& colour, double lineWidth)
{
    const XY<double> points[2] = {{xA, yA}, {xB, yB}};
    drawPolyline(points, colour, lineWidth, false);
}

void Painter::drawPolyline(std::span<const XY<double>> points, const Colour& colour, double lineWidth, bool closed)
{
    if (points.empty() || !(lineWidth > 0.0) || !std::isfinite(lineWidth))
        return;
    cairo_t* cr = m_state->cr;
    cairo_new_path(cr);
    // Through pixel centres, with square ends, so that a line between two integer points covers both end pixels
    // exactly.
    for (const auto& p : points)
        cairo_line_to(cr, m_state->deviceX(p.x) + 0.5, m_state->deviceY(p.y) - 0.5);
    if (closed)
        cairo_close_path(cr);
    cairo_set_line_width(cr, lineWidth);
    cairo_set_line_cap(cr, CAIRO_LINE_CAP_SQUARE);
    cairo_set_line_join(cr, CAIRO_LINE_JOIN_MITER);
    setSource(cr, colour);
    cairo_stroke(cr);
}

void Painter::fillPolygon(std::span<const XY<double>> points, const Colour& colour)
{
    if (points.size() < 3)
        return;
    cairo_t* cr = m_state->cr;
    cairo_new_path(cr);
    for (const auto& p : points)
        cairo_line_to(cr, m_state->deviceX(p.x), m_state->deviceY(p.y));
    cairo_close_path(cr);
    setSource(cr, colour);
    cairo_fill(cr);
}

void Painter::fillVerticalGradient(const PaintRect& rect, const Colour& bottom, const Colour& top)
{
    if (rect.empty())
        return;
    cairo_t* cr = m_state->cr;
    const auto d = m_state->device(rect);
    cairo_pattern_t* gradient = cairo_pattern_create_linear(0.0, d.y + d.h, 0.0, d.y);
    cairo_pattern_add_color_stop_rgba(gradient, 0.0, bottom.r(), bottom.g(), bottom.b(), bottom.a());
    cairo_pattern_add_color_stop_rgba(gradient, 1.0, top.r(), top.g(), top.b(), top.a());
    cairo_rectangle(cr, d.x, d.y, d.w, d.h);
    cairo_set_source(cr, gradient);
    cairo_fill(cr);
    cairo_pattern_destroy(gradient);
}

void Painter::fillHorizontalGradient(const PaintRect& rect, const Colour& left, const Colour& right)
{
    if (rect.empty())
        return;
    cairo_t* cr = m_state->cr;
    const auto d = m_state->device(rect);
    cairo_pattern_t* gradient = cairo_pattern_create_linear(d.x, 0.0, d.x + d.w, 0.0);
    cairo_pattern_add_color_stop_rgba(gradient, 0.0, left.r(), left.g(), left.b(), left.a());
    cairo_pattern_add_color_stop_rgba(gradient, 1.0, right.r(), right.g(), right.b(), right.a());
    cairo_rectangle(cr, d.x, d.y, d.w, d.h);
    cairo_set_source(cr, gradient);
    cairo_fill(cr);
    cairo_pattern_destroy(gradient);
}

void Painter::drawBevel(const PaintRect& rect, const Colour& light, const Colour& dark, int width)
{
    const double w = std::min<double>(width, std::min(rect.width(), rect.height()) / 2.0);
    if (rect.empty() || !(w > 0.0))
        return;
    const double x0 = rect.x0, y0 = rect.y0, x1 = rect.x1, y1 = rect.y1;
    // Two frames meeting on the diagonals of the bottom-left and top-right corners.
    const XY<double> lit[] = {{x0, y0}, {x0 + w, y0 + w}, {x0 + w, y1 - w}, {x1 - w, y1 - w}, {x1, y1}, {x0, y1}};
    const XY<double> shaded[] = {{x0, y0}, {x1, y0}, {x1, y1}, {x1 - w, y1 - w}, {x1 - w, y0 + w}, {x0 + w, y0 + w}};
    fillPolygon(lit, light);
    fillPolygon(shaded, dark);
}

void Painter::drawImage(const Image& image, const PaintRect& dest, ImageQuality quality, double opacity)
{
    if (image.isNull() || dest.empty() || !(opacity > 0.0))
        return;
    cairo_t* cr = m_state->cr;
    const auto d = m_state->device(dest);
    // Cairo only reads the source pixels here; its interface simply has no const form.
    cairo_surface_t* source = cairo_image_surface_create_for_data(const_cast<uint8_t*>(image.bytes()),
                                                                  CAIRO_FORMAT_ARGB32, image.width(),
                                                                  image.height(), image.stride());
    cairo_save(cr);
    cairo_rectangle(cr, d.x, d.y, d.w, d.h);
    cairo_clip(cr);
    cairo_translate(cr, d.x, d.y);
    cairo_scale(cr, d.w / image.width(), d.h / image.height());
    cairo_set_source_surface(cr, source, 0.0, 0.0);
    cairo_pattern_t* pattern = cairo_get_source(cr);
    // Padding stops the edge pixels from fading into transparency when scaled.
    cairo_pattern_set_extend(pattern, CAIRO_EXTEND_PAD);
    switch (quality) {
    case ImageQuality::Fast:
        cairo_pattern_set_filter(pattern, CAIRO_FILTER_NEAREST);
        break;
    case ImageQuality::Good:
        cairo_pattern_set_filter(pattern, CAIRO_FILTER_BILINEAR);
        break;
    case ImageQuality::Best:
        cairo_pattern_set_filter(pattern, CAIRO_FILTER_GOOD);
        break;
    }
    cairo_paint_with_alpha(cr, std::min(opacity, 1.0));
    cairo_restore(cr);
    cairo_surface_destroy(source);
}

void Painter::drawImage(const Image& image, double x, double y, double opacity)
{
    if (image.isNull())
        return;
    drawImage(image, PaintRect::fromSize(x, y, image.width(), image.height()), ImageQuality::Fast, opacity);
}

void Painter::drawText(std::string_view utf8, const Font& font, const Colour& colour, double x, double baselineY)
{
    if (utf8.empty() || !finite({x, baselineY}))
        return;
    cairo_t* cr = m_state->cr;
    setSource(cr, colour);
    font.engine().draw(cr, utf8, m_state->deviceX(x), m_state->deviceY(baselineY));
}

void Painter::drawText(std::wstring_view text, const Font& font, const Colour& colour, double x, double baselineY)
{
    drawText(std::string_view(utf8Of(text)), font, colour, x, baselineY);
}

void Painter::drawTextInBox(std::wstring_view text, const Font& font, const Colour& colour, const PaintRect& box,
                            TextAlign align, unsigned flags)
{
    if (text.empty() || box.empty())
        return;
    std::wstring shown;
    double width = font.measureWidth(text);
    if ((flags & textEllipsis) && width > box.width()) {
        shown = elideText(text, font, box.width());
        text = shown;
        width = font.measureWidth(text);
    }
    double x = box.x0;
    if (align == TextAlign::Centre)
        x = box.x0 + (box.width() - width) / 2.0;
    else if (align == TextAlign::Right)
        x = box.x1 - width;
    // The line box centred in the rectangle, on a whole pixel so that hinted glyphs stay sharp.
    const double baseline = std::round(box.y0 + (box.height() - font.ascent() - font.descent()) / 2.0 + font.descent());
    if (flags & textNoClip) {
        drawText(text, font, colour, x, baseline);
        return;
    }
    save();
    clipTo(box);
    drawText(text, font, colour, x, baseline);
    restore();
}

void Painter::drawTextInBox(std::string_view utf8, const Font& font, const Colour& colour, const PaintRect& box,
                            TextAlign align, unsigned flags)
{
    drawTextInBox(std::wstring_view(fromUTF8(utf8)), font, colour, box, align, flags);
}

int Painter::drawWrappedText(std::wstring_view text, const Font& font, const Colour& colour, const PaintRect& box,
                             TextAlign align)
{
    const auto lines = WordWrappingTextRenderer::calcLineBreaks(text, font, box.width());
    if (box.empty())
        return static_cast<int>(lines.size());
    save();
    clipTo(box);
    const PaintRect clip = clipBounds();
    double baseline = std::round(box.y1 - font.ascent());
    for (const auto& line : lines) {
        if (baseline - font.descent() >= clip.y1) {
            baseline -= font.lineHeight();
            continue;
        }
        if (baseline + font.ascent() < clip.y0)
            break; // every later line lies lower still
        std::wstring shown(text.substr(line.begin, line.end - line.begin));
        // One space ending a line hangs past the edge and does not move the alignment.
        if (!line.hyphen && !shown.empty() && shown.back() == L' ')
            shown.pop_back();
        if (line.hyphen)
            shown.push_back(L'\u2010');
        double x = box.x0;
        if (align != TextAlign::Left) {
            const double width = font.measureWidth(std::wstring_view(shown));
            x = align == TextAlign::Centre ? box.x0 + (box.width() - width) / 2.0 : box.x1 - width;
        }
        drawText(std::wstring_view(shown), font, colour, x, baseline);
        baseline -= font.lineHeight();
    }
    restore();
    return static_cast<int>(lines.size());
}

StateSaver::StateSaver() : m_painter(Painter::current())
{
    if (m_painter)
        m_painter->save();
}

StateSaver::StateSaver(Painter& painter) : m_painter(&painter)
{
    m_painter->save();
}

StateSaver::~StateSaver()
{
    if (m_painter)
        m_painter->restore();
}

std::wstring elideText(std::wstring_view text, const Font& font, double width)
{
    if (font.measureWidth(text) <= width)
        return std::wstring(text);
    static constexpr std::wstring_view ellipsis = L"\u2026";
    if (font.measureWidth(ellipsis) > width)
        return {};
    // The widths of prefixes grow with their length, so the longest prefix that fits is found by halving.
    size_t low = 0;
    size_t high = text.size();
    std::wstring candidate;
    while (low < high) {
        const size_t mid = (low + high + 1) / 2;
        candidate.assign(text.substr(0, mid));
        candidate.append(ellipsis);
        if (font.measureWidth(std::wstring_view(candidate)) <= width)
            low = mid;
        else
            high = mid - 1;
    }
    std::wstring result(text.substr(0, low));
    while (!result.empty() && result.back() == L' ')
        result.pop_back();
    result.append(ellipsis);
    return result;
}

} // namespace Pictor
