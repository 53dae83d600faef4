#include "lists/ScrollList.h"

#include "toolkit/support/Clock.h"
#include "toolkit/ui/UifStd.h"
#include "toolkit/widgets/ScrollBar.h"

#include <algorithm>

namespace {

// The line pressed last and when, shared by every list (see the header).
struct LastLineClick {
    int index = -1;
    int64_t ticks = 0;
};
LastLineClick lastLineClick;

// Holds the lines in view and clips them to the list's user area. Messages from the lines (their presses)
// go on to the list unchanged, modifiers included.
class LineView : public Glob {
public:
    LineView(uint16_t width, uint16_t height, const Palette& palette)
        : Glob(width, height, palette)
    {
    }
    LightweightString<char> idstring() const override { return "ScrollListView"; }
    bool react(const Event& event) override
    {
        if (event.isMessage() && parent())
            return parent()->react(event);
        return Glob::react(event);
    }
    void drawBackground() override { painter().fillRect(getLocalBox(), getPalette().entry()); }
};

} // namespace

ScrollList::InitArgs::InitArgs()
{
    standardWidgets = NoWidgets;
    border = ThinBorder;
    movable = false;
}

ScrollList::InitArgs::InitArgs(std::vector<LightweightString<wchar_t>> lines, uint16_t w, uint16_t h, uint16_t lineH,
    const Palette& pal, Canvas* c)
    : InitArgs()
{
    width = w;
    height = h;
    palette = pal;
    canvas = c;
    strings = std::move(lines);
    lineHeight = lineH;
}

ScrollList::ScrollList(const InitArgs& args)
    : StandardPanel(args)
    , m_modes { .lineHeight = args.lineHeight ? args.lineHeight : static_cast<uint32_t>(UifStd::getButtonHeight()),
        .downBack = args.palette.highlight(),
        .downText = args.palette.highlightText(),
        .appearance = args.appearance }
{
    makeChildren();
    setStrings(args.strings);
}

ScrollList::ScrollList(const std::vector<LightweightString<wchar_t>>& strings, uint16_t width, uint16_t height,
    const Palette& palette, Canvas* canvas)
    : ScrollList(InitArgs(strings, width, height, 0, palette, canvas))
{
}

ScrollList::ScrollList(const ScrollList& other)
    : EventHandler(other)
    , Cv::InternalRefCount(other)
    , iVirtual(other)
    , iObject(other)
    , StandardPanel(other)
    , radio_set(other)
    , TabOrderable(other)
    , m_modes(other.m_modes)
{
    makeChildren();
    setStrings(other.lineTexts());
}

ScrollList& ScrollList::operator=(const ScrollList& other)
{
    if (this != &other) {
        StandardPanel::operator=(other);
        m_modes = other.m_modes;
        setStrings(other.lineTexts());
    }
    return *this;
}

ScrollList::~ScrollList()
{
    destroyLines();
}

LightweightString<char> ScrollList::idstring() const
{
    return "ScrollList";
}

std::vector<LightweightString<wchar_t>> ScrollList::lineTexts() const
{
    std::vector<LightweightString<wchar_t>> texts;
    texts.reserve(m_lines.size());
    for (const ScrollListItemWidget* line : m_lines)
        texts.push_back(line->getText());
    return texts;
}

void ScrollList::makeChildren()
{
    setArrowKeys(false); // the list moves its selection itself, by its own key table
    const GlobBox area = getUserArea();
    const int barWidth = UifStd::getScrollBarWidth();
    m_view = new LineView(static_cast<uint16_t>(std::max(0, area.width() - barWidth)),
        static_cast<uint16_t>(area.height()), getPalette());
    addChild(m_view, Absolute(area.left(), area.bottom()));
    ScrollBar::InitArgs bar(static_cast<uint16_t>(area.height()), static_cast<uint16_t>(barWidth), getPalette());
    m_scrollBar = addWidget<ScrollBar>(bar, Absolute(area.right() - barWidth, area.bottom()));
}

// ---------------------------------------------------------------------------------------------------------
// Lines

