#include "toolkit/ui/MenuGlob.h"

#include "toolkit/gfx/Font.h"
#include "toolkit/support/Resources.h"
#include "toolkit/ui/GlobManager.h"
#include "toolkit/ui/Screen.h"
#include "toolkit/ui/StylePainter.h"
#include "toolkit/ui/UifStd.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cwctype>

LightweightString<wchar_t> MenuItem::getDisplayText() const
{
    return applyResStrFmt(m_label.getString(), m_format);
}

namespace {

// A small solid triangle pointing down (open group, scroll down) or right (folded group) or up.
enum class Arrow { Up, Down, Right };

void drawArrow(Pictor::Painter& p, const GlobBox& box, Arrow arrow, const Colour& colour)
{
    const double cx = box.left() + box.width() / 2.0;
    const double cy = box.bottom() + box.height() / 2.0;
    const double r = std::max(2.0, std::min(box.width(), box.height()) / 4.0);
    std::array<XY<double>, 3> pts;
    switch (arrow) {
    case Arrow::Up: pts = {XY<double>{cx - r, cy - r / 2}, {cx + r, cy - r / 2}, {cx, cy + r / 2}}; break;
    case Arrow::Down: pts = {XY<double>{cx - r, cy + r / 2}, {cx + r, cy + r / 2}, {cx, cy - r / 2}}; break;
    case Arrow::Right: pts = {XY<double>{cx - r / 2, cy + r}, {cx - r / 2, cy - r}, {cx + r / 2, cy}}; break;
    }
    p.fillPolygon(pts, colour);
}

} // namespace

MenuGlob::MenuGlob(const InitArgs& args) : Glob(args), m_items(args.items), m_minWidth(args.minWidth)
{
    rebuildRows();
    if (args.width == 0 || args.height == 0)
        sizeToItems();
}

MenuGlob::MenuGlob(uint16_t width, uint16_t height, const Palette& palette, Canvas* canvas)
    : Glob(width, height, palette, canvas)
{
}

MenuGlob::~MenuGlob()
{
    if (*m_popUp && Screen::current())
        getEventInterceptStack(0).remove(*m_interceptId);
}

LightweightString<char> MenuGlob::idstring() const
{
    return "MenuGlob";
}

// ---------------------------------------------------------------------------------------------------------
// Items and groups

void MenuGlob::addMenuItem(MenuItem item)
{
    m_items.push_back(std::move(item));
    rebuildRows();
    redraw();
}

void MenuGlob::setItems(std::vector<MenuItem> items)
{
    m_items = std::move(items);
    *m_highlighted = -1;
    *m_firstRow = 0;
    rebuildRows();
    redraw();
}

void MenuGlob::clearItems()
{
    setItems({});
}

void MenuGlob::rebuildRows()
{
    m_rows.clear();
    m_rows.reserve(m_items.size());
    bool inFoldedGroup = false;
    for (size_t i = 0; i < m_items.size(); ++i) {
        const MenuItem& item = m_items[i];
        if (item.isHeading())
            inFoldedGroup = item.isFolded();
        else if (item.getType() != MenuItemInGroup)
            inFoldedGroup = false;
        else if (inFoldedGroup)
            continue;
        m_rows.push_back(static_cast<uint32_t>(i));
    }
    clampScroll();
}

bool MenuGlob::isItemShown(size_t index) const
{
    return rowOf(index) >= 0;
}

int MenuGlob::rowOf(size_t index) const
{
    const auto it = std::lower_bound(m_rows.begin(), m_rows.end(), static_cast<uint32_t>(index));
    return it != m_rows.end() && *it == index ? static_cast<int>(it - m_rows.begin()) : -1;
}

bool MenuGlob::setGroupFolded(size_t headingIndex, bool folded)
{
    if (headingIndex >= m_items.size() || !m_items[headingIndex].isHeading())
        return false;
    if (m_items[headingIndex].isFolded() == folded)
        return true;
    m_items[headingIndex].setFolded(folded);
    rebuildRows();
    // A highlight inside the group that just folded moves to the heading, which now takes the keyboard.
    if (*m_highlighted >= 0 && !isItemShown(size_t(*m_highlighted)))
        *m_highlighted = static_cast<int>(headingIndex);
    else if (*m_highlighted == static_cast<int>(headingIndex) && !folded)
        *m_highlighted = -1;
    fitAfterFolding();
    updateTooltip();
    redraw();
    return true;
}

