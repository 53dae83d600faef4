#include "toolkit/ui/Screen.h"

#include "toolkit/gfx/Font.h"
#include "toolkit/gfx/Painter.h"
#include "toolkit/support/BackgroundTasks.h"
#include "toolkit/support/Clock.h"
#include "toolkit/support/MainThread.h"
#include "toolkit/ui/Drawable.h"
#include "toolkit/ui/ScreenBackend.h"
#include "toolkit/ui/StylePainter.h"
#include "toolkit/ui/TabOrderManager.h"
#include "toolkit/ui/TabOrderable.h"
#include "toolkit/ui/UifStd.h"

#include <algorithm>
#include <cassert>
#include <cstdlib>

namespace {

// Times are fractional milliseconds; differences of large readings carry rounding, which must not decide
// whether a pause of exactly the limit counts.
constexpr double clockSlack = 1e-6;

// The parts of the boxes that lie outside `hole`, as boxes that do not overlap each other when the given ones
// do not.
std::vector<GlobBox> withoutBox(const std::vector<GlobBox>& boxes, const GlobBox& hole)
{
    std::vector<GlobBox> out;
    for (const GlobBox& box : boxes) {
        const GlobBox common = box.intersection(hole);
        if (common.empty()) {
            out.push_back(box);
            continue;
        }
        // Full-width bands below and above the hole, then what is left beside it.
        const GlobBox pieces[] = {
            GlobBox(box.left(), box.bottom(), box.right(), common.bottom()),
            GlobBox(box.left(), common.top(), box.right(), box.top()),
            GlobBox(box.left(), common.bottom(), common.left(), common.top()),
            GlobBox(common.right(), common.bottom(), box.right(), common.top()),
        };
        for (const GlobBox& piece : pieces)
            if (!piece.empty())
                out.push_back(piece);
    }
    return out;
}

Screen* currentScreen = nullptr;
Pictor::Painter* activePainter = nullptr;

// Keeps the screen's clipboard and does nothing else: the screen of a process without a display.
class NullBackend final : public ScreenBackend {
public:
    void attach(Screen&) override { }
    bool pollEvents(Screen&) override { return true; }
    void waitForEvents(int) override { }
    void present(const Pictor::Image&, const std::vector<GlobBox>&) override { }
    void setCursorShape(int) override { }
    LightweightString<wchar_t> getClipboardText() override { return m_clipboard; }
    void setClipboardText(const LightweightString<wchar_t>& text) override { m_clipboard = text; }

private:
    LightweightString<wchar_t> m_clipboard;
};

// The tooltip: a small top-level widget that shows one line of help near the pointer.
class TooltipGlob final : public Glob {
public:
    TooltipGlob(LightweightString<wchar_t> text, uint16_t w, uint16_t h)
        : Glob(w, h, UifStd::getColourScheme())
        , m_text(std::move(text))
    {
    }
    LightweightString<char> idstring() const override { return "TooltipGlob"; }
    void draw() override { StylePainter::drawTooltip(painter(), getLocalBox(), getPalette(), m_text.view()); }

private:
    LightweightString<wchar_t> m_text;
};

bool isWithin(const GlobWatch& watch, const Glob* subtree)
{
    const Glob* g = watch.get();
    return g && (g == subtree || subtree->isAncestorOf(g));
}

} // namespace

// ---------------------------------------------------------------------------------------------------------
// Intercept stacks

IdStamp EventInterceptStack::push(Glob* filter, int flags)
{
    if (!m_usable || !is_good_glob_ptr(filter))
        return {};
    const IdStamp id = Cv::StampTable::global().issue(nullptr);
    m_entries.push_back({ GlobWatch(filter), flags, id });
    return id;
}

bool EventInterceptStack::remove(IdStamp id)
{
    for (auto it = m_entries.begin(); it != m_entries.end(); ++it)
        if (it->id == id && !id.isNull()) {
            Cv::StampTable::global().retire(id);
            m_entries.erase(it);
            return true;
        }
    return false;
}

