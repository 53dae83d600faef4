#include "toolkit/ui/Glob.h"

#include "toolkit/gfx/Painter.h"
#include "toolkit/support/MainThread.h"
#include "toolkit/ui/Screen.h"
#include "toolkit/ui/TabOrderable.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <cstring>

// A Glob is made once per list line, so its size is watched: the rare features belong in the extension.
static_assert(sizeof(Glob) <= 160, "Glob grew: move rarely used state into Glob::Extension");

// The features few widgets use, allocated on first use.
struct Glob::Extension {
    LightweightString<char> name;
    UIString contextTitle;
    UIString contextText;
    Glob* owner = nullptr;
    IdStamp ownerStamp;
    int cursor = -1;
    int insetLeft = 0;
    int insetBottom = 0;
    int insetRight = 0;
    int insetTop = 0;
};

// The addresses of live widgets, for is_good_glob_ptr(Glob*) which has nothing but an address to go on.
// Open addressing with linear probing and backward-shift deletion: no tombstones, no allocation per widget,
// O(1) on average for insert, erase and lookup. Owned by the user-interface thread like the widgets.
class GlobRegistry {
public:
    static GlobRegistry& instance()
    {
        static GlobRegistry* registry = new GlobRegistry; // never destroyed: widgets may die at exit
        return *registry;
    }

    void insert(const Glob* g)
    {
        if ((m_count + 1) * 4 > m_slots.size() * 3)
            grow();
        size_t i = home(g);
        while (m_slots[i] && m_slots[i] != g)
            i = (i + 1) & m_mask;
        if (!m_slots[i]) {
            m_slots[i] = g;
            ++m_count;
        }
    }

    void erase(const Glob* g)
    {
        if (m_slots.empty())
            return;
        size_t i = home(g);
        while (m_slots[i] != g) {
            if (!m_slots[i])
                return;
            i = (i + 1) & m_mask;
        }
        // Pull later entries of the probe run back into the hole so lookups never stop early.
        size_t hole = i;
        size_t j = i;
        for (;;) {
            j = (j + 1) & m_mask;
            if (!m_slots[j])
                break;
            const size_t want = home(m_slots[j]);
            // Move j into the hole unless its home lies cyclically in (hole, j].
            const bool homeBetween = hole <= j ? (hole < want && want <= j) : (hole < want || want <= j);
            if (!homeBetween) {
                m_slots[hole] = m_slots[j];
                hole = j;
            }
        }
        m_slots[hole] = nullptr;
        --m_count;
    }

    bool contains(const Glob* g) const
    {
        if (!g || m_slots.empty())
            return false;
        size_t i = home(g);
        while (m_slots[i]) {
            if (m_slots[i] == g)
                return true;
            i = (i + 1) & m_mask;
        }
        return false;
    }

    // Names, for GlobManager::find. Few widgets have one.
    std::vector<std::pair<LightweightString<char>, Glob*>> named;

private:
    size_t home(const Glob* g) const
    {
        auto v = reinterpret_cast<uintptr_t>(g) >> 4;
        return static_cast<size_t>(v * 0x9E3779B97F4A7C15ull >> 20) & m_mask;
    }
    void grow()
    {
        std::vector<const Glob*> old = std::move(m_slots);
        m_slots.assign(old.empty() ? 1024 : old.size() * 2, nullptr);
        m_mask = m_slots.size() - 1;
        m_count = 0;
        for (const Glob* g : old)
            if (g)
                insert(g);
    }

    std::vector<const Glob*> m_slots;
    size_t m_mask = 0;
    size_t m_count = 0;
};

