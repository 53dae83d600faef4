#include "toolkit/ui/VerticalScrollingBase.h"

#include "toolkit/gfx/Painter.h"
#include "toolkit/support/MainThread.h"
#include "toolkit/ui/GlobManager.h"
#include "toolkit/ui/Screen.h"
#include "toolkit/ui/StylePainter.h"
#include "toolkit/ui/UifStd.h"

#include <algorithm>

namespace {

const bool registeredByName = [] {
    GlobManager::registerType("VerticalScrollingBase", [](const GlobCreationInfo& info) -> Glob* {
        return new VerticalScrollingBase(StandardPanel::InitArgs::fromInfo(info));
    });
    return true;
}();

} // namespace

VerticalScrollingBase::VerticalScrollingBase(const InitArgs& args) : StandardPanel(args)
{
    build();
}

VerticalScrollingBase::VerticalScrollingBase(uint16_t width, uint16_t height, const Palette& palette, Canvas* canvas)
    : StandardPanel(width, height, palette, canvas)
{
    build();
}

// A copy is an empty scrolling panel of the same appearance: rows belong to the panel they were added to.
VerticalScrollingBase::VerticalScrollingBase(const VerticalScrollingBase& other)
    : EventHandler(other), Cv::InternalRefCount(other), iVirtual(other), iObject(other), StandardPanel(other)
{
    build();
}

VerticalScrollingBase& VerticalScrollingBase::operator=(const VerticalScrollingBase& other)
{
    StandardPanel::operator=(other);
    reshape();
    return *this;
}

VerticalScrollingBase::~VerticalScrollingBase() = default;

LightweightString<char> VerticalScrollingBase::idstring() const
{
    return "VerticalScrollingBase";
}

int VerticalScrollingBase::wheelStep()
{
    return 3 * (UifStd::getButtonHeight() + UifStd::getRowGap());
}

int VerticalScrollingBase::scrollBarWidth()
{
    // Slimmer than a full scroll bar: it only shows where the view is and can be dragged.
    return std::max(6, UifStd::getScrollBarWidth() * 2 / 3);
}

void VerticalScrollingBase::build()
{
    const GlobBox user = getUserArea();
    const int viewWidth = std::max(0, user.width() - scrollBarWidth());
    m_viewport = addWidget<Glob>(Glob::InitArgs(static_cast<uint16_t>(viewWidth),
                                                static_cast<uint16_t>(std::max(0, user.height())), getPalette()),
                                 Glob::UserTopLeft(0, 0));
    m_area = m_viewport->addWidget<Glob>(Glob::InitArgs(m_viewport->getWidth(), m_viewport->getHeight(), getPalette()),
                                         Glob::Absolute(0, 0));
    m_contentHeight = 0;
    m_scroll = 0;
}

int VerticalScrollingBase::getViewportHeight() const
{
    return m_viewport ? m_viewport->getHeight() : 0;
}

int VerticalScrollingBase::getMaxScroll() const
{
    return std::max(0, m_contentHeight - getViewportHeight());
}

GlobBox VerticalScrollingBase::getScrollBarBox() const
{
    const GlobBox user = getUserArea();
    return GlobBox(std::max(user.left(), user.right() - scrollBarWidth()), user.bottom(), user.right(), user.top());
}

int VerticalScrollingBase::measureRows() const
{
    if (!m_area || m_area->numChildren() == 0)
        return 0;
    // Rows hang from the top, so the lowest bottom edge decides how tall the content is.
    int lowest = m_area->getHeight();
    for (size_t i = 0; i < m_area->numChildren(); ++i) {
        const Glob* row = m_area->child(i);
        if (row->isVisible())
            lowest = std::min(lowest, row->getY());
    }
    return m_area->getHeight() - lowest + UifStd::getRowGap();
}

void VerticalScrollingBase::updateScrollExtent()
{
    if (!m_area)
        return;
    m_contentHeight = measureRows();
    const int areaHeight = std::clamp(std::max(m_contentHeight, getViewportHeight()), 0, 65535);
    if (areaHeight != m_area->getHeight())
        m_area->resize(m_area->getWidth(), areaHeight);
    // Measured again: resizing re-placed the rows against the new top. Widget heights are 16-bit, so rows
    // lower than that can never be shown; the scrolling stops at the last one that can.
    m_contentHeight = std::min(measureRows(), int(m_area->getHeight()));
    m_measuredRows = m_area->numChildren();
    m_scroll = std::clamp(m_scroll, 0, getMaxScroll());
    placeArea();
    redraw(getScrollBarBox());
}

void VerticalScrollingBase::placeArea()
{
    if (!m_area)
        return;
    // The area's top sits m_scroll pixels above the viewport's top.
    const int bottom = getViewportHeight() + m_scroll - m_area->getHeight();
    if (m_area->getX() != 0 || m_area->getY() != bottom)
        m_area->setPos(0, bottom);
}

bool VerticalScrollingBase::scrollTo(int offset)
{
    const int clamped = std::clamp(offset, 0, getMaxScroll());
    if (clamped == m_scroll)
        return false;
    m_scroll = clamped;
    placeArea();
    m_viewport->redraw();
    redraw(getScrollBarBox());
    return true;
}

