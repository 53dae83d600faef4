// Gallery page: text and drawing: the interface font at its sizes and styles, the title font, wrapped and
// elided text, and the shapes, lines, gradients and bevels the style painter builds on.
#include "toolkit/gfx/Font.h"
#include "toolkit/gfx/Painter.h"
#include "toolkit/ui/StandardPanel.h"
#include "toolkit/ui/UifStd.h"
#include "workbench/Gallery.h"
#include "workbench/GalleryWidgets.h"

#include <array>
#include <cmath>
#include <string>

namespace {

using Pictor::PaintRect;

void drawTextColumn(Pictor::Painter& p, const GlobBox& box, const Palette& pal)
{
    const int left = box.left() + 16;
    double y = box.top() - 10;
    auto line = [&](const Pictor::FontDesc& desc, const std::wstring& text, const Colour& ink) {
        const Cv::Ptr<Pictor::Font> font = Pictor::loadFont(desc);
        y -= font->ascent();
        p.drawText(std::wstring_view(text), *font, ink, left, y);
        y -= font->descent() + 6;
    };
    const LightweightString<char> family = getDefaultFontName();
    for (int size : {10, 11, 13, 16, 20, 28}) {
        const wchar_t* sample = size <= 16 ? L" px  The quick brown fox jumps over the lazy dog 0123456789"
                                           : L" px  The quick brown fox 0123";
        line(Pictor::FontDesc(family, size), std::to_wstring(size) + sample, pal.text());
    }
    line(Pictor::FontDesc(family, 16, Pictor::fontStyleBold), L"Bold: Export settings", pal.text());
    line(Pictor::FontDesc(family, 16, Pictor::fontStyleItalic), L"Italic: a note beside the value", pal.text());
    line(Pictor::FontDesc(family, 16, Pictor::fontStyleBoldItalic), L"Bold italic: emphasis", pal.text());
    line(UifStd::getTitleFont(), L"Title font: Compression settings", pal.titleText());
    line(UifStd::getDefaultFont(), L"Subheading text colour: legends and group titles", pal.subheadingText());
    line(UifStd::getDefaultFont(), L"Disabled text colour: an option not available now", pal.disabledText());
    line(UifStd::getDefaultFont(), L"Accents and scripts: \u00c9t\u00e9, na\u00efve, Stra\u00dfe, \u0394\u03b5\u03bb\u03c4\u03b1, "
                                   L"\u041a\u0430\u0434\u0440",
         pal.text());

    const Cv::Ptr<Pictor::Font> body = Pictor::loadFont(UifStd::getDefaultFont());
    const std::wstring paragraph =
        L"Wrapped text: a long description is broken into lines at word boundaries so that it fits the width of "
        L"its box, and each line is drawn from the top of the box down. Lines that do not fit are clipped.";
    y -= 4;
    const PaintRect wrapBox(left, y - 80, left + 420, y);
    p.strokeRect(wrapBox, pal.border());
    p.drawWrappedText(paragraph, *body, pal.text(), PaintRect(wrapBox.x0 + 6, wrapBox.y0 + 4, wrapBox.x1 - 6, wrapBox.y1 - 4));
    y -= 96;
    const PaintRect elideBox(left, y - 22, left + 220, y);
    p.strokeRect(elideBox, pal.border());
    p.drawTextInBox(L"Elided: a label too long for its box is cut with an ellipsis", *body, pal.text(),
                    PaintRect(elideBox.x0 + 6, elideBox.y0, elideBox.x1 - 6, elideBox.y1), Pictor::TextAlign::Left,
                    Pictor::textEllipsis);
    const PaintRect centreBox(left + 240, y - 22, left + 420, y);
    p.strokeRect(centreBox, pal.border());
    p.drawTextInBox(L"Centred", *body, pal.text(), centreBox, Pictor::TextAlign::Centre);
}

void drawShapeColumn(Pictor::Painter& p, const GlobBox& box, const Palette& pal)
{
    const Cv::Ptr<Pictor::Font> caption = Pictor::loadFont(UifStd::getDefaultFont());
    const double left = box.left() + 16;
    const double top = box.top() - 16;
    auto captionAt = [&](const wchar_t* text, double x, double y) {
        p.drawText(std::wstring_view(text), *caption, pal.subheadingText(), x, y);
    };

    // Row 1: rectangles.
    double y = top - 70;
    p.fillRect(PaintRect::fromSize(left, y, 70, 50), pal.highlight());
    p.strokeRect(PaintRect::fromSize(left + 90, y, 70, 50), pal.text());
    p.strokeRect(PaintRect::fromSize(left + 180, y, 70, 50), pal.warning(), 3.0);
    p.fillRoundedRect(PaintRect::fromSize(left + 270, y, 70, 50), 10, pal.focus());
    p.strokeRoundedRect(PaintRect::fromSize(left + 360, y, 70, 50), 10, pal.text(), 2.0);
    captionAt(L"fill, stroke 1 and 3 px, rounded fill and stroke", left, y - 16);

    // Row 2: ellipses and lines.
    y -= 110;
    Pictor::EllipseDescription circle;
    circle.centre = {left + 35, y + 25};
    circle.radii = {25, 25};
    circle.fill = pal.highlight();
    p.drawEllipse(circle);
    Pictor::EllipseDescription oval;
    oval.centre = {left + 125, y + 25};
    oval.radii = {40, 22};
    oval.outline = pal.warning();
    oval.lineWidth = 2.5;
    p.drawEllipse(oval);
    for (int i = 0; i < 4; ++i) {
        const double x = left + 190 + i * 14;
        p.drawLine(x, y, x, y + 50, pal.text(), 1.0 + i);
    }
    p.drawLine(left + 260, y, left + 330, y + 50, pal.text());
    p.drawLine(left + 260, y + 50, left + 330, y, pal.focus(), 2.0);
    p.drawLine(left + 345, y + 25, left + 430, y + 25, pal.subheadingText());
    captionAt(L"ellipses, lines 1-4 px, antialiased diagonals", left, y - 16);

    // Row 3: polygons and polylines.
    y -= 110;
    std::array<XY<double>, 10> star;
    for (size_t i = 0; i < star.size(); ++i) {
        const double angle = M_PI / 2 + i * M_PI / 5;
        const double r = (i % 2 == 0) ? 28 : 12;
        star[i] = {left + 35 + r * std::cos(angle), y + 25 + r * std::sin(angle)};
    }
    p.fillPolygon(star, pal.warning());
    std::array<XY<double>, 7> wave;
    for (size_t i = 0; i < wave.size(); ++i)
        wave[i] = {left + 90 + i * 25.0, y + 25 + ((i % 2) ? 20.0 : -20.0)};
    p.drawPolyline(wave, pal.highlight(), 2.0);
    const std::array<XY<double>, 3> triangle{XY<double>{left + 270, y}, XY<double>{left + 340, y}, XY<double>{left + 305, y + 50}};
    p.drawPolyline(triangle, pal.text(), 1.5, true);
    captionAt(L"filled polygon, polyline, closed outline", left, y - 16);

    // Row 4: gradients and bevels.
    y -= 110;
    p.fillVerticalGradient(PaintRect::fromSize(left, y, 90, 50), pal.window(0), pal.window(5));
    p.fillHorizontalGradient(PaintRect::fromSize(left + 110, y, 90, 50), pal.highlight(), pal.window(1));
    p.fillRect(PaintRect::fromSize(left + 220, y, 90, 50), pal.window(2));
    p.drawBevel(PaintRect::fromSize(left + 220, y, 90, 50), pal.window(5), pal.window(0), 2);
    p.fillRect(PaintRect::fromSize(left + 330, y, 90, 50), pal.window(2));
    p.drawBevel(PaintRect::fromSize(left + 330, y, 90, 50), pal.window(0), pal.window(5), 2);
    captionAt(L"gradients, raised and sunken bevels", left, y - 16);

    // Row 5: window shades 0 to 5.
    y -= 80;
    for (int shade = 0; shade < Palette::NumShades; ++shade) {
        const PaintRect swatch = PaintRect::fromSize(left + shade * 72, y, 64, 30);
        p.fillRect(swatch, pal.window(shade));
        p.strokeRect(swatch, pal.border());
    }
    captionAt(L"window shades 0-5", left, y - 16);
}

Glob* buildTextPage()
{
    const int userWidth = 1100;
    const int userHeight = 600;
    auto* page = new StandardPanel(galleryPageArgs(L"Text and drawing", userWidth, userHeight));
    page->addWidget<DrawingSurface>(DrawingSurface::InitArgs(drawTextColumn, 620, userHeight, page->getPalette()),
                                    Glob::UserTopLeft(0, 0));
    page->addWidget<DrawingSurface>(
        DrawingSurface::InitArgs(drawShapeColumn, userWidth - 620, userHeight, page->getPalette()),
        Glob::UserTopLeft(620, 0));
    return page;
}

GalleryPageRegistrar textPage("Text", buildTextPage);

} // namespace
