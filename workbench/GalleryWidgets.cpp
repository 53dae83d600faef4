#include "workbench/GalleryWidgets.h"

#include "toolkit/ui/Event.h"
#include "toolkit/ui/StylePainter.h"
#include "toolkit/ui/UifStd.h"

StandardPanel::InitArgs galleryPageArgs(UIString title, int userWidth, int userHeight)
{
    StandardPanel::InitArgs args(std::move(title), 0, 0, StandardPanel::NoWidgets, UifStd::getColourScheme());
    args.border = StandardPanel::ThinBorder;
    const XY<int> size = StandardPanel::calcPanelSize(userWidth, userHeight, args);
    args.width = static_cast<uint16_t>(size.x);
    args.height = static_cast<uint16_t>(size.y);
    return args;
}

Glob* findNamed(Glob* root, const char* name)
{
    if (root->getName() == name)
        return root;
    for (size_t i = 0; i < root->numChildren(); ++i)
        if (Glob* hit = findNamed(root->child(i), name))
            return hit;
    return nullptr;
}

void GalleryLabel::drawText()
{
    StylePainter::drawLabel(painter(), getLocalBox(), getPalette(), m_text.view());
}

GalleryLabel* addLabel(Glob* panel, LightweightString<wchar_t> text, int x, int y, int width, int height)
{
    return panel->addWidget<GalleryLabel>(GalleryLabel::InitArgs(std::move(text), static_cast<uint16_t>(width),
                                                                 static_cast<uint16_t>(height), panel->getPalette()),
                                          Glob::UserTopLeft(x, y));
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
