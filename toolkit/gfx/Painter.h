#pragma once
// Pictor::Painter: draws into an Image in the toolkit's coordinates.
//
// Coordinates. The origin is the bottom-left corner of the image (or, after translate(), of a child widget)
// and y grows upward, as everywhere in the toolkit; the painter turns this into image rows itself. Integer
// coordinates lie on pixel edges: fillRect of the box (0, 0)-(10, 2) covers exactly the ten pixels of the two
// bottom rows. Lines run through pixel centres instead, so a 1-pixel line from (0, 5) to (9, 5) lights exactly
// the pixels of row 5, and strokeRect draws its outline inside the box. Both keep edges crisp.
//
// State. translate() and clipTo() change the state; save()/restore(), or a StateSaver scope, bracket changes.
// Clipping only ever narrows, so a child widget cannot draw outside its parent.
//
// Text is drawn with grayscale antialiasing and light vertical-only hinting, with the same unhinted advance
// widths that Font measures, so measured and drawn text always agree.
//
// Threads: a painter belongs to the thread that made it; fonts, and so text, belong to the user-interface thread.

#include "toolkit/gfx/Font.h"
#include "toolkit/gfx/Image.h"
#include "toolkit/support/Box.h"
#include "toolkit/support/Colour.h"
#include "toolkit/support/XY.h"

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>

namespace Pictor {

// A rectangle in the painter's bottom-up coordinates; made from any bottom-up box.
struct PaintRect {
    PaintRect() = default;
    PaintRect(double left, double bottom, double right, double top) : x0(left), y0(bottom), x1(right), y1(top) {}
    template <typename T>
    PaintRect(const Cv::Box<T, Cv::BottomUpTraits>& box)
        : x0(box.left()), y0(box.bottom()), x1(box.right()), y1(box.top())
    {
    }
    static PaintRect fromSize(double left, double bottom, double width, double height)
    {
        return PaintRect(left, bottom, left + width, bottom + height);
    }
    double width() const { return x1 - x0; }
    double height() const { return y1 - y0; }
    bool empty() const { return !(x0 < x1) || !(y0 < y1); }

    double x0 = 0.0;
    double y0 = 0.0;
    double x1 = 0.0;
    double y1 = 0.0;
};

struct EllipseDescription {
    XY<double> centre;
    XY<double> radii;
    Colour fill = Colour(0, 0, 0, 0);    // a transparent fill is not drawn
    Colour outline = Colour(0, 0, 0, 0); // nor is a transparent outline
    double lineWidth = 1.0;              // the outline straddles the ellipse's edge
};

enum class TextAlign : uint8_t { Left, Centre, Right };

// Fast: nearest pixel. Good: bilinear. Best: area-averaging when shrinking, for thumbnails.
enum class ImageQuality : uint8_t { Fast, Good, Best };

enum TextFlags : unsigned {
    textNoFlags = 0,
    textEllipsis = 1, // a text wider than its box ends in "…" at the last character that fits
    textNoClip = 2,   // let glyphs overhang the box instead of clipping them to it
};

class Painter {
public:
    // Paints into the image's pixels (the painter keeps them alive). A null image gives a painter that draws
    // nothing.
    explicit Painter(Image target);
    ~Painter();
    Painter(const Painter&) = delete;
    Painter& operator=(const Painter&) = delete;

    // The innermost painter alive on this thread, or null; StateSaver() uses it.
    static Painter* current();

    const Image& target() const { return m_target; }
    int width() const { return m_target.width(); }
    int height() const { return m_target.height(); }

    // ---- State
    void save();
    // Unbalanced restores are ignored.
    void restore();
    // Moves the origin, for drawing a child at its own coordinates.
    void translate(double dx, double dy);
    XY<double> origin() const;
    // Narrows the clip to the rectangle (in current coordinates).
    void clipTo(const PaintRect& rect);
    // Narrows the clip to the union of the rectangles; clipBounds() then answers the box around them.
    void clipTo(std::span<const PaintRect> rects);
    // The clip in current coordinates; empty when nothing can be drawn.
    PaintRect clipBounds() const;
    // False when the rectangle lies wholly outside the clip, so its drawing can be skipped.
    bool isVisible(const PaintRect& rect) const;