namespace {

// Widgets belong to the user-interface thread; a debug build says so at the first call from elsewhere.
inline void assertUiThread()
{
    assert(isMainThread() && "widgets are made, changed and destroyed on the user-interface thread only");
}

// Dispatches in progress, and widgets whose destruction waits for the outermost one to end.
int dispatchDepth = 0;
bool reaping = false;
std::vector<Glob*>& doomed()
{
    static std::vector<Glob*>* list = new std::vector<Glob*>;
    return *list;
}

void reapDoomed()
{
    if (reaping)
        return;
    reaping = true;
    auto& list = doomed();
    // In the order asked for, a batch at a time: destructors may doom more widgets, which join the next batch.
    while (!list.empty()) {
        std::vector<Glob*> batch;
        batch.swap(list);
        for (Glob* g : batch)
            delete g;
    }
    reaping = false;
}

uint16_t clampSize(double v)
{
    if (!std::isfinite(v) || v <= 0.0)
        return 0;
    return static_cast<uint16_t>(std::min(65535.0, std::round(v)));
}

} // namespace

// ---------------------------------------------------------------------------------------------------------
// Construction and destruction

Glob::Glob(const GlobCreationInfo& info)
{
    initFrom(info);
}

Glob::Glob(uint16_t width, uint16_t height, const Palette& palette, Canvas* canvas)
    : CanvasClient(canvas)
    , m_width(width)
    , m_height(height)
    , m_palette(palette)
{
    registerLive();
}

Glob::Glob(const Glob& other)
    : EventHandler(other)
    , Cv::InternalRefCount(other)
    , iVirtual(other)
    , iObject(other)
    , CanvasClient(other)
    , Drawable(other)
{
    registerLive();
    copyAppearance(other);
}

Glob& Glob::operator=(const Glob& other)
{
    if (this != &other) {
        copyAppearance(other);
        redraw();
    }
    return *this;
}

void Glob::initFrom(const GlobCreationInfo& info)
{
    setCanvas(info.canvas);
    m_width = info.width;
    m_height = info.height;
    m_palette = info.palette;
    m_pos = info.pos;
    registerLive();
    if (!info.name.empty())
        setName(info.name);
}

void Glob::registerLive()
{
    assertUiThread();
    m_stamp = Cv::StampTable::global().issue(this);
    GlobRegistry::instance().insert(this);
}

void Glob::copyAppearance(const Glob& other)
{
    setCanvas(other.getCanvas());
    m_pos = other.m_pos;
    m_width = other.m_width;
    m_height = other.m_height;
    m_palette = other.m_palette;
    constexpr uint32_t copied = VisibleFlag | ActiveFlag | MovableFlag | ResizableFlag;
    m_flags = (m_flags & ~copied) | (other.m_flags & copied);
    if (other.m_ext) {
        const LightweightString<char> name = other.m_ext->name;
        ext() = *other.m_ext;
        m_ext->name.clear();
        if (hasFlag(NamedFlag))
            setName({}); // drop this widget's old registration
        if (!name.empty())
            setName(name);
    }
}

void Glob::retireIdentity()
{
    if (hasFlag(DyingFlag))
        return;
    setFlag(DyingFlag, true);
    Cv::StampTable::global().retire(m_stamp);
    GlobRegistry::instance().erase(this);
    if (hasFlag(NamedFlag)) {
        auto& named = GlobRegistry::instance().named;
        std::erase_if(named, [this](const auto& entry) { return entry.second == this; });
        setFlag(NamedFlag, false);
    }
}

Glob::~Glob()
{
    setFlag(DestructingFlag, true);
    retireIdentity();
    if (Screen* screen = Screen::current())
        screen->forgetGlob(this);
    unlinkFromParent();
    // Last in, first out: a child's destructor may still look at the siblings made before it.
    while (!m_children.empty()) {
        Glob* last = m_children.back().widget;
        delete last; // its destructor unlinks it from m_children
    }
}

// ---------------------------------------------------------------------------------------------------------
// Identity

LightweightString<char> Glob::idstring() const
{
    return "Glob";
}

Glob::Extension& Glob::ext()
{
    if (!m_ext)
        m_ext = std::make_unique<Extension>();
    return *m_ext;
}