void ScrollList::detachLinesInView()
{
    for (int i = m_firstAttached; i < m_endAttached; ++i) {
        ScrollListItemWidget* line = m_lines[static_cast<size_t>(i)];
        if (line->isHovered())
            line->react(Event::makeMouse(Event::MouseLeave, {}));
        m_view->detachChild(line);
    }
    m_firstAttached = m_endAttached = 0;
}

void ScrollList::destroyLines()
{
    detachLinesInView();
    clearWidgets();
    for (size_t i = m_lines.size(); i-- > 0;)
        Glob::destroy(m_lines[i]);
    m_lines.clear();
}

ScrollListItemWidget* ScrollList::makeWidget(int index, const LightweightString<wchar_t>& text, const Palette& palette,
    uint16_t width, uint16_t lineHeight, Canvas* canvas)
{
    (void)index;
    return new ScrollListItemWidget(text, palette, m_modes.appearance, width, lineHeight, canvas);
}

void ScrollList::addLine(int index, const LightweightString<wchar_t>& text)
{
    Palette linePalette(getPalette().entry(), getItemColour(index));
    // The down colours live in the palette's highlight roles: a line pays nothing extra for them.
    linePalette.set(Palette::Highlight, m_modes.downBack);
    linePalette.set(Palette::HighlightText, m_modes.downText);
    ScrollListItemWidget* line = makeWidget(index, text, linePalette, m_view->getWidth(),
        static_cast<uint16_t>(std::min<uint32_t>(m_modes.lineHeight, 65535)), getCanvas());
    m_lines.push_back(line);
    radio_set::addWidget(line);
}

void ScrollList::restoreSelection(const LightweightString<wchar_t>& selectedText)
{
    for (size_t i = 0; i < m_lines.size(); ++i)
        if (m_lines[i]->getText() == selectedText) {
            setLineDown(static_cast<int>(i), true, false);
            return;
        }
}

void ScrollList::setStrings(const std::vector<LightweightString<wchar_t>>& strings)
{
    const int selected = getSelectedItem();
    const LightweightString<wchar_t> selectedText = selected >= 0 ? getItemW(selected) : LightweightString<wchar_t>();
    destroyLines();
    m_lines.reserve(strings.size());
    for (size_t i = 0; i < strings.size(); ++i)
        addLine(static_cast<int>(i), strings[i]);
    if (selected >= 0)
        restoreSelection(selectedText);
    if (m_modes.preferred < 0 || m_modes.preferred >= numItems())
        m_modes.preferred = 0;
    if (m_modes.oneAlwaysSelected && !m_lines.empty() && getSelectedItem() < 0)
        setLineDown(m_modes.preferred, true, false);
    layoutLines();
    updateThumb();
}

void ScrollList::setStrings(const std::vector<ScrollListItem>& items)
{
    std::vector<LightweightString<wchar_t>> texts;
    texts.reserve(items.size());
    for (const ScrollListItem& item : items)
        texts.push_back(item.text());
    setStrings(texts);
    for (size_t i = 0; i < items.size() && i < m_lines.size(); ++i) {
        const ScrollListItem& item = items[i];
        ScrollListItemWidget* line = m_lines[i];
        if (item.hasOwnColour()) {
            Palette pal = line->getPalette();
            pal.set(Palette::Text, item.getCol());
            line->setPalette(pal);
        }
        line->setBold(item.bold());
        line->setAlignment(item.alignment().horizontal);
        if (!item.active())
            line->setEnabled(false, false);
        if (item.getSelected()) {
            if (!m_modes.multi)
                for (ScrollListItemWidget* other : m_lines)
                    other->setDown(false, NoRedraw);
            line->setDown(true, NoRedraw);
        }
    }
    m_view->redraw();
}

LightweightString<wchar_t> ScrollList::getItemW(int index) const
{
    const ScrollListItemWidget* line = getItemWidget(index);
    return line ? line->getText() : LightweightString<wchar_t>();
}

ScrollListItemWidget* ScrollList::getItemWidget(int index) const
{
    return index >= 0 && index < numItems() ? m_lines[static_cast<size_t>(index)] : nullptr;
}

Colour ScrollList::getItemColour(int index) const
{
    const ScrollListItemWidget* line = getItemWidget(index);
    return line && line->isWarn() ? getPalette().warning() : getPalette().text();
}

