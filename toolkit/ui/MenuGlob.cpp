#include "toolkit/ui/MenuGlob.h"

#include "toolkit/gfx/Font.h"
#include "toolkit/support/Resources.h"
#include "toolkit/ui/GlobManager.h"
#include "toolkit/ui/Screen.h"
#include "toolkit/ui/StylePainter.h"
#include "toolkit/ui/UifStd.h"

#include <algorithm>
#include <cmath>

const char* const MenuGlob::cancelledMsg = "menu_cancelled";

LightweightString<wchar_t> MenuItem::getDisplayText() const
{
    return applyResStrFmt(m_label.getString(), m_format);
}

MenuGlob::MenuGlob(const InitArgs& args) : Glob(args), m_items(args.items), m_minWidth(args.minWidth)
{
    if (args.width == 0 || args.height == 0)
        sizeToItems();
}

MenuGlob::MenuGlob(uint16_t width, uint16_t height, const Palette& palette, Canvas* canvas)
    : Glob(width, height, palette, canvas)
{
}

// A copy is a new, closed menu with the same items: never a second handle on a pop-up.
MenuGlob::MenuGlob(const MenuGlob& other)
    : EventHandler(other), Cv::InternalRefCount(other), iVirtual(other), iObject(other), Glob(other), m_items(other.m_items), m_minWidth(other.m_minWidth) {}

MenuGlob::MenuGlob(MenuGlob&& other) : MenuGlob(static_cast<const MenuGlob&>(other)) {}

MenuGlob& MenuGlob::operator=(const MenuGlob& other)
{
    if (this != &other) {
        Glob::operator=(other);
        m_items = other.m_items;
        m_minWidth = other.m_minWidth;
        m_highlighted = -1;
        redraw();
    }
    return *this;
}

MenuGlob& MenuGlob::operator=(MenuGlob&& other)
{
    return *this = static_cast<const MenuGlob&>(other);
}

MenuGlob::~MenuGlob()
{
    if (m_popUp)
        for (int priority = 0; priority < Screen::NumInterceptPriorities; ++priority)
            if (Screen::current())
                getEventInterceptStack(priority).remove(m_interceptId);
}

LightweightString<char> MenuGlob::idstring() const
{
    return "MenuGlob";
}

void MenuGlob::addMenuItem(MenuItem item)
{
    m_items.push_back(std::move(item));
    redraw();
}

void MenuGlob::setItems(std::vector<MenuItem> items)
{
    m_items = std::move(items);
    m_highlighted = -1;
    redraw();
}

void MenuGlob::clearItems()
{
    setItems({});
}

bool MenuGlob::setHighlighted(int index)
{
    if (index != -1 && (index < 0 || size_t(index) >= m_items.size() || !m_items[size_t(index)].isSelectable()))
        return false;
    if (index != m_highlighted) {
        if (m_highlighted >= 0 && size_t(m_highlighted) < m_items.size())
            redraw(rowBox(size_t(m_highlighted)));
        m_highlighted = index;
        if (index >= 0)
            redraw(rowBox(size_t(index)));
    }
    return true;
}

bool MenuGlob::chooseItem(size_t index)
{
    if (index >= m_items.size() || !m_items[index].isSelectable())
        return false;
    // Everything needed after closing is copied first: closing a pop-up may delete it.
    const WidgetCallback callback = m_items[index].getCallback();
    if (m_popUp)
        closePopUp();
    if (callback)
        callback();
    return true;
}

XY<int> MenuGlob::calcSize() const
{
    const Cv::Ptr<Pictor::Font> font = Pictor::loadFont(UifStd::getDefaultFont());
    int textWidth = 0;
    int height = 2 * framePad;
    for (size_t i = 0; i < m_items.size(); ++i) {
        const int indent = m_items[i].getType() == MenuItemInGroup ? UifStd::getIndentWidth() : 0;
        textWidth = std::max(textWidth, indent + font->pixelWidth(m_items[i].getDisplayText().view()));
        height += rowHeight(i);
    }
    // The style painter insets text by about a widget gap on each side; one gap more keeps it off the edge.
    const int width = textWidth + 3 * UifStd::getWidgetGap() + 2 * framePad;
    return {std::max<int>(width, m_minWidth), height};
}

int MenuGlob::rowHeight(size_t) const
{
    return UifStd::getButtonHeight();
}

GlobBox MenuGlob::rowBox(size_t index) const
{
    int top = getHeight() - framePad;
    for (size_t i = 0; i < index && i < m_items.size(); ++i)
        top -= rowHeight(i);
    return GlobBox(framePad, top - rowHeight(index), getWidth() - framePad, top);
}

int MenuGlob::itemAt(XY<int> local) const
{
    if (local.x < framePad || local.x >= getWidth() - framePad)
        return -1;
    int top = getHeight() - framePad;
    for (size_t i = 0; i < m_items.size(); ++i) {
        const int bottom = top - rowHeight(i);
        if (local.y >= bottom && local.y < top)
            return static_cast<int>(i);
        top = bottom;
    }
    return -1;
}