// A pop-up follows its rows: it grows or shrinks below a fixed top edge, as far as the screen allows.
void MenuGlob::fitAfterFolding()
{
    if (!*m_popUp) {
        clampScroll();
        return;
    }
    const int top = getY() + getHeight();
    sizeToItems();
    const int margin = UifStd::getWindowArrangement().screenMargin;
    setPos(getX(), std::max(margin, top - getHeight()));
    clampScroll();
}

bool MenuGlob::isNavigable(size_t index) const
{
    if (index >= m_items.size())
        return false;
    const MenuItem& item = m_items[index];
    if (item.isHeading())
        return item.isFolded() && isItemShown(index);
    return item.isSelectable() && isItemShown(index);
}

bool MenuGlob::setHighlighted(int index)
{
    if (index >= 0 && size_t(index) < m_items.size() && m_items[size_t(index)].isHeading())
        return false;
    return highlightRow(index);
}

bool MenuGlob::highlightRow(int index)
{
    if (index != -1 && (index < 0 || !isNavigable(size_t(index))))
        return false;
    if (index != *m_highlighted) {
        if (*m_highlighted >= 0)
            redraw(rowBox(size_t(*m_highlighted)));
        *m_highlighted = index;
        if (index >= 0) {
            ensureRowVisible(size_t(rowOf(size_t(index))));
            redraw(rowBox(size_t(index)));
        }
        updateTooltip();
    }
    return true;
}

// The screen shows a widget's context text when the pointer rests on it: the menu offers the highlighted
// item's own help that way, so each item has its tooltip without being a widget.
void MenuGlob::updateTooltip()
{
    UIString tip;
    if (*m_highlighted >= 0 && size_t(*m_highlighted) < m_items.size())
        tip = m_items[size_t(*m_highlighted)].getTooltip();
    if (!(tip == getContextText()))
        setContextString(UIString(), tip);
}

bool MenuGlob::chooseItem(size_t index)
{
    if (index >= m_items.size() || !m_items[index].isSelectable())
        return false;
    *m_chosen = static_cast<int>(index);
    // Everything needed after closing is copied first: closing a pop-up may delete it.
    const WidgetCallback callback = m_items[index].getCallback();
    if (*m_popUp) {
        if (!callMsg(chosenMsg))
            return true;
        if (*m_popUp)
            closePopUp();
    }
    if (callback)
        callback();
    return true;
}

// ---------------------------------------------------------------------------------------------------------
// Geometry

XY<int> MenuGlob::calcSize() const
{
    const Pictor::Font& font = UifStd::defaultFont();
    int mainWidth = 0;
    int rightWidth = 0;
    // Every item is measured, shown or not, so that folding a group never changes the width.
    for (const MenuItem& item : m_items) {
        const LightweightString<wchar_t> text = item.getDisplayText();
        const auto [mainText, rightText] = MenuItem::splitColumns(text.view());
        const int indent = item.getType() == MenuItemInGroup ? UifStd::getIndentWidth() : 0;
        const int marker = item.isHeading() ? rowHeight() : 0;
        mainWidth = std::max(mainWidth, indent + marker + font.pixelWidth(mainText));
        if (!rightText.empty())
            rightWidth = std::max(rightWidth, font.pixelWidth(rightText));
    }
    const int gap = UifStd::getWidgetGap();
    // The style painter insets text by about a widget gap on each side; one gap more keeps it off the edge,
    // and two more part the columns.
    int width = mainWidth + 3 * gap + 2 * framePad;
    if (rightWidth > 0)
        width += rightWidth + 2 * gap;
    int height = 2 * framePad + static_cast<int>(m_rows.size()) * rowHeight();
    if (m_maxHeight > 0 && height > m_maxHeight)
        height = m_maxHeight;
    return {std::clamp<int>(std::max<int>(width, m_minWidth), 1, 65535), std::clamp(height, 1, 65535)};
}

void MenuGlob::sizeToItems()
{
    const XY<int> size = calcSize();
    resize(size.x, size.y);
}

void MenuGlob::setMaxHeight(uint16_t height)
{
    m_maxHeight = height;
    clampScroll();
}

int MenuGlob::rowHeight() const
{
    return UifStd::getButtonHeight();
}

bool MenuGlob::isScrollable() const
{
    return 2 * framePad + static_cast<int>(m_rows.size()) * rowHeight() > getHeight();
}

int MenuGlob::arrowHeight() const
{
    return isScrollable() ? std::max(8, rowHeight() * 2 / 3) : 0;
}

GlobBox MenuGlob::upArrowBox() const
{
    const int top = getHeight() - framePad;
    return GlobBox(framePad, top - arrowHeight(), getWidth() - framePad, top);
}