void ScrollList::setItemWarn(int index, bool warn)
{
    if (ScrollListItemWidget* line = getItemWidget(index))
        line->setWarn(warn);
}

void ScrollList::setLineHeight(uint16_t height)
{
    if (height == 0 || height == m_modes.lineHeight)
        return;
    m_modes.lineHeight = height;
    layoutLines();
    updateThumb();
}

// ---------------------------------------------------------------------------------------------------------
// Selection

void ScrollList::setLineDown(int index, bool down, bool redrawLine)
{
    if (ScrollListItemWidget* line = getItemWidget(index))
        line->setDown(down, redrawLine ? Redraw : NoRedraw);
}

int ScrollList::numSelected() const
{
    return static_cast<int>(std::count_if(m_lines.begin(), m_lines.end(), [](const auto* l) { return l->isDown(); }));
}

int ScrollList::getSelectedItem() const
{
    for (size_t i = 0; i < m_lines.size(); ++i)
        if (m_lines[i]->isDown())
            return static_cast<int>(i);
    return -1;
}

LightweightString<wchar_t> ScrollList::getSelectedItemStringW() const
{
    return getItemW(getSelectedItem());
}

bool ScrollList::itemSelected(int index) const
{
    const ScrollListItemWidget* line = getItemWidget(index);
    return line && line->isDown();
}

void ScrollList::selectItemInternal(int index, int modifiers, int flags)
{
    if (index < 0 || index >= numItems())
        return;
    const bool redrawLines = (flags & RedrawFlag) != 0;
    ScrollListItemWidget* line = m_lines[static_cast<size_t>(index)];
    if (m_modes.multi && (modifiers & Event::Ctrl)) {
        line->setDown(!line->isDown(), redrawLines ? Redraw : NoRedraw);
    } else if (m_modes.multi && (modifiers & Event::Shift)) {
        int first = index;
        int last = index;
        int anchor = -1;
        for (int i = index + 1; i < numItems() && anchor < 0; ++i)
            if (itemSelected(i))
                anchor = i;
        if (anchor >= 0) {
            last = anchor;
        } else {
            for (int i = index - 1; i >= 0 && anchor < 0; --i)
                if (itemSelected(i))
                    anchor = i;
            if (anchor >= 0)
                first = anchor;
        }
        for (ScrollListItemWidget* l : m_lines)
            l->setDown(false, NoRedraw);
        for (int i = first; i <= last; ++i)
            setLineDown(i, true, false);
        m_view->redraw();
    } else if (m_modes.multi && (!m_modes.replaceOnPlainClick || (modifiers & Event::AnyModifier))) {
        line->setDown(!line->isDown(), redrawLines ? Redraw : NoRedraw);
    } else {
        for (ScrollListItemWidget* l : m_lines)
            if (l->isDown()) {
                l->setIgnoreMouseClicks(false);
                l->setDown(false, redrawLines ? Redraw : NoRedraw);
            }
        line->setDown(true, redrawLines ? Redraw : NoRedraw);
    }
    if (flags & NotifyFlag)
        callMsg(clickMsg);
}

void ScrollList::selectItem(int index, int flags)
{
    if (index < 0 || index >= numItems())
        return;
    // Just enough scrolling to show the whole line.
    const int64_t top = int64_t(index) * m_modes.lineHeight;
    const int64_t visible = getVisibleHeight();
    if (top < m_offset)
        scrollTo(top);
    else if (top + m_modes.lineHeight > m_offset + visible)
        scrollTo(top - visible + m_modes.lineHeight);
    selectItemInternal(index, 0, flags);
}

void ScrollList::selectItem(const LightweightString<wchar_t>& text, int flags)
{
    for (size_t i = 0; i < m_lines.size(); ++i)
        if (m_lines[i]->getText() == text) {
            selectItem(static_cast<int>(i), flags);
            return;
        }
}

void ScrollList::selectItemByWidget(Glob* line, int flags)
{
    selectItem(indexOfLine(line), flags);
}

void ScrollList::clearSelection()
{
    for (ScrollListItemWidget* line : m_lines)
        line->setDown(false);
}

void ScrollList::multiSelect(bool multi, bool replaceOnPlainClick, bool ownerFlag)
{
    m_modes.multi = multi;
    m_modes.replaceOnPlainClick = replaceOnPlainClick;
    m_modes.ownerFlag = ownerFlag;
    if (multi)
        m_modes.oneAlwaysSelected = false;
}