bool EventInterceptStack::empty() const
{
    return size() == 0;
}

size_t EventInterceptStack::size() const
{
    return static_cast<size_t>(
        std::count_if(m_entries.begin(), m_entries.end(), [](const Entry& e) { return e.filter.alive(); }));
}

bool EventInterceptStack::offer(const Event& event, Glob* hit)
{
    // Filters whose widget died are dropped; their stamps die with them.
    std::erase_if(m_entries, [](const Entry& e) {
        if (e.filter.alive())
            return false;
        Cv::StampTable::global().retire(e.id);
        return true;
    });
    // By index from the top: a filter may push or remove filters while it runs.
    for (size_t i = m_entries.size(); i-- > 0;) {
        if (i >= m_entries.size())
            continue;
        const Entry entry = m_entries[i];
        Glob* filter = entry.filter.get();
        if (!filter)
            continue;
        if (event.isMouse() && !(entry.flags & Mouse))
            continue;
        if (!event.isMouse() && !(entry.flags & Keys))
            continue;
        if ((entry.flags & OutsideOnly) && hit && (hit == filter || filter->isAncestorOf(hit)))
            continue;
        Event e = event;
        if (e.isMouse())
            e.pos = event.screenPos - filter->getScreenPos();
        Glob::DispatchScope scope;
        if (filter->react(e))
            return true;
    }
    return false;
}

// ---------------------------------------------------------------------------------------------------------
// Construction

Screen::Screen(uint16_t width, uint16_t height, std::unique_ptr<ScreenBackend> backend)
    : m_width(width)
    , m_height(height)
    , m_backend(backend ? std::move(backend) : std::make_unique<NullBackend>())
    , m_image(std::max<int>(1, width), std::max<int>(1, height))
{
    m_previous = currentScreen;
    currentScreen = this;
    m_image.fill(UifStd::getScreenBackground());
    m_backend->attach(*this);
    invalidateAll();
}

Screen::~Screen()
{
    // Topmost first, the reverse of the order in which they were shown.
    while (!m_topLevels.empty()) {
        Glob* top = m_topLevels.back();
        delete top; // forgetGlob takes it off the list
    }
    for (auto& stack : m_intercepts)
        while (!stack.m_entries.empty())
            stack.remove(stack.m_entries.back().id);
    if (currentScreen == this)
        currentScreen = m_previous;
}

void Screen::setSize(uint16_t width, uint16_t height)
{
    if (width == m_width && height == m_height)
        return;
    m_width = width;
    m_height = height;
    m_image = Pictor::Image(std::max<int>(1, width), std::max<int>(1, height));
    m_image.fill(UifStd::getScreenBackground());
    m_held.clear();
    invalidateAll();
}

Screen* Screen::current()
{
    return currentScreen;
}

// ---------------------------------------------------------------------------------------------------------
// Top-level widgets

bool Screen::addTopLevel(Glob* glob)
{
    if (!is_good_glob_ptr(glob) || glob->parent())
        return false;
    if (glob->hasFlag(Glob::TopLevelFlag)) {
        raise(glob);
        return true;
    }
    m_topLevels.push_back(glob);
    glob->setFlag(Glob::TopLevelFlag, true);
    if (!glob->getCanvas())
        glob->setCanvas(this);
    invalidate(glob->getBox());
    return true;
}

bool Screen::removeTopLevel(Glob* glob)
{
    auto it = std::find(m_topLevels.begin(), m_topLevels.end(), glob);
    if (it == m_topLevels.end())
        return false;
    forgetSubtree(glob);
    invalidate(glob->getBox());
    m_topLevels.erase(it);
    glob->setFlag(Glob::TopLevelFlag, false);
    return true;
}

void Screen::raise(Glob* glob)
{
    auto it = std::find(m_topLevels.begin(), m_topLevels.end(), glob);
    if (it == m_topLevels.end() || it + 1 == m_topLevels.end())
        return;
    m_topLevels.erase(it);
    m_topLevels.push_back(glob);
    invalidate(glob->getBox());
}