MenuGlob* MenuGlob::popUp(XY<int> screenTopLeft, Glob* owner) const
{
    Screen* screen = Screen::current();
    if (!screen || m_items.empty())
        return nullptr;
    auto* menu = new MenuGlob(*this);
    menu->m_popUp = true;
    menu->setOwner(owner);
    menu->sizeToItems();
    const XY<int> size = menu->getSize();
    const XY<int> pos = GlobManager::getSafePosForGlob({screenTopLeft.x, screenTopLeft.y - size.y}, size);
    menu->setPos(pos.x, pos.y);
    if (!GlobManager::realize(menu)) {
        Glob::destroy(menu);
        return nullptr;
    }
    // Clicks anywhere else close the menu; keys come here whatever has the focus.
    menu->m_interceptId =
        getEventInterceptStack(0).push(menu, EventInterceptStack::Mouse | EventInterceptStack::Keys
                                                 | EventInterceptStack::OutsideOnly);
    menu->takeFocus();
    return menu;
}

void MenuGlob::dismiss()
{
    if (!m_popUp)
        return;
    if (!callMsg(cancelledMsg))
        return;
    closePopUp();
}

void MenuGlob::closePopUp()
{
    if (Screen::current())
        getEventInterceptStack(0).remove(m_interceptId);
    m_popUp = false;
    Glob::destroy(this);
}

void MenuGlob::moveHighlight(int step)
{
    const int n = static_cast<int>(m_items.size());
    if (n == 0)
        return;
    int index = m_highlighted;
    if (index < 0)
        index = step > 0 ? -1 : n;
    for (int tried = 0; tried < n; ++tried) {
        index = ((index + step) % n + n) % n;
        if (m_items[size_t(index)].isSelectable()) {
            setHighlighted(index);
            return;
        }
    }
}

bool MenuGlob::handleKey(int key)
{
    switch (key) {
    case Event::KeyUp: moveHighlight(-1); return true;
    case Event::KeyDown: moveHighlight(1); return true;
    case Event::KeyReturn:
        if (m_highlighted >= 0)
            chooseItem(size_t(m_highlighted));
        return true;
    case Event::KeyEscape: dismiss(); return true;
    default:
        // A pop-up holds the keyboard while it is open; a menu inside a panel lets other keys pass.
        return m_popUp;
    }
}

bool MenuGlob::react(const Event& event)
{
    if (event.isKey())
        return handleKey(event.key);
    if (event.isMouse() && m_popUp && !getLocalBox().contains(event.pos)) {
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
    const int index = itemAt(event.pos);
    switch (event.type) {
    case Event::MouseMove:
    case Event::MouseDrag:
    case Event::MouseEnter:
        setHighlighted(index >= 0 && m_items[size_t(index)].isSelectable() ? index : -1);
        return true;
    case Event::MouseLeave: setHighlighted(-1); return true;
    case Event::MouseDown: return true;
    case Event::MouseUp:
        if (index >= 0 && event.button == Event::LeftButton)
            chooseItem(size_t(index));
        return true;
    default: return false;
    }
}

void MenuGlob::drawBackground()
{
    StylePainter::drawMenuBackground(painter(), getLocalBox(), getPalette());
}

void MenuGlob::drawText()
{
    Pictor::Painter& p = painter();
    for (size_t i = 0; i < m_items.size(); ++i) {
        const GlobBox box = rowBox(i);
        if (p.isVisible(box))
            drawItem(i, box, int(i) == m_highlighted);
    }
}

void MenuGlob::drawItem(size_t index, const GlobBox& box, bool highlighted)
{
    const MenuItem& item = m_items[index];
    Pictor::Painter& p = painter();
    if (item.hasOwnColours() && !highlighted) {
        p.fillRect(box, item.getBackColour());
        Palette own = getPalette();
        own.set(Palette::Text, item.getTextColour());
        StylePainter::drawMenuItem(p, box, own, item.getDisplayText().view(), false, item.isEnabled());
        return;
    }
    if (item.isHeading()) {
        // Headings read as titles of what follows: the legend colour, lined up with the entries' text.
        Palette heading = getPalette();
        heading.set(Palette::Text, heading.subheadingText());
        StylePainter::drawMenuItem(p, box, heading, item.getDisplayText().view(), false, true);
        return;
    }
    if (item.getType() == MenuItemInGroup) {
        // Entries under a heading are set in, so the group shows as one.
        const GlobBox indented(box.left() + UifStd::getIndentWidth(), box.bottom(), box.right(), box.top());
        if (highlighted)
            p.fillRect(box, getPalette().highlight());
        StylePainter::drawMenuItem(p, indented, getPalette(), item.getDisplayText().view(), highlighted,
                                   item.isEnabled());
        return;
    }
    StylePainter::drawMenuItem(p, box, getPalette(), item.getDisplayText().view(), highlighted, item.isEnabled());
}