GlobBox MenuGlob::downArrowBox() const
{
    return GlobBox(framePad, framePad, getWidth() - framePad, framePad + arrowHeight());
}

size_t MenuGlob::rowsInView() const
{
    const int space = getHeight() - 2 * framePad - 2 * arrowHeight();
    return space > 0 ? size_t(space / rowHeight()) : 0;
}

GlobBox MenuGlob::rowBoxAt(size_t row) const
{
    if (row < *m_firstRow || row >= *m_firstRow + rowsInView() || row >= m_rows.size())
        return GlobBox();
    const int top = getHeight() - framePad - arrowHeight() - static_cast<int>(row - *m_firstRow) * rowHeight();
    return GlobBox(framePad, top - rowHeight(), getWidth() - framePad, top);
}

GlobBox MenuGlob::rowBox(size_t index) const
{
    const int row = rowOf(index);
    return row < 0 ? GlobBox() : rowBoxAt(size_t(row));
}

int MenuGlob::itemAt(XY<int> local) const
{
    if (local.x < framePad || local.x >= getWidth() - framePad)
        return -1;
    const int fromTop = getHeight() - framePad - arrowHeight() - 1 - local.y;
    if (fromTop < 0)
        return -1;
    const size_t offset = size_t(fromTop / rowHeight());
    if (offset >= rowsInView())
        return -1;
    const size_t row = *m_firstRow + offset;
    return row < m_rows.size() ? static_cast<int>(m_rows[row]) : -1;
}

void MenuGlob::clampScroll()
{
    const size_t view = rowsInView();
    const size_t last = m_rows.size() > view ? m_rows.size() - view : 0;
    if (*m_firstRow > last)
        *m_firstRow = last;
}

void MenuGlob::scrollBy(int rows)
{
    const size_t before = *m_firstRow;
    const long long wanted = static_cast<long long>(*m_firstRow) + rows;
    *m_firstRow = wanted < 0 ? 0 : size_t(wanted);
    clampScroll();
    if (*m_firstRow != before)
        redraw();
}

void MenuGlob::ensureRowVisible(size_t row)
{
    const size_t view = std::max<size_t>(1, rowsInView());
    if (row < *m_firstRow)
        scrollBy(static_cast<int>(row) - static_cast<int>(*m_firstRow));
    else if (row >= *m_firstRow + view)
        scrollBy(static_cast<int>(row - (*m_firstRow + view - 1)));
}

void MenuGlob::reshape()
{
    clampScroll();
    Glob::reshape();
}

// ---------------------------------------------------------------------------------------------------------
// Pop-up

MenuGlob* MenuGlob::popUp(XY<int> screenTopLeft, Glob* owner) const
{
    if (!Screen::current() || m_items.empty())
        return nullptr;
    InitArgs args(m_items, m_minWidth);
    args.palette = getPalette();
    return popUp(args, screenTopLeft, owner);
}

MenuGlob* MenuGlob::popUp(const InitArgs& args, XY<int> screenTopLeft, Glob* owner)
{
    Screen* screen = Screen::current();
    if (!screen || args.items.empty())
        return nullptr;
    InitArgs sized = args;
    sized.width = 1;
    sized.height = 1;
    auto* menu = new MenuGlob(sized);
    menu->m_popUp = true;
    menu->setOwner(owner);
    // As tall as the screen allows inside the margin every top-level widget keeps.
    const int margin = UifStd::getWindowArrangement().screenMargin;
    menu->m_maxHeight = static_cast<uint16_t>(std::max(1, screen->getSize().y - 2 * margin));
    menu->sizeToItems();
    const XY<int> size = menu->getSize();
    const XY<int> pos = GlobManager::getSafePosForGlob({screenTopLeft.x, screenTopLeft.y - size.y}, size);
    menu->setPos(pos.x, pos.y);
    if (!GlobManager::realize(menu)) {
        Glob::destroy(menu);
        return nullptr;
    }
    // Clicks anywhere else close the menu; keys come here whatever has the focus.
    menu->m_interceptId = getEventInterceptStack(0).push(
        menu, EventInterceptStack::Mouse | EventInterceptStack::Keys | EventInterceptStack::OutsideOnly);
    menu->takeFocus();
    return menu;
}

void MenuGlob::dismiss()
{
    if (!*m_popUp)
        return;
    if (!callMsg(cancelledMsg))
        return;
    if (*m_popUp)
        closePopUp();
}

void MenuGlob::closePopUp()
{
    if (Screen::current())
        getEventInterceptStack(0).remove(*m_interceptId);
    *m_popUp = false;
    Glob::destroy(this);
}

