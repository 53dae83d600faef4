#pragma once
// VerticalScrollingBase: a panel whose user area scrolls up and down when what it holds is taller than it.
//
// Rows are added to the scroll area (getScrollArea()), placed from its top as in any panel. The scroll area
// sits inside a viewport that fills the user area less a slim scroll bar on the right; the viewport clips it,
// and scrolling moves the scroll area up and down inside it. The scroll area is as tall as its lowest row
// (never shorter than the viewport); call updateScrollExtent() after adding, removing or resizing rows. Rows
// added or removed without it are noticed at the next paint or wheel turn (the count of rows is compared, so
// a panel of ten thousand rows pays nothing per paint); rows merely resized are not. The scroll area is a widget,
// so it is at most 65535 pixels tall: rows below that are never shown. Long lists belong in a list widget that
// makes widgets only for the lines in view.
//
// Following the focus: a row focused from the keyboard is scrolled into view after the key that moved the
// focus; code that gives a row the focus directly calls ensureVisible() for it (or relies on the next paint).
//
// The offset counts pixels scrolled from the top: 0 shows the first row, getMaxScroll() the last. Every way
// of scrolling (wheel, bar, Page Up/Down, Home/End, keyboard focus, scrollTo) clamps to that range. A row that takes the keyboard
// focus is scrolled into view.

#include "toolkit/ui/StandardPanel.h"

#include <utility>

class VerticalScrollingBase : public StandardPanel {
public:
    explicit VerticalScrollingBase(const InitArgs& args);
    VerticalScrollingBase(uint16_t width, uint16_t height, const Palette& palette = Palette(),
                          Canvas* canvas = nullptr);
    VerticalScrollingBase(const VerticalScrollingBase& other);
    VerticalScrollingBase(VerticalScrollingBase&& other) : VerticalScrollingBase(std::as_const(other)) {}
    VerticalScrollingBase& operator=(const VerticalScrollingBase& other);
    VerticalScrollingBase& operator=(VerticalScrollingBase&& other) { return *this = std::as_const(other); }
    ~VerticalScrollingBase() override;

    LightweightString<char> idstring() const override;

    // Where rows go.
    Glob* getScrollArea() const { return m_area; }
    // Measures the rows again and re-sizes the scroll area to hold them.
    void updateScrollExtent();

    // ---- Scrolling
    int getScrollOffset() const { return m_scroll; }
    int getMaxScroll() const;
    // The height of the rows, from the scroll area's top to below its lowest row.
    int getContentHeight() const { return m_contentHeight; }
    int getViewportHeight() const;
    // Clamped to 0..getMaxScroll(). Answers whether the offset changed.
    bool scrollTo(int offset);
    bool scrollBy(int pixels) { return scrollTo(m_scroll + pixels); }
    // Scrolls the least distance that shows all of `row` (a widget inside the scroll area), or its top when
    // it is taller than the viewport.
    void ensureVisible(const Glob* row);
    // How far one wheel notch scrolls.
    static int wheelStep();
    // The width of the scroll bar strip.
    static int scrollBarWidth();
    // The scroll bar's strip, in the panel's coordinates.
    GlobBox getScrollBarBox() const;

    // Called by the toolkit
    bool react(const Event& event) override;
    bool handleMouseEvent(const Event& event) override;
    void reshape() override;
    void drawBorder() override;
    void drawText() override;

private:
    void build();
    void placeArea();
    // Called while painting: geometry must not change during a paint, so catching up is deferred.
    void checkForChanges();
    // Measures the rows and follows the focus, one turn of the loop later.
    void scheduleCatchUp();
    void catchUp();
    int measureRows() const;
    bool extentStale() const { return m_area && m_area->numChildren() != m_measuredRows; }

    Glob* m_viewport = nullptr;
    Glob* m_area = nullptr;
    int m_scroll = 0;
    int m_contentHeight = 0;
    size_t m_measuredRows = 0;
    GlobWatch m_lastFocus;
    bool m_catchUpPending = false;
    // Dragging the bar's thumb.
    bool m_barDrag = false;
    int m_barDragStartY = 0;
    int m_barDragStartScroll = 0;
};