void ScrollList::oneItemAlwaysSelected(bool always)
{
    m_modes.oneAlwaysSelected = always;
    if (always && !m_lines.empty() && getSelectedItem() < 0)
        setLineDown(m_modes.preferred, true, true);
}

void ScrollList::setDownCols(const Colour& back, const Colour& text)
{
    m_modes.downBack = back;
    m_modes.downText = text;
    for (ScrollListItemWidget* line : m_lines) {
        Palette pal = line->getPalette();
        pal.set(Palette::Highlight, back);
        pal.set(Palette::HighlightText, text);
        line->setPalette(pal);
    }
}

int ScrollList::indexOfLine(const Glob* line) const
{
    // A pressed line is one in view: look there first.
    for (int i = m_firstAttached; i < m_endAttached; ++i)
        if (m_lines[static_cast<size_t>(i)] == line)
            return i;
    for (size_t i = 0; i < m_lines.size(); ++i)
        if (m_lines[i] == line)
            return static_cast<int>(i);
    return -1;
}

void ScrollList::lineClicked(Glob* line, int modifiers)
{
    const int index = indexOfLine(line);
    if (index < 0)
        return;
    const int64_t now = service_get_ticks();
    const bool plain = (modifiers & Event::AnyModifier) == 0;
    const int64_t elapsed = now - lastLineClick.ticks;
    const bool again = plain && index == lastLineClick.index && elapsed >= 0 && elapsed < doubleClickTime;
    lastLineClick = { index, now };
    takeFocus();
    if (again) {
        sendMsg(owner(), itemSelectedMsg);
        return;
    }
    selectItemInternal(index, modifiers, RedrawFlag | NotifyFlag);
}

void ScrollList::handleMenuClick(Glob* line)
{
    const int index = indexOfLine(line);
    if (index >= 0 && m_lines[static_cast<size_t>(index)]->isSelectable())
        selectItemInternal(index, 0, RedrawFlag | NotifyFlag);
}

// ---------------------------------------------------------------------------------------------------------
// Keys

bool ScrollList::handleKey(int key)
{
    const int selected = getSelectedItem();
    const int page = m_modes.lineHeight ? static_cast<int>(getVisibleHeight() / m_modes.lineHeight) : 0;
    int wanted = 0;
    switch (key) {
    case Event::KeyReturn:
        sendMsg(owner(), itemSelectedMsg);
        return true;
    case Event::KeyHome:
        wanted = 0;
        break;
    case Event::KeyEnd:
        wanted = numItems() - 1;
        break;
    case Event::KeyUp:
        wanted = selected - 1;
        break;
    case Event::KeyDown:
        wanted = selected + 1;
        break;
    case Event::KeyPageUp:
        wanted = selected - page;
        break;
    case Event::KeyPageDown:
        wanted = selected + page;
        break;
    default:
        return false;
    }
    // Up to the count itself, not the last line: Down on the last line still tells the owner.
    wanted = std::clamp(wanted, 0, numItems());
    if (wanted != selected) {
        GlobWatch self(this);
        selectItem(wanted, RedrawFlag);
        if (self)
            callMsg(keypressMsg);
    }
    return true;
}

// ---------------------------------------------------------------------------------------------------------
// View

uint32_t ScrollList::getVisibleHeight() const
{
    return m_view ? m_view->getHeight() : 0;
}

bool ScrollList::itemIsVisible(int index) const
{
    if (index < 0 || index >= numItems())
        return false;
    const int64_t top = int64_t(index) * m_modes.lineHeight;
    return top + m_modes.lineHeight > m_offset && top < int64_t(m_offset) + getVisibleHeight();
}

void ScrollList::resetView()
{
    scrollTo(0);
}

void ScrollList::scrollTo(int64_t offset)
{
    m_offset = static_cast<uint32_t>(std::clamp<int64_t>(offset, 0, UINT32_MAX));
    layoutLines();
    updateThumb();
}

