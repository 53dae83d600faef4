// The painter works in bottom-up coordinates; these tests read the image back, so "row y" below always means
// the y-th row from the bottom, as the painter sees it.
#include "toolkit/gfx/Painter.h"
#include "toolkit/gfx/WordWrappingTextRenderer.h"

#include <gtest/gtest.h>

#include <limits>

using namespace Pictor;

namespace {

const Colour red(1, 0, 0);
const Colour blue(0, 0, 1);
const Colour white(1, 1, 1);

// The pixel at (x, y) counted from the bottom-left corner.
uint32_t at(const Image& image, int x, int y)
{
    return image.pixel(x, image.height() - 1 - y);
}

int alphaAt(const Image& image, int x, int y)
{
    return static_cast<int>(at(image, x, y) >> 24);
}

// Number of pixels touched in a region (bottom-up, right and top exclusive).
int paintedIn(const Image& image, int x0, int y0, int x1, int y1)
{
    int count = 0;
    for (int y = y0; y < y1; ++y) {
        for (int x = x0; x < x1; ++x)
            count += alphaAt(image, x, y) != 0;
    }
    return count;
}

} // namespace

TEST(Painter, RectangleAtZeroLandsOnTheBottomRows)
{
    Image image(8, 6);
    Painter painter(image);
    painter.fillRect(PaintRect(0, 0, 8, 2), red);
    EXPECT_EQ(image.pixel(0, 5), 0xFFFF0000u); // bottom row in memory order is the last one
    EXPECT_EQ(image.pixel(7, 4), 0xFFFF0000u);
    EXPECT_EQ(image.pixel(0, 3), 0u);
    EXPECT_EQ(paintedIn(image, 0, 0, 8, 6), 16);
    // Integer edges cover whole pixels: nothing half painted.
    EXPECT_EQ(alphaAt(image, 3, 1), 255);
    EXPECT_EQ(alphaAt(image, 3, 2), 0);
}

TEST(Painter, OverlappingRectanglesFilledTogetherTakeTheColourOnce)
{
    Image image(10, 10);
    Painter painter(image);
    const PaintRect rects[] = {PaintRect(0, 0, 6, 2), PaintRect(4, 0, 10, 2)};
    painter.fillRects(rects, Colour(1, 0, 0, 0.5));

    EXPECT_EQ(alphaAt(image, 0, 0), alphaAt(image, 5, 0)) << "where the two overlap";
    EXPECT_EQ(alphaAt(image, 9, 1), alphaAt(image, 5, 1));
    EXPECT_EQ(paintedIn(image, 0, 0, 10, 10), 20);
}

TEST(Painter, ClipLimitsDrawingAndStateSaverRestoresClipAndOrigin)
{
    Image image(10, 10);
    Painter painter(image);
    {
        StateSaver saver(painter);
        painter.translate(2, 2);
        painter.clipTo(PaintRect(0, 0, 3, 2));
        EXPECT_FALSE(painter.isVisible(PaintRect(4, 4, 6, 6)));
        EXPECT_TRUE(painter.isVisible(PaintRect(-5, -5, 1, 1)));
        painter.fillRect(PaintRect(-100, -100, 100, 100), red);
        {
            // Clips only narrow: a child cannot widen its parent's clip.
            StateSaver inner(painter);
            painter.clipTo(PaintRect(-50, -50, 50, 50));
            painter.fillRect(PaintRect(-100, -100, 100, 100), blue);
        }
        const PaintRect clip = painter.clipBounds();
        EXPECT_DOUBLE_EQ(clip.x0, 0.0);
        EXPECT_DOUBLE_EQ(clip.y1, 2.0);
    }
    EXPECT_EQ(paintedIn(image, 0, 0, 10, 10), 6);
    EXPECT_EQ(at(image, 2, 2), 0xFF0000FFu);
    EXPECT_EQ(at(image, 5, 2), 0u);
    EXPECT_EQ(painter.origin(), XY<double>(0, 0));
    painter.fillRect(PaintRect(0, 0, 10, 10), white);
    EXPECT_EQ(paintedIn(image, 0, 0, 10, 10), 100);
    // A restore with nothing saved is ignored.
    painter.restore();
    painter.fillRect(PaintRect(0, 0, 1, 1), red);
    EXPECT_EQ(at(image, 0, 0), 0xFFFF0000u);
}