void Glob::setName(const LightweightString<char>& name)
{
    auto& named = GlobRegistry::instance().named;
    if (hasFlag(NamedFlag))
        std::erase_if(named, [this](const auto& entry) { return entry.second == this; });
    setFlag(NamedFlag, false);
    if (name.empty() && !m_ext)
        return;
    ext().name = name;
    if (!name.empty() && !hasFlag(DyingFlag)) {
        named.emplace_back(name, this);
        setFlag(NamedFlag, true);
    }
}

Glob* Glob::findNamed(const LightweightString<char>& name)
{
    const auto& named = GlobRegistry::instance().named;
    for (auto it = named.rbegin(); it != named.rend(); ++it)
        if (it->first == name)
            return it->second;
    return nullptr;
}

LightweightString<char> Glob::getName() const
{
    return m_ext ? m_ext->name : LightweightString<char>();
}

bool is_good_glob_ptr(const Glob* glob)
{
    return GlobRegistry::instance().contains(glob);
}

bool is_good_glob_ptr(const Glob* glob, const IdStamp& stamp)
{
    return glob && Cv::StampTable::global().lookup(stamp) == static_cast<const void*>(glob);
}

// ---------------------------------------------------------------------------------------------------------
// The tree

Glob* Glob::owner() const
{
    if (m_ext && m_ext->owner) {
        if (is_good_glob_ptr(m_ext->owner, m_ext->ownerStamp))
            return m_ext->owner;
        m_ext->owner = nullptr; // the set owner died: fall back to the parent
    }
    return m_parent;
}

void Glob::setOwner(Glob* newOwner)
{
    if (!newOwner && !m_ext)
        return;
    ext().owner = newOwner;
    m_ext->ownerStamp = newOwner ? newOwner->getIdStamp() : IdStamp();
}

int Glob::childIndex(const Glob* c) const
{
    // From the back: removal is usually of the child added last.
    for (size_t i = m_children.size(); i-- > 0;)
        if (m_children[i].widget == c)
            return static_cast<int>(i);
    return -1;
}

bool Glob::isAncestorOf(const Glob* other) const
{
    for (const Glob* g = other ? other->m_parent : nullptr; g; g = g->m_parent)
        if (g == this)
            return true;
    return false;
}

Glob* Glob::root()
{
    Glob* g = this;
    while (g->m_parent)
        g = g->m_parent;
    return g;
}

Glob* Glob::addChild(Glob* c, const WidgetPosition& position)
{
    if (!c || c == this || c->isAncestorOf(this) || c->hasFlag(DyingFlag))
        return nullptr;
    if (c->m_parent)
        c->m_parent->detachChild(c);
    else if (c->hasFlag(TopLevelFlag))
        if (Screen* screen = Screen::current())
            screen->removeTopLevel(c);
    c->m_parent = this;
    if (!c->getCanvas())
        c->setCanvas(getCanvas());

    WidgetDetails details { c, position };
    if (position.kind == WidgetPosition::Below || position.kind == WidgetPosition::RightOf) {
        // Record the sibling actually used, so the placement can be read back and re-anchored later.
        if (!details.position.sibling && !m_children.empty())
            details.position.sibling = m_children.back().widget;
        if (details.position.sibling && childIndex(details.position.sibling) < 0)
            details.position.sibling = nullptr;
    } else if (details.position.sibling && childIndex(details.position.sibling) < 0) {
        details.position.sibling = nullptr;
    }
    m_children.push_back(details);
    placeChild(m_children.size() - 1);
    c->redraw();
    return c;
}

void Glob::unlinkFromParent()
{
    Glob* p = m_parent;
    if (!p)
        return;
    const int index = p->childIndex(this);
    if (index >= 0) {
        if (!p->hasFlag(DestructingFlag) && isShowing())
            requestRedrawOfArea(getScreenBox());
        p->m_children.erase(p->m_children.begin() + index);
        // Children placed against this one keep their place, now as a plain position. Only later children can
        // be placed against it, so removing the last child (the usual case) costs nothing here.
        for (size_t i = static_cast<size_t>(index); i < p->m_children.size(); ++i) {
            WidgetDetails& d = p->m_children[i];
            if (d.position.sibling == this)
                d.position = Absolute(d.widget->m_pos.x, d.widget->m_pos.y);
        }
    }
    m_parent = nullptr;
}