void Screen::lower(Glob* glob)
{
    auto it = std::find(m_topLevels.begin(), m_topLevels.end(), glob);
    if (it == m_topLevels.end() || it == m_topLevels.begin())
        return;
    m_topLevels.erase(it);
    m_topLevels.insert(m_topLevels.begin(), glob);
    invalidate(glob->getBox());
}

Glob* Screen::widgetAt(XY<int> screenPos) const
{
    for (size_t i = m_topLevels.size(); i-- > 0;) {
        Glob* top = m_topLevels[i];
        if (Glob* hit = top->findWidgetAt(screenPos - top->getPosition()))
            return hit;
    }
    return nullptr;
}

void Screen::forgetGlob(Glob* glob)
{
    // Watches of the dying widget are already dead (its stamp is retired); only the stacking list needs care.
    if (glob->hasFlag(Glob::TopLevelFlag))
        removeTopLevel(glob);
}

void Screen::forgetSubtree(Glob* glob)
{
    if (isWithin(m_focus, glob))
        setFocus(nullptr);
    if (isWithin(m_capture, glob))
        m_capture = GlobWatch();
    if (isWithin(m_hover, glob))
        m_hover = GlobWatch();
    if (isWithin(m_tooltipFor, glob))
        hideTooltip();
}

// ---------------------------------------------------------------------------------------------------------
// Input

Event Screen::makeMouseEvent(int type, int button, int modifiers) const
{
    Event e = Event::makeMouse(static_cast<Event::Type>(type), m_mousePos, button, modifiers);
    e.screenPos = m_mousePos;
    return e;
}

bool Screen::offerToIntercepts(const Event& event, Glob* hit)
{
    if (event.isMouse() && m_mouseListeners.getNumListeners() > 0)
        m_mouseListeners.issueNotification(NotifyMsg("mouse", Cv::make<MouseEventInfo>(event)), event.type);
    for (auto& stack : m_intercepts)
        if (stack.offer(event, hit))
            return true;
    return false;
}

Glob* Screen::dispatch(Glob* target, const Event& screenEvent)
{
    assert(isMainThread() && "input is dispatched on the user-interface thread only");
    Glob::DispatchScope scope;
    GlobWatch current(target);
    while (Glob* g = current.get()) {
        Event e = screenEvent;
        if (e.isMouse())
            e.pos = screenEvent.screenPos - g->getScreenPos();
        GlobWatch parent(g->parent());
        if (g->react(e))
            return current.get();
        current = parent;
    }
    return nullptr;
}

void Screen::mouseButton(XY<int> pos, int button, bool down, int modifiers)
{
    m_mousePos = pos;
    m_lastMoveTime = service_get_msecs_precise();
    hideTooltip();
    const int held = m_buttons;
    if (down)
        m_buttons |= button;
    else
        m_buttons &= ~button;

    Glob* hit = widgetAt(pos);
    Event e;
    if (down && held != 0) {
        e = makeMouseEvent(Event::MouseChord, m_buttons, modifiers);
    } else if (down) {
        e = makeMouseEvent(Event::MouseDown, button, modifiers);
        // A double click: the same button on the same widget, close in time (toolkit clock) and place.
        const XY<int> moved = pos - m_lastPressPos;
        const bool repeat = hit && m_lastPressTarget.get() == hit && m_lastPressButton == button
            && e.time - m_lastPressTime <= getDoubleClickTime() + clockSlack
            && std::abs(moved.x) <= getDoubleClickDistance() && std::abs(moved.y) <= getDoubleClickDistance();
        e.clickCount = repeat ? m_lastClickCount + 1 : 1;
        m_lastClickCount = e.clickCount;
        m_lastPressTarget = GlobWatch(hit);
        m_lastPressButton = button;
        m_lastPressTime = e.time;
        m_lastPressPos = pos;
    } else {
        e = makeMouseEvent(Event::MouseUp, button, modifiers);
    }

    if (offerToIntercepts(e, hit)) {
        if (m_buttons == 0)
            releaseCapture();
        return;
    }

    Glob* captured = m_capture.get();
    Glob* target = captured ? captured : hit;
    if (target && !captured && !target->isEnabledInTree())
        target = nullptr; // a press on a disabled widget goes nowhere

    if (e.type == Event::MouseDown && target) {
        if (UifStd::getWindowArrangement().raiseOnClick)
            raise(target->root());
        // The nearest focusable widget at the press takes the focus.
        for (Glob* g = target; g; g = g->parent())
            if (auto* orderable = dynamic_cast<TabOrderable*>(g); orderable && orderable->acceptsFocus()) {
                setFocus(g);
                break;
            }
    }

    {
        // Widgets destroyed by the press's handlers are deleted when the outermost dispatch ends: keep that
        // until the capture has taken its watch, or a handler destroyed along with its owner would be read
        // after it was freed.
        Glob::DispatchScope scope;
        Glob* handler = target ? dispatch(target, e) : nullptr;
        if (e.type == Event::MouseDown && !captured)
            m_capture = GlobWatch(handler ? handler : (is_good_glob_ptr(target) ? target : nullptr));
    }
    if (m_buttons == 0)
        releaseCapture();
}

