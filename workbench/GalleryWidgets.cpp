#include "workbench/GalleryWidgets.h"

#include "toolkit/ui/Event.h"
#include "toolkit/ui/StylePainter.h"

void GalleryLabel::drawText()
{
    StylePainter::drawLabel(painter(), getLocalBox(), getPalette(), m_text.view());
}

void ChooserRow::setSelected(bool selected)
{
    if (selected != m_selected) {
        m_selected = selected;
        redraw();
    }
}

bool ChooserRow::react(const Event& event)
{
    switch (event.type) {
    case Event::MouseEnter:
    case Event::MouseLeave:
        m_hover = event.type == Event::MouseEnter;
        redraw();
        return true;
    case Event::MouseDown: return event.button == Event::LeftButton;
    case Event::MouseUp:
        if (event.button != Event::LeftButton || !getLocalBox().contains(event.pos))
            return false;
        break;
    case Event::Key:
        if (event.key != Event::KeyReturn)
            return false;
        break;
    case Event::FocusGained:
    case Event::FocusLost: redraw(); return true;
    default: return Glob::react(event);
    }
    // The action may destroy this row (it rebuilds the page list), so it runs last, from a copy.
    const std::function<void()> action = m_action;
    if (action)
        action();
    return true;
}

void ChooserRow::drawText()
{
    Pictor::Painter& p = painter();
    StylePainter::drawMenuItem(p, getLocalBox(), getPalette(), m_text.view(), m_selected || m_hover);
    if (hasFocus())
        StylePainter::drawFocusRing(p, getLocalBox(), getPalette());
}

void DrawingSurface::drawText()
{
    if (m_function)
        m_function(painter(), getLocalBox(), getPalette());
}