TEST(Painter, StateSaverWithoutAPainterActsOnTheCurrentOne)
{
    EXPECT_EQ(Painter::current(), nullptr);
    {
        StateSaver nothingToSave; // harmless with no painter alive
    }
    Image image(4, 4);
    Painter outer(image);
    {
        Image other(2, 2);
        Painter inner(other);
        EXPECT_EQ(Painter::current(), &inner);
    }
    EXPECT_EQ(Painter::current(), &outer);
    {
        StateSaver saver;
        outer.translate(1, 1);
        outer.clipTo(PaintRect(0, 0, 1, 1));
    }
    EXPECT_EQ(outer.origin(), XY<double>(0, 0));
    outer.fillRect(PaintRect(0, 0, 4, 4), red);
    EXPECT_EQ(paintedIn(image, 0, 0, 4, 4), 16);
}

TEST(Painter, OutlinesAndLinesAreCrisp)
{
    Image image(20, 20);
    Painter painter(image);
    painter.strokeRect(PaintRect(2, 2, 12, 12), red, 1.0);
    EXPECT_EQ(alphaAt(image, 2, 2), 255);
    EXPECT_EQ(alphaAt(image, 11, 11), 255);
    EXPECT_EQ(alphaAt(image, 3, 3), 0);   // inside the outline
    EXPECT_EQ(alphaAt(image, 12, 12), 0); // the outline stays inside the box
    EXPECT_EQ(paintedIn(image, 0, 0, 20, 20), 36); // the ten-pixel square's edge

    Image lines(12, 12);
    Painter linePainter(lines);
    linePainter.drawLine(0, 5, 9, 5, blue);
    for (int x = 0; x <= 9; ++x) {
        EXPECT_EQ(alphaAt(lines, x, 5), 255) << x;
    }
    EXPECT_EQ(paintedIn(lines, 0, 0, 12, 12), 10);
}

TEST(Painter, EllipsesGradientsAndBevels)
{
    Image image(40, 20);
    Painter painter(image);
    EllipseDescription ellipse;
    ellipse.centre = {20, 10};
    ellipse.radii = {15, 6};
    ellipse.fill = blue;
    painter.drawEllipse(ellipse);
    EXPECT_EQ(at(image, 20, 10), 0xFF0000FFu);
    EXPECT_EQ(at(image, 33, 10), 0xFF0000FFu); // within the wide radius
    EXPECT_EQ(alphaAt(image, 20, 17), 0);      // beyond the short one
    EXPECT_EQ(alphaAt(image, 6, 15), 0);       // the corners stay empty

    Image gradient(4, 32);
    Painter g(gradient);
    g.fillVerticalGradient(PaintRect(0, 0, 4, 32), Colour(0, 0, 0), white);
    EXPECT_LT(at(gradient, 1, 0) & 0xFF, 20u); // dark at the bottom
    EXPECT_GT(at(gradient, 1, 31) & 0xFF, 235u);

    Image bevel(10, 10);
    Painter b(bevel);
    b.drawBevel(PaintRect(0, 0, 10, 10), white, Colour(0, 0, 0), 2);
    EXPECT_EQ(at(bevel, 1, 8), 0xFFFFFFFFu); // top-left: light
    EXPECT_EQ(at(bevel, 8, 1), 0xFF000000u); // bottom-right: dark
    EXPECT_EQ(alphaAt(bevel, 5, 5), 0);      // the middle is left alone
}

TEST(Painter, ImagesScaleUprightIntoTheRectangle)
{
    Image source(2, 2);
    source.setPixel(0, 0, 0xFFFF0000u); // top-left red
    source.setPixel(1, 0, 0xFF00FF00u);
    source.setPixel(0, 1, 0xFF0000FFu); // bottom-left blue
    source.setPixel(1, 1, 0xFFFFFFFFu);
    Image target(8, 8);
    Painter painter(target);
    painter.drawImage(source, PaintRect(0, 0, 4, 4), ImageQuality::Fast);
    EXPECT_EQ(at(target, 0, 3), 0xFFFF0000u);
    EXPECT_EQ(at(target, 3, 3), 0xFF00FF00u);
    EXPECT_EQ(at(target, 0, 0), 0xFF0000FFu);
    EXPECT_EQ(at(target, 3, 0), 0xFFFFFFFFu);
    EXPECT_EQ(paintedIn(target, 0, 0, 8, 8), 16);
    painter.drawImage(source, 6, 6);
    EXPECT_EQ(at(target, 6, 7), 0xFFFF0000u);
}