void Screen::mouseMove(XY<int> pos, int modifiers)
{
    if (pos == m_mousePos && m_buttons == 0)
        return;
    m_mousePos = pos;
    m_lastMoveTime = service_get_msecs_precise();
    hideTooltip();
    m_tooltipFor = GlobWatch();

    Glob* hit = widgetAt(pos);
    const bool dragging = m_buttons != 0;
    Event e = makeMouseEvent(dragging ? Event::MouseDrag : Event::MouseMove, dragging ? m_buttons : 0, modifiers);
    if (offerToIntercepts(e, hit))
        return;
    if (dragging) {
        Glob* target = m_capture.get();
        if (!target && hit && hit->isEnabledInTree())
            target = hit;
        if (target)
            dispatch(target, e);
        return;
    }
    updateHover(hit, e);
    updateCursor(hit);
    if (hit && is_good_glob_ptr(hit) && hit->isEnabledInTree())
        dispatch(hit, e);
}

void Screen::mouseWheel(XY<int> pos, int notches, int modifiers)
{
    m_mousePos = pos;
    hideTooltip();
    Glob* hit = widgetAt(pos);
    Event e = makeMouseEvent(Event::MouseWheel, 0, modifiers);
    e.wheelDelta = notches;
    if (offerToIntercepts(e, hit))
        return;
    if (hit && hit->isEnabledInTree())
        dispatch(hit, e);
}

void Screen::updateHover(Glob* hit, const Event& moveEvent)
{
    Glob* old = m_hover.get();
    if (old == hit)
        return;
    m_hover = GlobWatch(hit);
    if (old) {
        Event leave = moveEvent;
        leave.type = Event::MouseLeave;
        leave.pos = moveEvent.screenPos - old->getScreenPos();
        Glob::DispatchScope scope;
        old->react(leave);
    }
    if (Glob* now = m_hover.get(); now && now->isEnabledInTree()) {
        Event enter = moveEvent;
        enter.type = Event::MouseEnter;
        enter.pos = moveEvent.screenPos - now->getScreenPos();
        Glob::DispatchScope scope;
        now->react(enter);
    }
}

void Screen::updateCursor(Glob* hit)
{
    if (!m_mouseContextLogic)
        return;
    int cursor = CursorInherit;
    for (Glob* g = hit; g && cursor < 0; g = g->parent())
        cursor = g->contextCursor(m_mousePos - g->getScreenPos());
    setCursor(cursor < 0 ? CursorArrow : cursor);
}