    // ---- Shapes
    // Replaces everything inside the clip by the colour, transparency included.
    void clear(const Colour& colour);
    void fillRect(const PaintRect& rect, const Colour& colour);
    // All the rectangles as one shape in one pass: where they overlap, the colour is laid on once. Rectangles
    // on whole pixels are filled without antialiasing, which makes this the quick way to draw many of them.
    void fillRects(std::span<const PaintRect> rects, const Colour& colour);
    void strokeRect(const PaintRect& rect, const Colour& colour, double lineWidth = 1.0);
    void fillRoundedRect(const PaintRect& rect, double radius, const Colour& colour);
    void strokeRoundedRect(const PaintRect& rect, double radius, const Colour& colour, double lineWidth = 1.0);
    void drawEllipse(const EllipseDescription& ellipse);
    void drawLine(double xA, double yA, double xB, double yB, const Colour& colour, double lineWidth = 1.0);
    void drawPolyline(std::span<const XY<double>> points, const Colour& colour, double lineWidth = 1.0,
                      bool closed = false);
    void fillPolygon(std::span<const XY<double>> points, const Colour& colour);

    // Gradients, for bevels and gauges: a vertical one runs from `bottom` to `top`, a horizontal one from
    // `left` to `right`.
    void fillVerticalGradient(const PaintRect& rect, const Colour& bottom, const Colour& top);
    void fillHorizontalGradient(const PaintRect& rect, const Colour& left, const Colour& right);
    // A raised edge `width` pixels wide inside the rectangle: light on the top and left, dark on the bottom and
    // right. Swap the colours for a sunken edge.
    void drawBevel(const PaintRect& rect, const Colour& light, const Colour& dark, int width = 1);

    // ---- Images
    // Scales the whole image into the rectangle.
    void drawImage(const Image& image, const PaintRect& dest, ImageQuality quality = ImageQuality::Good,
                   double opacity = 1.0);
    // At its own size, bottom-left corner at (x, y).
    void drawImage(const Image& image, double x, double y, double opacity = 1.0);

    // ---- Text
    // Starts at x on the baseline y.
    void drawText(std::wstring_view text, const Font& font, const Colour& colour, double x, double baselineY);
    void drawText(std::string_view utf8, const Font& font, const Colour& colour, double x, double baselineY);
    // One line aligned in the box and centred vertically on the font's line box, clipped to the box unless
    // textNoClip is given.
    void drawTextInBox(std::wstring_view text, const Font& font, const Colour& colour, const PaintRect& box,
                       TextAlign align = TextAlign::Left, unsigned flags = textNoFlags);
    void drawTextInBox(std::string_view utf8, const Font& font, const Colour& colour, const PaintRect& box,
                       TextAlign align = TextAlign::Left, unsigned flags = textNoFlags);
    // Word-wrapped to the box's width (WordWrappingTextRenderer), from the top of the box down, clipped to it.
    // Answers the number of lines the text takes, drawn or not.
    int drawWrappedText(std::wstring_view text, const Font& font, const Colour& colour, const PaintRect& box,
                        TextAlign align = TextAlign::Left);

private:
    struct State;

    Image m_target;
    std::unique_ptr<State> m_state;
    Painter* m_outer = nullptr;
};

// Saves the painter's state and restores it at the end of the scope. Made with no painter, it acts on the
// current one (and does nothing when there is none).
class StateSaver {
public:
    StateSaver();
    explicit StateSaver(Painter& painter);
    ~StateSaver();
    StateSaver(const StateSaver&) = delete;
    StateSaver& operator=(const StateSaver&) = delete;

private:
    Painter* m_painter = nullptr;
};

// The longest start of the text that fits the width with "…" after it, or the text itself when it fits.
std::wstring elideText(std::wstring_view text, const Font& font, double width);

} // namespace Pictor