// ---------------------------------------------------------------------------------------------------------
// Input

void MenuGlob::moveHighlight(int step, bool wrap)
{
    const int n = static_cast<int>(m_rows.size());
    if (n == 0 || step == 0)
        return;
    int row = *m_highlighted >= 0 ? rowOf(size_t(*m_highlighted)) : -1;
    if (row < 0)
        row = step > 0 ? -1 : n;
    const int unit = step > 0 ? 1 : -1;
    int remaining = std::abs(step);
    int best = -1;
    for (int tried = 0; tried < n; ++tried) {
        row += unit;
        if (row < 0 || row >= n) {
            if (!wrap)
                break;
            row = (row + n) % n;
        }
        if (isNavigable(m_rows[size_t(row)])) {
            best = row;
            if (--remaining == 0)
                break;
        }
    }
    if (best >= 0)
        highlightRow(static_cast<int>(m_rows[size_t(best)]));
}

void MenuGlob::jumpToLetter(int key)
{
    const int n = static_cast<int>(m_rows.size());
    const wint_t wanted = std::towlower(static_cast<wint_t>(key));
    const int start = *m_highlighted >= 0 ? rowOf(size_t(*m_highlighted)) : -1;
    for (int step = 1; step <= n; ++step) {
        const size_t index = m_rows[size_t(((start + step) % n + n) % n)];
        if (!isNavigable(index))
            continue;
        const LightweightString<wchar_t> text = m_items[index].getDisplayText();
        if (!text.empty() && std::towlower(static_cast<wint_t>(text.view()[0])) == wanted) {
            highlightRow(static_cast<int>(index));
            return;
        }
    }
}

bool MenuGlob::handleKey(int key)
{
    const int page = static_cast<int>(std::max<size_t>(1, rowsInView() > 1 ? rowsInView() - 1 : 1));
    const bool onHeading = *m_highlighted >= 0 && m_items[size_t(*m_highlighted)].isHeading();
    switch (key) {
    case Event::KeyUp: moveHighlight(-1); return true;
    case Event::KeyDown: moveHighlight(1); return true;
    case Event::KeyPageUp: moveHighlight(-page, false); return true;
    case Event::KeyPageDown: moveHighlight(page, false); return true;
    case Event::KeyHome:
        highlightRow(-1);
        moveHighlight(1, false);
        return true;
    case Event::KeyEnd:
        highlightRow(-1);
        moveHighlight(-1, false);
        return true;
    case Event::KeyRight:
        if (onHeading) {
            const size_t heading = size_t(*m_highlighted);
            setGroupFolded(heading, false);
            for (size_t i = heading + 1; i < m_items.size() && m_items[i].getType() == MenuItemInGroup; ++i)
                if (highlightRow(static_cast<int>(i)))
                    break;
        }
        return true;
    case Event::KeyLeft:
        if (*m_highlighted >= 0 && m_items[size_t(*m_highlighted)].getType() == MenuItemInGroup) {
            // The group's heading is the nearest heading above, if the run of group entries reaches it.
            for (int i = *m_highlighted - 1; i >= 0; --i) {
                const MenuItem& above = m_items[size_t(i)];
                if (above.isHeading()) {
                    setGroupFolded(size_t(i), true);
                    break;
                }
                if (above.getType() != MenuItemInGroup)
                    break;
            }
        }
        return true;
    case Event::KeyReturn:
        if (onHeading)
            return handleKey(Event::KeyRight);
        if (*m_highlighted >= 0)
            chooseItem(size_t(*m_highlighted));
        return true;
    case Event::KeyEscape: dismiss(); return true;
    default:
        if (key >= 0x20 && key < Event::FirstSpecialKey && key != Event::KeyDelete && std::iswalnum(wint_t(key))) {
            jumpToLetter(key);
            return true;
        }
        // A pop-up holds the keyboard while it is open; a menu inside a panel lets other keys pass.
        return *m_popUp;
    }
}

bool MenuGlob::react(const Event& event)
{
    if (event.isKey())
        return handleKey(event.key);
    if (event.isMouse() && *m_popUp && !getLocalBox().contains(event.pos)) {
        // Seen through the intercept: the pointer is elsewhere on the screen.
        if (event.type == Event::MouseDown) {
            dismiss();
            return true;
        }
        return false;
    }
    return Glob::react(event);
}