void Screen::key(int keyCode, int modifiers)
{
    hideTooltip();
    Event e = Event::makeKey(keyCode, modifiers);
    Glob* focus = m_focus.get();
    if (focus && (!focus->isShowing() || !focus->isEnabledInTree()))
        focus = nullptr;
    if (offerToIntercepts(e, focus))
        return;
    Glob* target = focus;
    if (!target && !m_topLevels.empty())
        target = m_topLevels.back();
    if (target && dispatch(target, e))
        return;
    const bool backTab = keyCode == Event::KeyBackTab || (keyCode == Event::KeyTab && (modifiers & Event::Shift));
    if (backTab)
        TabOrderManager::decrementTabStop(m_focus.get());
    else if (keyCode == Event::KeyTab)
        TabOrderManager::incrementTabStop(m_focus.get());
}

void Screen::text(std::wstring_view typed, int modifiers)
{
    for (wchar_t c : typed)
        key(static_cast<int>(c), modifiers);
}

// ---------------------------------------------------------------------------------------------------------
// Focus and capture

bool Screen::setFocus(Glob* glob)
{
    Glob* old = m_focus.get();
    if (glob == old)
        return true;
    if (glob && (!is_good_glob_ptr(glob) || !glob->isShowing() || !glob->isEnabledInTree()))
        return false;
    m_focus = GlobWatch(glob);
    Glob::DispatchScope scope;
    if (old)
        old->react(Event::makeFocus(false));
    // The one that lost the focus may have moved it on already.
    if (Glob* now = m_focus.get(); now == glob && now)
        now->react(Event::makeFocus(true));
    return m_focus.get() == glob;
}

void Screen::setCapture(Glob* glob)
{
    m_capture = GlobWatch(glob);
}

void Screen::releaseCapture()
{
    m_capture = GlobWatch();
}

EventInterceptStack& Screen::getInterceptStack(int priority)
{
    return m_intercepts[std::clamp(priority, 0, NumInterceptPriorities - 1)];
}

Cv::Ptr<Cv::Guard> Screen::addMouseListener(const Cv::Ptr<iCallbackBase<int, NotifyMsg>>& listener)
{
    return m_mouseListeners.addListener(listener);
}

// ---------------------------------------------------------------------------------------------------------
// Painting

void Screen::invalidate(const GlobBox& area)
{
    const GlobBox clipped = area.intersection(getArea());
    if (clipped.empty())
        return;
    if (!Drawable::redrawsEnabled()) {
        m_held.push_back(clipped);
        return;
    }
    for (const GlobBox& d : m_dirty)
        if (d.contains(clipped))
            return;
    std::erase_if(m_dirty, [&](const GlobBox& d) { return clipped.contains(d); });
    m_dirty.push_back(clipped);
    // Many small areas cost more in set-up than one larger paint.
    if (m_dirty.size() > 24) {
        GlobBox all;
        for (const GlobBox& d : m_dirty)
            all = all.unionWith(d);
        m_dirty.assign(1, all);
    }
}

void Screen::invalidateAll()
{
    m_dirty.assign(1, getArea());
}

void Screen::releaseHeldRedraws()
{
    std::vector<GlobBox> held;
    held.swap(m_held);
    for (const GlobBox& area : held)
        invalidate(area);
}

Pictor::Painter& Screen::currentPainter()
{
    if (activePainter)
        return *activePainter;
    // Outside a paint pass: a caller rendering a widget into a painter of its own gets that painter.
    if (Pictor::Painter* own = Pictor::Painter::current())
        return *own;
    // Otherwise the drawing is a mistake, and goes into an image of nothing. Made only on such a mistake,
    // because it stays the thread's current painter from then on.
    static Pictor::Painter* const scratch = new Pictor::Painter(Pictor::Image());
    return *scratch;
}

