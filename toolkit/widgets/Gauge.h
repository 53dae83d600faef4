#pragma once
// Gauge: a bar filled from the left to a measure between 0 and 1, with a text over it ("Rendering 40%",
// "00:01:20 left").
//
// Progress loops run without returning to the event loop, so besides the usual redraw() a gauge can be
// shown at once with display(), which paints the screen now (unless an update deferrer holds painting
// back). Measures outside 0..1 are drawn at the nearer end; NaN counts as 0.

#include "toolkit/support/Colour.h"
#include "toolkit/support/UIString.h"
#include "toolkit/ui/Glob.h"

#include <optional>

class Gauge : public Glob {
public:
    struct InitArgs : GlobCreationInfo {
        InitArgs() = default;
        InitArgs(uint16_t w, uint16_t h, const Palette& pal = Palette(), Canvas* c = nullptr)
            : GlobCreationInfo(w, h, pal, c)
        {
        }
        InitArgs(const GlobCreationInfo& info) : GlobCreationInfo(info) {}

        double measure = 0.0;
        UIString text;
    };

    explicit Gauge(const InitArgs& args);
    Gauge(uint16_t width, uint16_t height, const Palette& palette = Palette(), Canvas* canvas = nullptr);
    Gauge(const Gauge&) = default;
    Gauge(Gauge&&) = default;
    Gauge& operator=(const Gauge&) = default;
    Gauge& operator=(Gauge&&) = default;
    ~Gauge() override;

    LightweightString<char> idstring() const override;

    void setMeasure(double fraction);
    double getMeasure() const { return m_measure; }
    void setString(const UIString& text);
    void setString(const LightweightString<wchar_t>& text) { setString(UIString(text)); }
    const UIString& getString() const { return m_text; }
    // The bar's colour and the colour of the empty part; by default the palette's highlight and darkest
    // window shade.
    void setCols(const Colour& bar, const Colour& background);
    void setTextCol(const Colour& text);
    Colour getBarCol() const;
    Colour getBackgroundCol() const;
    Colour getTextCol() const;
    // Paints the gauge now.
    void display();

    // Where the bar is filled to, in the gauge's own coordinates.
    int filledRight() const;

    // Called by the toolkit
    void drawBackground() override;
    void drawText() override;

private:
    double m_measure = 0.0;
    UIString m_text;
    std::optional<Colour> m_bar;
    std::optional<Colour> m_back;
    std::optional<Colour> m_textCol;
};