Glob* Glob::detachChild(Glob* c)
{
    if (!c || c->m_parent != this)
        return nullptr;
    if (Screen* screen = Screen::current())
        screen->forgetSubtree(c);
    c->unlinkFromParent();
    return c;
}

void Glob::removeChild(Glob* c)
{
    if (c && c->m_parent == this)
        destroy(c);
}

void Glob::removeAllChildren()
{
    for (size_t i = m_children.size(); i-- > 0;)
        if (i < m_children.size())
            destroy(m_children[i].widget);
}

void Glob::destroy(Glob* widget)
{
    assertUiThread();
    if (!is_good_glob_ptr(widget))
        return;
    if (dispatchDepth == 0 && !reaping) {
        delete widget;
        return;
    }
    // Someone may be running inside this widget: take it out of sight now and delete it later.
    widget->retireIdentity();
    if (Screen* screen = Screen::current()) {
        screen->forgetSubtree(widget);
        if (widget->hasFlag(TopLevelFlag))
            screen->removeTopLevel(widget);
    }
    widget->unlinkFromParent();
    doomed().push_back(widget);
}

Glob::DispatchScope::DispatchScope()
{
    ++dispatchDepth;
}

Glob::DispatchScope::~DispatchScope()
{
    if (--dispatchDepth == 0 && !doomed().empty())
        reapDoomed();
}

// ---------------------------------------------------------------------------------------------------------
// Placement

WidgetPosition Glob::Absolute(int x, int y)
{
    return { WidgetPosition::Absolute, x, y };
}

WidgetPosition Glob::UserTopLeft(int x, int y)
{
    return { WidgetPosition::TopLeft, x, y };
}

WidgetPosition Glob::BottomLeft(int x, int y)
{
    return { WidgetPosition::BottomLeft, x, y };
}

WidgetPosition Glob::Centre(int x, int y)
{
    return { WidgetPosition::Centre, x, y };
}

WidgetPosition Glob::RightCentre(int x, int y)
{
    return { WidgetPosition::RightCentre, x, y };
}

WidgetPosition Glob::Below(int gap, Glob* sibling, WidgetAlignment alignment)
{
    return { WidgetPosition::Below, 0, gap, sibling, alignment };
}

WidgetPosition Glob::RightOf(int gap, Glob* sibling, WidgetAlignment alignment)
{
    return { WidgetPosition::RightOf, gap, 0, sibling, alignment };
}

void Glob::placeChild(size_t index)
{
    WidgetDetails& d = m_children[index];
    GlobBox siblingBox;
    const GlobBox* sibling = nullptr;
    if (d.position.sibling) {
        siblingBox = d.position.sibling->getBox();
        sibling = &siblingBox;
    }
    const XY<int> at = Placement::resolve(d.position, d.widget->getSize(), getUserArea(), sibling);
    Glob* c = d.widget;
    if (at == c->m_pos)
        return;
    if (c->isShowing())
        c->redraw();
    c->m_pos = at;
    c->redraw();
}

WidgetDetails Glob::getWidget(const Glob* c) const
{
    const int index = childIndex(c);
    return index < 0 ? WidgetDetails {} : m_children[index];
}

bool Glob::setWidgetDetails(const WidgetDetails& details)
{
    const int index = childIndex(details.widget);
    if (index < 0)
        return false;
    WidgetDetails d = details;
    // A sibling must be an earlier child, or the order of placing could not settle it.
    if (d.position.sibling) {
        const int s = childIndex(d.position.sibling);
        if (s < 0 || s >= index)
            d.position.sibling = nullptr;
    }
    if (!d.position.sibling && d.position.isRelativeToSibling() && index > 0)
        d.position.sibling = m_children[index - 1].widget;
    m_children[index] = d;
    for (size_t i = static_cast<size_t>(index); i < m_children.size(); ++i)
        placeChild(i);
    return true;
}