void Screen::flush()
{
    if (Pictor::UpdateDeferrer::active()) {
        m_flushWanted = true;
        return;
    }
    m_flushWanted = false;
    assert(isMainThread() && "the screen paints on the user-interface thread only");
    if (m_painting || m_dirty.empty())
        return;
    m_painting = true;
    std::vector<GlobBox> areas;
    areas.swap(m_dirty);
    m_lastPaintCount = 0;
    {
        Glob::DispatchScope scope; // nothing is deleted under the painter's feet
        Pictor::Painter painter(m_image);
        Pictor::Painter* outer = activePainter;
        activePainter = &painter;
        paintAreas(painter, areas);
        activePainter = outer;
    }
    m_painting = false;
    m_backend->present(m_image, areas);
}

void Screen::paintAreas(Pictor::Painter& painter, const std::vector<GlobBox>& areas)
{
    // One pass for all the areas, clipped to their union: a widget that several areas meet (a table and its
    // own scroll bar after a scroll) is drawn once, not once for each.
    std::vector<Pictor::PaintRect> rects(areas.begin(), areas.end());
    GlobBox bounds;
    for (const GlobBox& area : areas)
        bounds = bounds.unionWith(area);
    Pictor::StateSaver saver(painter);
    painter.clipTo(std::span<const Pictor::PaintRect>(rects));
    const std::vector<Glob*> tops = m_topLevels; // a draw() may not reorder what is being painted
    // The background only where no opaque widget will paint over it: a table filling most of a repaint would
    // otherwise have the whole area written twice.
    std::vector<GlobBox> background(1, bounds);
    for (Glob* top : tops)
        if (is_good_glob_ptr(top) && top->isVisible() && top->isOpaque())
            background = withoutBox(background, GlobBox::fromOriginAndSize(top->getPosition(), top->getSize()));
    const std::vector<Pictor::PaintRect> backgroundRects(background.begin(), background.end());
    painter.fillRects(backgroundRects, UifStd::getScreenBackground());
    for (Glob* top : tops)
        if (is_good_glob_ptr(top) && top->isVisible())
            paintGlob(painter, top, top->getPosition(), bounds, XY<int>(0, 0), areas);
}

void Screen::paintGlob(Pictor::Painter& painter, Glob* glob, XY<int> origin, const GlobBox& clip,
                       XY<int> parentOnScreen, const std::vector<GlobBox>& areas)
{
    // `origin` and `clip` are in the coordinates of the glob's parent (the screen for a top-level widget);
    // `areas` are on the screen.
    const GlobBox box = GlobBox::fromOriginAndSize(origin, glob->getSize()).intersection(clip);
    if (box.empty())
        return;
    const GlobBox onScreen = box.translated(parentOnScreen);
    if (std::none_of(areas.begin(), areas.end(), [&](const GlobBox& area) { return area.intersects(onScreen); }))
        return;
    Pictor::StateSaver saver(painter);
    painter.translate(origin.x, origin.y);
    const GlobBox local = box.translated(-origin);
    painter.clipTo(local);
    ++m_lastPaintCount;
    glob->draw();
    for (size_t i = 0; i < glob->m_children.size(); ++i) {
        Glob* child = glob->m_children[i].widget;
        if (child->isVisible())
            paintGlob(painter, child, child->getPosition(), local, parentOnScreen + origin, areas);
    }
}

Pictor::Image Screen::grab(const GlobBox& area) const
{
    const GlobBox clipped = area.intersection(getArea());
    if (clipped.empty())
        return {};
    Pictor::Image out(clipped.width(), clipped.height());
    if (out.isNull())
        return out;
    // Image rows run from the top; screen y runs from the bottom.
    for (int row = 0; row < clipped.height(); ++row) {
        const int screenRowFromTop = m_height - clipped.top() + row;
        const uint32_t* src = m_image.row(screenRowFromTop) + clipped.left();
        std::copy(src, src + clipped.width(), out.row(row));
    }
    return out;
}

Pictor::Image Screen::captureShown(const GlobBox& area) const
{
    Pictor::Image desktop = m_backend->captureDesktop(area);
    return desktop.isNull() ? grab(area) : desktop;
}

Pictor::Image ScreenBackend::captureDesktop(const GlobBox&)
{
    return {};
}