TEST(Painter, TextStaysInItsBoxAndLongTextEndsInAnEllipsis)
{
    const auto font = loadFont(FontDesc());
    Image image(200, 40);
    Painter painter(image);
    const std::wstring text = L"A rather long label that cannot possibly fit";
    painter.drawTextInBox(text, *font, white, PaintRect(10, 10, 90, 30), TextAlign::Left, textNoFlags);
    EXPECT_GT(paintedIn(image, 10, 10, 90, 30), 50);
    EXPECT_EQ(paintedIn(image, 0, 0, 200, 10) + paintedIn(image, 0, 30, 200, 40) + paintedIn(image, 90, 0, 200, 40)
                  + paintedIn(image, 0, 0, 10, 40),
              0);

    const std::wstring elided = elideText(text, *font, 80.0);
    EXPECT_LT(elided.size(), text.size());
    EXPECT_EQ(elided.back(), L'\u2026');
    EXPECT_LE(font->measureWidth(std::wstring_view(elided)), 80.0);
    EXPECT_EQ(elideText(L"short", *font, 80.0), L"short");
    EXPECT_EQ(elideText(text, *font, 1.0), L"");

    // Right-aligned text hugs the right edge.
    Image right(100, 20);
    Painter rp(right);
    rp.drawTextInBox(std::string_view("Right"), *font, white, PaintRect(0, 0, 100, 20), TextAlign::Right);
    EXPECT_EQ(paintedIn(right, 0, 0, 50, 20), 0);
    EXPECT_GT(paintedIn(right, 80, 0, 100, 20), 0);
}

TEST(Painter, WrappedTextDrawsEveryLineFromTheTop)
{
    const auto font = loadFont(FontDesc());
    Image image(80, 200);
    Painter painter(image);
    const std::wstring text = L"Several words that wrap onto a few lines in a narrow box";
    const int lines = painter.drawWrappedText(text, *font, white, PaintRect(0, 0, 80, 200));
    EXPECT_EQ(lines, WordWrappingTextRenderer::calcNumDisplayLines(std::wstring_view(text), *font, 80.0));
    ASSERT_GE(lines, 3);
    const int lineHeight = static_cast<int>(font->lineHeight());
    EXPECT_GT(paintedIn(image, 0, 200 - lineHeight, 80, 200), 0); // first line at the top
    EXPECT_GT(paintedIn(image, 0, 200 - lines * lineHeight, 80, 200 - (lines - 1) * lineHeight), 0);
    EXPECT_EQ(paintedIn(image, 0, 0, 80, 200 - lines * lineHeight - 4), 0);
}

TEST(Painter, NonsenseNumbersDrawNothingAndDoNotStopLaterDrawing)
{
    Image image(10, 10);
    Painter painter(image);
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double inf = std::numeric_limits<double>::infinity();
    painter.fillRect(PaintRect(nan, 0, 5, 5), red);
    painter.translate(nan, inf);
    painter.drawLine(0, 0, inf, 5, red, nan);
    EllipseDescription flat;
    flat.centre = {5, 5};
    flat.radii = {0, 3};
    flat.fill = red;
    painter.drawEllipse(flat);
    painter.clipTo(PaintRect(nan, nan, nan, nan));
    painter.restore();
    Image none;
    Painter onNothing(none);
    onNothing.fillRect(PaintRect(0, 0, 5, 5), red);
    EXPECT_EQ(onNothing.width(), 0);

    Image fresh(10, 10);
    Painter ok(fresh);
    ok.fillRect(PaintRect(0, 0, 10, 10), blue);
    EXPECT_EQ(paintedIn(fresh, 0, 0, 10, 10), 100);
}