void Glob::layoutChildren()
{
    for (size_t i = 0; i < m_children.size(); ++i)
        placeChild(i);
}

void Glob::setupRootPos(const WidgetPosition& position)
{
    Screen* screen = Screen::current();
    const GlobBox area = screen ? screen->getArea() : GlobBox(0, 0, 1920, 1080);
    const XY<int> at = Placement::resolve(position, getSize(), area, nullptr);
    setPos(at.x, at.y);
}

GlobBox Glob::getUserArea() const
{
    if (!m_ext)
        return getLocalBox();
    return Placement::inset(getLocalBox(), m_ext->insetLeft, m_ext->insetBottom, m_ext->insetRight, m_ext->insetTop);
}

void Glob::setUserAreaInsets(int left, int bottom, int right, int top)
{
    Extension& e = ext();
    e.insetLeft = left;
    e.insetBottom = bottom;
    e.insetRight = right;
    e.insetTop = top;
    layoutChildren();
}

// ---------------------------------------------------------------------------------------------------------
// Geometry

XY<int> Glob::getScreenPos() const
{
    XY<int> at = m_pos;
    for (const Glob* g = m_parent; g; g = g->m_parent)
        at += g->m_pos;
    return at;
}

GlobBox Glob::getScreenBox() const
{
    return GlobBox::fromOriginAndSize(getScreenPos(), getSize());
}

void Glob::setPos(int x, int y)
{
    if (m_parent) {
        const int index = m_parent->childIndex(this);
        if (index >= 0)
            m_parent->m_children[index].position = Absolute(x, y);
    }
    if (m_pos == XY<int>(x, y))
        return;
    redraw();
    m_pos = { x, y };
    redraw();
}

Glob* Glob::findWidgetAt(XY<int> local)
{
    if (!isVisible() || !getLocalBox().contains(local))
        return nullptr;
    for (size_t i = m_children.size(); i-- > 0;) {
        Glob* c = m_children[i].widget;
        if (Glob* hit = c->findWidgetAt(local - c->m_pos))
            return hit;
    }
    return this;
}

// ---------------------------------------------------------------------------------------------------------
// State

bool Glob::isShowing() const
{
    const Glob* g = this;
    for (; g->m_parent; g = g->m_parent)
        if (!g->isVisible())
            return false;
    return g->isVisible() && g->hasFlag(TopLevelFlag);
}

bool Glob::isEnabledInTree() const
{
    for (const Glob* g = this; g; g = g->m_parent)
        if (!g->isActive())
            return false;
    return true;
}

void Glob::setContextString(UIString title, UIString text)
{
    if (title.empty() && text.empty() && !m_ext)
        return;
    ext().contextTitle = std::move(title);
    m_ext->contextText = std::move(text);
}

UIString Glob::getContextTitle() const
{
    return m_ext ? m_ext->contextTitle : UIString();
}

UIString Glob::getContextText() const
{
    return m_ext ? m_ext->contextText : UIString();
}

void Glob::setMouseCursor(int cursorId)
{
    if (cursorId < 0 && !m_ext)
        return;
    ext().cursor = cursorId;
}

bool Glob::hasFocus() const
{
    Screen* screen = Screen::current();
    return screen && screen->getFocus() == this;
}

bool Glob::takeFocus()
{
    Screen* screen = Screen::current();
    return screen && screen->setFocus(this);
}

Screen* Glob::getScreen() const
{
    return Screen::current();
}

// ---------------------------------------------------------------------------------------------------------
// Messages