// ---------------------------------------------------------------------------------------------------------
// Cursor, tooltips, clipboard

void Screen::setCursor(int cursorId)
{
    if (cursorId == m_cursor)
        return;
    m_cursor = cursorId;
    m_backend->setCursorShape(cursorId);
}

void Screen::enableTooltips(bool enabled)
{
    m_tooltipsEnabled = enabled;
    if (!enabled)
        hideTooltip();
}

void Screen::hideTooltip()
{
    if (Glob* tip = m_tooltip.get())
        Glob::destroy(tip);
    m_tooltip = GlobWatch();
}

void Screen::tick()
{
    if (!m_tooltipsEnabled || m_buttons != 0 || m_tooltip.alive())
        return;
    if (service_get_msecs_precise() - m_lastMoveTime + clockSlack < getTooltipDelay())
        return;
    Glob* owner = nullptr;
    LightweightString<wchar_t> text;
    for (Glob* g = widgetAt(m_mousePos); g; g = g->parent()) {
        const UIString help = g->getContextText().empty() ? g->getContextTitle() : g->getContextText();
        if (!help.empty()) {
            owner = g;
            text = help.getString();
            break;
        }
    }
    if (!owner || text.empty() || m_tooltipFor.get() == owner)
        return;
    const Pictor::Font& font = UifStd::defaultFont();
    const int pad = UifStd::getWidgetGap();
    const int w = std::min<int>(m_width, font.pixelWidth(text.view()) + 2 * pad);
    const int h = static_cast<int>(font.lineHeight()) + pad;
    auto* tip = new TooltipGlob(text, static_cast<uint16_t>(w), static_cast<uint16_t>(h));
    // Below and to the right of the pointer, clear of the cursor, and on the screen.
    const GlobBox wanted = GlobBox::fromOriginAndSize({ m_mousePos.x + 12, m_mousePos.y - h - 16 }, { w, h });
    const GlobBox placed = Placement::keepInside(wanted, getArea());
    tip->setPos(placed.left(), placed.bottom());
    addTopLevel(tip);
    m_tooltip = GlobWatch(tip);
    m_tooltipFor = GlobWatch(owner);
}

LightweightString<wchar_t> Screen::getClipboardText()
{
    return m_backend->getClipboardText();
}

void Screen::setClipboardText(const LightweightString<wchar_t>& text)
{
    m_backend->setClipboardText(text);
}

bool Screen::processEvents()
{
    const bool open = m_backend->pollEvents(*this);
    glob_poll_background_tasks();
    tick();
    flush();
    return open;
}

// ---------------------------------------------------------------------------------------------------------
// Free functions

Pictor::Image pictor_getScreenRect(const GlobBox& area)
{
    Screen* screen = Screen::current();
    return screen ? screen->captureShown(area) : Pictor::Image();
}

void pictor_setCursor(int cursorId)
{
    if (Screen* screen = Screen::current())
        screen->setCursor(cursorId);
}

void pictor_enableMouseContextLogic(bool enabled)
{
    if (Screen* screen = Screen::current())
        screen->enableMouseContextLogic(enabled);
}

void CvTooltipsEnable(bool enabled)
{
    if (Screen* screen = Screen::current())
        screen->enableTooltips(enabled);
}

EventInterceptStack& getEventInterceptStack(int priority)
{
    if (Screen* screen = Screen::current())
        return screen->getInterceptStack(priority);
    static EventInterceptStack noScreen(false);
    return noScreen;
}

XY<int> glib_getMousePos()
{
    Screen* screen = Screen::current();
    return screen ? screen->getMousePos() : XY<int>();
}

namespace Pictor {

Cv::Ptr<Cv::Guard> addMouseListener(const Cv::Ptr<iCallbackBase<int, NotifyMsg>>& listener)
{
    Screen* screen = Screen::current();
    return screen ? screen->addMouseListener(listener) : Cv::Ptr<Cv::Guard>();
}

} // namespace Pictor