bool MenuGlob::handleMouseEvent(const Event& event)
{
    if (event.type == Event::MouseWheel) {
        scrollBy(-3 * event.wheelDelta);
        return true;
    }
    if (isScrollable() && event.type == Event::MouseDown) {
        if (upArrowBox().contains(event.pos)) {
            scrollBy(-1);
            return true;
        }
        if (downArrowBox().contains(event.pos)) {
            scrollBy(1);
            return true;
        }
    }
    const int index = itemAt(event.pos);
    switch (event.type) {
    case Event::MouseMove:
    case Event::MouseDrag:
    case Event::MouseEnter:
        highlightRow(index >= 0 && isNavigable(size_t(index)) ? index : -1);
        return true;
    case Event::MouseLeave: highlightRow(-1); return true;
    case Event::MouseDown: return true;
    case Event::MouseUp:
        if (index >= 0 && event.button == Event::LeftButton) {
            if (m_items[size_t(index)].isHeading())
                setGroupFolded(size_t(index), !m_items[size_t(index)].isFolded());
            else
                chooseItem(size_t(index));
        }
        return true;
    default: return false;
    }
}

// ---------------------------------------------------------------------------------------------------------
// Drawing

void MenuGlob::drawBackground()
{
    StylePainter::drawMenuBackground(painter(), getLocalBox(), getPalette());
}

void MenuGlob::drawText()
{
    Pictor::Painter& p = painter();
    const size_t end = std::min(m_rows.size(), *m_firstRow + rowsInView());
    for (size_t row = *m_firstRow; row < end; ++row) {
        const GlobBox box = rowBoxAt(row);
        if (p.isVisible(box))
            drawItem(m_rows[row], box, static_cast<int>(m_rows[row]) == *m_highlighted);
    }
    if (isScrollable()) {
        const Palette& pal = getPalette();
        const bool more = *m_firstRow + rowsInView() < m_rows.size();
        drawArrow(p, upArrowBox(), Arrow::Up, *m_firstRow > 0 ? pal.text() : pal.disabledText());
        drawArrow(p, downArrowBox(), Arrow::Down, more ? pal.text() : pal.disabledText());
    }
}

void MenuGlob::drawItem(size_t index, const GlobBox& box, bool highlighted)
{
    const MenuItem& item = m_items[index];
    Pictor::Painter& p = painter();
    Palette pal = getPalette();
    GlobBox textArea = box;
    if (item.isHeading()) {
        // Headings read as titles of what follows, in the legend colour, with a marker that shows whether
        // the group is open.
        pal.set(Palette::Text, item.hasOwnColours() ? item.getTextColour() : pal.subheadingText());
        if (item.hasOwnColours() && !highlighted)
            p.fillRect(box, item.getBackColour());
        if (highlighted)
            p.fillRect(box, pal.highlight());
        const GlobBox marker(box.left(), box.bottom(), box.left() + box.height(), box.top());
        drawArrow(p, marker, item.isFolded() ? Arrow::Right : Arrow::Down,
                  highlighted ? pal.highlightText() : pal.text());
        textArea = GlobBox(marker.right(), box.bottom(), box.right(), box.top());
    } else {
        if (item.getType() == MenuItemInGroup) {
            // Entries under a heading are set in, so the group shows as one.
            textArea = GlobBox(box.left() + UifStd::getIndentWidth(), box.bottom(), box.right(), box.top());
            if (highlighted)
                p.fillRect(box, pal.highlight());
        }
        if (item.hasOwnColours() && !highlighted) {
            p.fillRect(box, item.getBackColour());
            pal.set(Palette::Text, item.getTextColour());
        }
    }
    const LightweightString<wchar_t> text = item.getDisplayText();
    const auto [mainText, rightText] = MenuItem::splitColumns(text.view());
    const bool enabled = item.isEnabled() || item.isHeading();
    const bool lit = highlighted && !item.isHeading() && item.getType() != MenuItemInGroup;
    if (item.isHeading() || item.getType() == MenuItemInGroup) {
        // The row is already filled; the text goes on top in the highlight's ink.
        Palette ink = pal;
        if (highlighted)
            ink.set(Palette::Text, pal.highlightText());
        StylePainter::drawMenuItem(p, textArea, ink, mainText, false, enabled);
        pal = ink;
    } else {
        StylePainter::drawMenuItem(p, textArea, pal, mainText, lit, enabled);
        if (lit)
            pal.set(Palette::Text, pal.highlightText());
    }
    if (!rightText.empty()) {
        const int gap = UifStd::getWidgetGap();
        const GlobBox column(textArea.left(), box.bottom(), box.right() - gap, box.top());
        StylePainter::drawLabel(p, column, pal, rightText, Pictor::TextAlign::Right, enabled);
    }
}
