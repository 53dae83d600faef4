#pragma once
// Canvas: the surface a widget draws on. The screen is the canvas of everything on it; a widget made with no
// canvas takes its parent's when it is added, or the screen's when it is shown as a top-level widget.

class Screen;

class Canvas {
public:
    virtual ~Canvas() = default;
    virtual Screen* getScreen() = 0;
};

// The base through which a widget knows its canvas. It adds one pointer and no virtual functions.
class CanvasClient {
public:
    explicit CanvasClient(Canvas* canvas = nullptr)
        : m_canvas(canvas)
    {
    }

    Canvas* getCanvas() const { return m_canvas; }
    void setCanvas(Canvas* canvas) { m_canvas = canvas; }

private:
    Canvas* m_canvas = nullptr;
};