void VerticalScrollingBase::ensureVisible(const Glob* row)
{
    if (!row || !m_area || !m_area->isAncestorOf(row))
        return;
    // The row's box in the area's coordinates, as distances from the area's top.
    const XY<int> rowPos = row->getScreenPos();
    const XY<int> areaPos = m_area->getScreenPos();
    const int rowTop = m_area->getHeight() - (rowPos.y - areaPos.y + row->getHeight());
    const int rowBottom = rowTop + row->getHeight();
    const int view = getViewportHeight();
    if (rowTop < m_scroll || row->getHeight() > view)
        scrollTo(rowTop);
    else if (rowBottom > m_scroll + view)
        scrollTo(rowBottom - view);
}

void VerticalScrollingBase::reshape()
{
    StandardPanel::reshape();
    if (!m_viewport)
        return;
    const GlobBox user = getUserArea();
    m_viewport->resize(std::max(0, user.width() - scrollBarWidth()), std::max(0, user.height()));
    m_area->resize(m_viewport->getWidth(), m_area->getHeight());
    updateScrollExtent();
}

bool VerticalScrollingBase::handleMouseEvent(const Event& event)
{
    const GlobBox bar = getScrollBarBox();
    switch (event.type) {
    case Event::MouseWheel:
        if (extentStale())
            updateScrollExtent();
        scrollBy(-event.wheelDelta * wheelStep());
        return true;
    case Event::MouseDown:
        if (event.button == Event::LeftButton && bar.contains(event.pos) && getMaxScroll() > 0) {
            if (extentStale())
                updateScrollExtent();
            const double total = std::max(1, m_contentHeight);
            const double thumbTop = bar.top() - bar.height() * (m_scroll / total);
            const double thumbBottom = thumbTop - bar.height() * (getViewportHeight() / total);
            if (event.pos.y > thumbTop) {
                scrollBy(-getViewportHeight());
            } else if (event.pos.y < thumbBottom) {
                scrollBy(getViewportHeight());
            } else {
                m_barDrag = true;
                m_barDragStartY = event.screenPos.y;
                m_barDragStartScroll = m_scroll;
            }
            return true;
        }
        break;
    case Event::MouseDrag:
        if (m_barDrag) {
            // The thumb follows the pointer: a bar's height stands for the whole content.
            const double perPixel = double(std::max(1, m_contentHeight)) / std::max(1, bar.height());
            scrollTo(m_barDragStartScroll - int((event.screenPos.y - m_barDragStartY) * perPixel));
            return true;
        }
        break;
    case Event::MouseUp:
        if (m_barDrag) {
            m_barDrag = false;
            return true;
        }
        break;
    default: break;
    }
    return StandardPanel::handleMouseEvent(event);
}

void VerticalScrollingBase::checkForChanges()
{
    if (m_catchUpPending || !m_area)
        return;
    Glob* focus = nullptr;
    if (Screen* screen = getScreen())
        focus = screen->getFocus();
    const bool newFocus = focus && focus != m_lastFocus.get() && m_area->isAncestorOf(focus);
    if (extentStale() || newFocus)
        scheduleCatchUp();
}

void VerticalScrollingBase::scheduleCatchUp()
{
    if (m_catchUpPending)
        return;
    m_catchUpPending = true;
    defer([self = GlobWatch(this)] {
        if (auto* panel = static_cast<VerticalScrollingBase*>(self.get()))
            panel->catchUp();
    });
}

void VerticalScrollingBase::catchUp()
{
    m_catchUpPending = false;
    updateScrollExtent();
    Glob* focused = nullptr;
    if (Screen* screen = getScreen())
        focused = screen->getFocus();
    if (focused && focused != m_lastFocus.get() && m_area->isAncestorOf(focused)) {
        m_lastFocus = GlobWatch(focused);
        ensureVisible(focused);
    }
}

bool VerticalScrollingBase::react(const Event& event)
{
    // Keys that pass through unhandled may move the focus (Tab goes to the next row after this returns), so
    // the view is checked once they have been dealt with.
    if (!event.isKey())
        return StandardPanel::react(event);
    scheduleCatchUp();
    // Paging keys that no row wanted move the view itself.
    if (!event.hasAnyModifier()) {
        switch (event.key) {
        case Event::KeyPageUp: scrollBy(-getViewportHeight()); return true;
        case Event::KeyPageDown: scrollBy(getViewportHeight()); return true;
        case Event::KeyHome: scrollTo(0); return true;
        case Event::KeyEnd: scrollTo(getMaxScroll()); return true;
        default: break;
        }
    }
    return StandardPanel::react(event);
}

void VerticalScrollingBase::drawBorder()
{
    checkForChanges();
    StandardPanel::drawBorder();
}

void VerticalScrollingBase::drawText()
{
    StandardPanel::drawText();
    const GlobBox bar = getScrollBarBox();
    Pictor::Painter& p = painter();
    if (bar.empty() || !p.isVisible(bar))
        return;
    const double total = std::max(1, m_contentHeight);
    const double view = getViewportHeight();
    if (m_contentHeight <= view)
        StylePainter::drawScrollBar(p, bar, getPalette(), 0.0, 1.0);
    else
        StylePainter::drawScrollBar(p, bar, getPalette(), m_scroll / total, view / total);
}