bool Glob::deliver(Glob* target, const LightweightString<char>& msg)
{
    assertUiThread();
    const IdStamp self = m_stamp;
    if (target && is_good_glob_ptr(target) && !target->hasFlag(DyingFlag)) {
        DispatchScope scope;
        target->react(Event::makeMessage(msg, this));
    }
    // `this` may be gone by now; only the saved stamp is looked at.
    return Cv::StampTable::global().isLive(self);
}

bool Glob::sendMsg(Glob* target, const char* msg)
{
    return deliver(target, LightweightString<char>(msg));
}

bool Glob::sendMsg(Glob* target, const LightweightString<char>& msg)
{
    return deliver(target, msg);
}

bool Glob::callMsg(const char* msg)
{
    return deliver(owner(), LightweightString<char>(msg));
}

bool Glob::callMsg(const LightweightString<char>& msg)
{
    return deliver(owner(), msg);
}

// ---------------------------------------------------------------------------------------------------------
// Drawing

void Glob::redraw()
{
    if (isShowing())
        requestRedrawOfArea(getScreenBox());
}

void Glob::redraw(const GlobBox& localArea)
{
    if (isShowing())
        requestRedrawOfArea(localArea.intersection(getLocalBox()).translated(getScreenPos()));
}

void Glob::requestRedrawOfArea(const GlobBox& screenArea)
{
    if (screenArea.empty())
        return;
    if (Screen* screen = Screen::current())
        screen->invalidate(screenArea);
}

Pictor::Painter& Glob::painter() const
{
    return Screen::currentPainter();
}

// ---------------------------------------------------------------------------------------------------------
// Default behaviour

bool Glob::react(const Event& event)
{
    if (event.type == Event::Message)
        return handleMessageEvent(event.message, event.sender);
    if (event.isMouse())
        return handleMouseEvent(event);
    return false;
}

bool Glob::handleMessageEvent(LightweightString<char>, Glob*)
{
    return false;
}

bool Glob::handleMouseEvent(const Event&)
{
    return false;
}

void Glob::draw()
{
    drawBackground();
    drawBorder();
    drawText();
}

void Glob::drawBackground()
{
    painter().fillRect(getLocalBox(), m_palette.window());
}

void Glob::drawBorder() { }

void Glob::drawText() { }

void Glob::resize(double width, double height)
{
    const uint16_t w = clampSize(width);
    const uint16_t h = clampSize(height);
    if (w == m_width && h == m_height)
        return;
    redraw();
    m_width = w;
    m_height = h;
    reshape();
    redraw();
    // Siblings placed against this one follow its new size.
    if (m_parent) {
        const int index = m_parent->childIndex(this);
        for (size_t i = static_cast<size_t>(index) + 1; index >= 0 && i < m_parent->m_children.size(); ++i)
            if (m_parent->m_children[i].position.sibling)
                m_parent->placeChild(i);
    }
}

void Glob::reshape()
{
    layoutChildren();
}

void Glob::setPalette(const Palette& palette)
{
    if (palette == m_palette)
        return;
    m_palette = palette;
    redraw();
}

void Glob::setActive(bool active, eRedrawFlag redrawFlag)
{
    if (active == isActive())
        return;
    setFlag(ActiveFlag, active);
    if (!active)
        if (Screen* screen = Screen::current())
            screen->forgetSubtree(this);
    if (redrawFlag == Redraw)
        redraw();
}

void Glob::setVisible(bool visible)
{
    if (visible == isVisible())
        return;
    if (!visible) {
        redraw();
        if (Screen* screen = Screen::current())
            screen->forgetSubtree(this);
    }
    setFlag(VisibleFlag, visible);
    if (visible)
        redraw();
}

int Glob::contextCursor(const XY<int>&)
{
    return m_ext ? m_ext->cursor : -1;
}

void Glob::getTabOrderables(std::vector<TabOrderable*>& out)
{
    if (auto* self = dynamic_cast<TabOrderable*>(this)) {
        out.push_back(self);
        return;
    }
    for (const WidgetDetails& d : m_children)
        d.widget->getTabOrderables(out);
}
