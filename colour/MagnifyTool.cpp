#include "colour/MagnifyTool.h"

#include "toolkit/gfx/Painter.h"
#include "toolkit/ui/Screen.h"

#include <algorithm>
#include <cmath>

MagnifyTool::MagnifyTool(const InitArgs& args)
    : Glob(args)
    , m_frame(std::max(0, args.frame))
    , m_zoom(std::max(1, args.zoom))
{
    refresh();
}

int MagnifyTool::handleGlobalMouse(const NotifyMsg&)
{
    refresh();
    return 0;
}

void MagnifyTool::refresh()
{
    if (!*m_listener)
        *m_listener = Pictor::addMouseListener(Cv::makeListener(this, &MagnifyTool::handleGlobalMouse));
    m_centre = glib_getMousePos();
    // Enough pixels either side of the centre to fill the view, plus one for the part-pixels at its edges.
    const int halfW = getWidth() / (2 * m_zoom) + 1;
    const int halfH = getHeight() / (2 * m_zoom) + 1;
    m_view = pictor_getScreenRect(GlobBox(m_centre.x - halfW, m_centre.y - halfH, m_centre.x + halfW + 1,
                                          m_centre.y + halfH + 1));
    redraw();
}

void MagnifyTool::setAreaToOutline(const Cv::Box<double>& screenArea)
{
    if (m_outline == screenArea)
        return;
    m_outline = screenArea;
    redraw();
}

void MagnifyTool::clearAreaToOutline()
{
    if (!m_outline)
        return;
    m_outline.reset();
    redraw();
}

XY<double> MagnifyTool::screenToView(XY<double> screenPoint) const
{
    // The centre pixel [c, c + 1) is drawn centred in the view.
    const double cx = getWidth() / 2.0 - m_zoom / 2.0;
    const double cy = getHeight() / 2.0 - m_zoom / 2.0;
    return {cx + (screenPoint.x - m_centre.x) * m_zoom, cy + (screenPoint.y - m_centre.y) * m_zoom};
}

bool MagnifyTool::react(const Event& event)
{
    if (m_closesOnClick && event.isRelease(Event::LeftButton)) {
        Glob::destroy(this);
        return true;
    }
    if (event.isMouse())
        return event.type == Event::MouseDown || event.type == Event::MouseUp;
    return Glob::react(event);
}

void MagnifyTool::drawBackground()
{
    Pictor::Painter& p = painter();
    p.fillRect(getLocalBox(), getPalette().window(1));
    if (m_view.isNull())
        return;
    // The capture may have been clipped at a screen edge; it starts at the clipped box's bottom-left.
    const int halfW = getWidth() / (2 * m_zoom) + 1;
    const int halfH = getHeight() / (2 * m_zoom) + 1;
    const XY<double> origin(std::max(m_centre.x - halfW, 0), std::max(m_centre.y - halfH, 0));
    const XY<double> at = screenToView(origin);
    p.drawImage(m_view, Pictor::PaintRect::fromSize(at.x, at.y, m_view.width() * double(m_zoom),
                                                     m_view.height() * double(m_zoom)),
                Pictor::ImageQuality::Fast);
}

void MagnifyTool::drawBorder()
{
    Pictor::Painter& p = painter();
    // The pixel under the pointer, framed dark and light so it shows on any colour.
    const XY<double> c = screenToView({double(m_centre.x), double(m_centre.y)});
    const Pictor::PaintRect centre = Pictor::PaintRect::fromSize(c.x, c.y, m_zoom, m_zoom);
    p.strokeRect(centre, Colour(0, 0, 0, 0.9), 1.0);
    p.strokeRect(Pictor::PaintRect(centre.x0 - 1, centre.y0 - 1, centre.x1 + 1, centre.y1 + 1),
                 Colour(1, 1, 1, 0.9), 1.0);
    if (m_frame > 0)
        p.strokeRect(getLocalBox(), getPalette().border(), m_frame);
}

void MagnifyTool::drawText()
{
    if (!m_outline)
        return;
    const XY<double> a = screenToView({m_outline->left(), m_outline->bottom()});
    const XY<double> b = screenToView({m_outline->right(), m_outline->top()});
    Pictor::Painter& p = painter();
    p.strokeRect(Pictor::PaintRect(a.x, a.y, b.x, b.y), getPalette().highlight(), 2.0);
}