void ScrollList::updateThumb()
{
    const uint32_t total = getTotalHeight();
    if (total == 0) {
        m_scrollBar->setThumbSize(1.0);
        m_scrollBar->setThumbPos(0.0);
        return;
    }
    m_scrollBar->setThumbSize(double(getVisibleHeight()) / total);
    m_scrollBar->setThumbPos(double(m_offset) / total);
}

void ScrollList::layoutLines()
{
    const uint32_t visible = getVisibleHeight();
    const uint32_t total = getTotalHeight();
    m_offset = std::min(m_offset, total > visible ? total - visible : 0u);
    int first = 0;
    int end = 0;
    if (!m_lines.empty() && m_modes.lineHeight > 0) {
        first = static_cast<int>(m_offset / m_modes.lineHeight);
        end = std::min(numItems(), first + static_cast<int>(visible / m_modes.lineHeight) + 2);
    }
    // Lines leaving the view go back to waiting unattached; only the ones in view are children.
    for (int i = m_firstAttached; i < m_endAttached; ++i)
        if (i < first || i >= end) {
            ScrollListItemWidget* line = m_lines[static_cast<size_t>(i)];
            if (line->isHovered())
                line->react(Event::makeMouse(Event::MouseLeave, {}));
            m_view->detachChild(line);
        }
    const uint16_t width = m_view->getWidth();
    const auto height = static_cast<uint16_t>(std::min<uint32_t>(m_modes.lineHeight, 65535));
    for (int i = first; i < end; ++i) {
        ScrollListItemWidget* line = m_lines[static_cast<size_t>(i)];
        if (line->getWidth() != width || line->getHeight() != height)
            line->resize(width, height);
        const int y
            = static_cast<int>(int64_t(visible) - (int64_t(i) * m_modes.lineHeight - m_offset) - m_modes.lineHeight);
        if (i >= m_firstAttached && i < m_endAttached)
            line->setPos(0, y);
        else
            m_view->addChild(line, Absolute(0, y));
    }
    m_firstAttached = first;
    m_endAttached = end;
    m_view->redraw();
}

// ---------------------------------------------------------------------------------------------------------
// Toolkit

bool ScrollList::react(const Event& event)
{
    if (event.isMessage(ScrollListItemWidget::listItemMsg)) {
        lineClicked(event.sender, event.modifiers);
        return true;
    }
    if (event.isKey() && handleKey(event.key))
        return true;
    return StandardPanel::react(event);
}

bool ScrollList::handleMessageEvent(LightweightString<char> name, Glob* sender)
{
    if (sender == m_scrollBar && ScrollBar::isScrollBarMsg(name)) {
        if (m_lines.empty())
            return true;
        int64_t offset = m_offset;
        if (name == ScrollBar::thumbMovedMsg)
            offset = static_cast<int64_t>(getTotalHeight() * m_scrollBar->getThumbPos());
        else if (name == ScrollBar::upButtonPressedMsg)
            offset = std::max<int64_t>(0, offset - m_modes.lineHeight);
        else
            offset += m_modes.lineHeight;
        scrollTo(offset);
        return true;
    }
    return StandardPanel::handleMessageEvent(name, sender);
}

bool ScrollList::handleMouseEvent(const Event& event)
{
    if (event.isPress(Event::RightButton)) {
        if (Glob* hit = findWidgetAt(event.pos); hit && hit->parent() == m_view) {
            handleMenuClick(hit);
            return true;
        }
    }
    if (event.type == Event::MouseWheel && !m_lines.empty()) {
        scrollTo(int64_t(m_offset) - int64_t(event.wheelDelta) * m_modes.lineHeight);
        return true;
    }
    return StandardPanel::handleMouseEvent(event);
}

void ScrollList::reshape()
{
    StandardPanel::reshape();
    if (!m_view)
        return;
    const GlobBox area = getUserArea();
    const int barWidth = UifStd::getScrollBarWidth();
    m_view->resize(std::max(0, area.width() - barWidth), area.height());
    m_view->setPos(area.left(), area.bottom());
    m_scrollBar->resize(barWidth, area.height());
    m_scrollBar->setPos(area.right() - barWidth, area.bottom());
    layoutLines();
    updateThumb();
}

void ScrollList::setPalette(const Palette& palette)
{
    StandardPanel::setPalette(palette);
    if (m_view)
        m_view->setPalette(palette);
}
