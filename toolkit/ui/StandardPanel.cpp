#include "toolkit/ui/StandardPanel.h"

#include "toolkit/gfx/Painter.h"
#include "toolkit/ui/GlobManager.h"
#include "toolkit/ui/MenuGlob.h"
#include "toolkit/ui/Screen.h"
#include "toolkit/ui/StylePainter.h"
#include "toolkit/ui/UifStd.h"

#include <algorithm>
#include <array>

namespace {

int borderWidthFor(StandardPanel::BorderStyle style)
{
    switch (style) {
    case StandardPanel::NoBorder: return 0;
    case StandardPanel::ThinBorder: return 1;
    case StandardPanel::RaisedBorder:
    case StandardPanel::SunkenBorder: return UifStd::getBorder();
    }
    return 0;
}

int titleHeight()
{
    return UifStd::getWindowArrangement().titleBarHeight;
}

// Title-bar buttons are squares a little smaller than the bar, with this much space around them.
constexpr int buttonMargin = 2;

} // namespace

StandardPanel::InitArgs StandardPanel::InitArgs::fromInfo(const GlobCreationInfo& info)
{
    InitArgs args(info);
    LightweightString<char> title;
    if (info.config.in("title", title) == 0)
        args.title = UIString(fromUTF8(title.view()));
    return args;
}

namespace {

// Panels can be made by type name (a factory wrapper, a layout read from a file).
const bool registeredByName = [] {
    GlobManager::registerType("StandardPanel", [](const GlobCreationInfo& info) -> Glob* {
        return new StandardPanel(StandardPanel::InitArgs::fromInfo(info));
    });
    return true;
}();

} // namespace

StandardPanel::StandardPanel(const InitArgs& args)
    : Glob(args), m_title(args.title), m_widgets(args.standardWidgets), m_border(args.border)
{
    setMovable(args.movable);
    setResizable(args.resizable);
    updateInsets();
}

StandardPanel::StandardPanel(uint16_t width, uint16_t height, const Palette& palette, Canvas* canvas)
    : Glob(width, height, palette, canvas)
{
    setMovable(true);
    updateInsets();
}

StandardPanel& StandardPanel::operator=(const StandardPanel& other)
{
    if (this != &other) {
        Glob::operator=(other);
        m_title = other.m_title;
        m_menu = other.m_menu;
        m_widgets = other.m_widgets;
        m_disabledWidgets = other.m_disabledWidgets;
        m_border = other.m_border;
        updateInsets();
    }
    return *this;
}

StandardPanel::OwnedMenu::OwnedMenu(const OwnedMenu& other)
    : m_menu(other.m_menu ? new MenuGlob(*other.m_menu) : nullptr)
{
}

StandardPanel::OwnedMenu& StandardPanel::OwnedMenu::operator=(const OwnedMenu& other)
{
    if (other.m_menu && m_menu)
        *m_menu = *other.m_menu;
    else if (other.m_menu)
        m_menu = new MenuGlob(*other.m_menu);
    return *this;
}

StandardPanel::OwnedMenu::~OwnedMenu()
{
    Glob::destroy(m_menu);
}

StandardPanel::~StandardPanel()
{
    // The open pop-up's callbacks may refer to this panel: it must not outlive it.
    if (Glob* open = m_openMenu->get())
        Glob::destroy(open);
}

LightweightString<char> StandardPanel::idstring() const
{
    return "StandardPanel";
}

// ---------------------------------------------------------------------------------------------------------
// Title, buttons, border

void StandardPanel::setTitle(const UIString& title)
{
    const bool hadBar = hasTitleBar();
    m_title = title;
    if (hadBar != hasTitleBar())
        updateInsets();
    redraw(getTitleBarBox());
}

void StandardPanel::addStandardWidgets(unsigned widgets)
{
    const bool hadBar = hasTitleBar();
    m_widgets |= widgets;
    if (hadBar != hasTitleBar())
        updateInsets();
    redraw(getTitleBarBox());
}

void StandardPanel::removeStandardWidgets(unsigned widgets)
{
    redraw(getTitleBarBox());
    const bool hadBar = hasTitleBar();
    m_widgets &= ~widgets;
    if (hadBar != hasTitleBar())
        updateInsets();
}

void StandardPanel::setBorderStyle(BorderStyle style)
{
    if (style == m_border)
        return;
    m_border = style;
    updateInsets();
    redraw();
}

int StandardPanel::borderWidth() const
{
    return borderWidthFor(m_border);
}

int StandardPanel::titleBarHeight() const
{
    return hasTitleBar() ? titleHeight() : 0;
}

void StandardPanel::updateInsets()
{
    const int b = borderWidth();
    setUserAreaInsets(b, b, b, b + titleBarHeight());
    // Subclasses with their own layout (a scrolling viewport) follow the new user area.
    reshape();
}

// ---------------------------------------------------------------------------------------------------------
// Geometry

XY<int> StandardPanel::calcPanelSize(int userWidth, int userHeight) const
{
    const int b = borderWidth();
    return {std::max(0, userWidth) + 2 * b, std::max(0, userHeight) + 2 * b + titleBarHeight()};
}

XY<int> StandardPanel::calcPanelSize(int userWidth, int userHeight, const InitArgs& args)
{
    const int b = borderWidthFor(args.border);
    const bool bar = !args.title.empty() || args.standardWidgets != NoWidgets;
    return {std::max(0, userWidth) + 2 * b, std::max(0, userHeight) + 2 * b + (bar ? titleHeight() : 0)};
}

XY<int> StandardPanel::getMinSize() const
{
    const int buttons = 3 * (titleHeight() + buttonMargin);
    return calcPanelSize(buttons + 4 * UifStd::getButtonHeight(), UifStd::getButtonHeight());
}

GlobBox StandardPanel::getTitleBarBox() const
{
    if (!hasTitleBar())
        return {};
    const int b = borderWidth();
    const int top = getHeight() - b;
    return GlobBox(b, top - titleHeight(), std::max(b, getWidth() - b), top);
}

GlobBox StandardPanel::getStandardWidgetBox(StandardWidgets widget) const
{
    if (!(m_widgets & widget) || !hasTitleBar())
        return {};
    const GlobBox bar = getTitleBarBox();
    const int side = bar.height() - 2 * buttonMargin;
    const int bottom = bar.bottom() + buttonMargin;
    auto fromRight = [&](int slot) {
        const int right = bar.right() - buttonMargin - slot * (side + buttonMargin);
        return GlobBox(right - side, bottom, right, bottom + side);
    };
    switch (widget) {
    case CloseButton: return fromRight(0);
    case DoItButton: return fromRight((m_widgets & CloseButton) ? 1 : 0);
    case MenuButton: return GlobBox(bar.left() + buttonMargin, bottom, bar.left() + buttonMargin + side, bottom + side);
    default: return {};
    }
}

StandardPanel::StandardWidgets StandardPanel::buttonAt(XY<int> local) const
{
    for (StandardWidgets w : {CloseButton, DoItButton, MenuButton})
        if (getStandardWidgetBox(w).contains(local))
            return w;
    return NoWidgets;
}

unsigned StandardPanel::edgesAt(XY<int> local) const
{
    if (!isResizable() || !getLocalBox().contains(local))
        return 0;
    const int grip = std::max(resizeGrip, borderWidth());
    unsigned edges = 0;
    if (local.x < grip)
        edges |= EdgeLeft;
    else if (local.x >= getWidth() - grip)
        edges |= EdgeRight;
    if (local.y < grip)
        edges |= EdgeBottom;
    else if (local.y >= getHeight() - std::min(grip, 3)) // a thin top strip: the title bar is for moving
        edges |= EdgeTop;
    return edges;
}

// ---------------------------------------------------------------------------------------------------------
// Menu

MenuGlob* StandardPanel::getMenu()
{
    if (!m_menu.get()) {
        MenuGlob::InitArgs args;
        args.palette = getPalette();
        m_menu.adopt(new MenuGlob(args));
        addStandardWidgets(MenuButton);
    }
    return m_menu.get();
}

MenuGlob* StandardPanel::getOpenMenu() const
{
    return static_cast<MenuGlob*>(m_openMenu->get());
}

MenuGlob* StandardPanel::openMenu()
{
    if (MenuGlob* open = getOpenMenu())
        return open;
    if (!m_menu.get() || m_menu.get()->numItems() == 0)
        return nullptr;
    const GlobBox button = getStandardWidgetBox(MenuButton);
    const XY<int> screen = getScreenPos();
    const XY<int> topLeft = button.empty() ? XY<int>{screen.x, screen.y + getHeight()}
                                           : XY<int>{screen.x + button.left(), screen.y + button.bottom()};
    MenuGlob* popUp = m_menu.get()->popUp(topLeft, this);
    m_openMenu = GlobWatch(popUp);
    return popUp;
}

// ---------------------------------------------------------------------------------------------------------
// Closing and committing

void StandardPanel::close()
{
    Glob::destroy(this);
}

bool StandardPanel::doIt()
{
    return sendMsg(this, doItMsg);
}

bool StandardPanel::handleMessageEvent(LightweightString<char> name, Glob* sender)
{
    if (name == doItMsg) {
        // Whatever commits the panel (its button, Return, a row that finishes the entry) reaches the owner.
        Glob* target = owner();
        if (target && target != this)
            callMsg(doItMsg);
        return true;
    }
    return Glob::handleMessageEvent(name, sender);
}

void StandardPanel::setStandardWidgetEnabled(StandardWidgets widget, bool enabled)
{
    const unsigned disabled = enabled ? (m_disabledWidgets & ~unsigned(widget)) : (m_disabledWidgets | widget);
    if (disabled == m_disabledWidgets)
        return;
    m_disabledWidgets = disabled;
    redraw(getStandardWidgetBox(widget));
}

void StandardPanel::pressButton(StandardWidgets button)
{
    if (!isStandardWidgetEnabled(button))
        return;
    switch (button) {
    case CloseButton: close(); break;
    case DoItButton: doIt(); break;
    case MenuButton: openMenu(); break;
    default: break;
    }
}

// ---------------------------------------------------------------------------------------------------------
// Input

bool StandardPanel::react(const Event& event)
{
    if (event.isKey() && !event.hasAnyModifier()) {
        if (event.key == Event::KeyEscape && hasStandardWidget(CloseButton) && isStandardWidgetEnabled(CloseButton)) {
            close();
            return true;
        }
        if (event.key == Event::KeyReturn && hasStandardWidget(DoItButton) && isStandardWidgetEnabled(DoItButton)) {
            doIt();
            return true;
        }
    }
    return Glob::react(event);
}

bool StandardPanel::handleMouseEvent(const Event& event)
{
    switch (event.type) {
    case Event::MouseDown: {
        if (event.button != Event::LeftButton)
            return false;
        if (Screen* screen = getScreen()) {
            Glob* focus = screen->getFocus();
            if (!focus || (focus != this && !isAncestorOf(focus)))
                takeFocus();
        }
        m_drag->startScreen = event.screenPos;
        m_drag->startBox = getBox();
        if (const unsigned edges = edgesAt(event.pos)) {
            m_drag->kind = Drag::Resize;
            m_drag->edges = static_cast<uint8_t>(edges);
        } else if (const StandardWidgets button = buttonAt(event.pos)) {
            if (button == MenuButton) {
                openMenu();
            } else {
                m_drag->kind = Drag::Button;
                m_drag->pressed = button;
                m_drag->pressedInside = true;
                redraw(getStandardWidgetBox(button));
            }
        } else if (isMovable() && getTitleBarBox().contains(event.pos)) {
            m_drag->kind = Drag::Move;
        }
        return true;
    }
    case Event::MouseDrag:
        if (m_drag->kind == Drag::Move || m_drag->kind == Drag::Resize) {
            dragTo(event.screenPos);
        } else if (m_drag->kind == Drag::Button) {
            const bool inside = buttonAt(event.pos) == m_drag->pressed;
            if (inside != m_drag->pressedInside) {
                m_drag->pressedInside = inside;
                redraw(getStandardWidgetBox(m_drag->pressed));
            }
        }
        return m_drag->kind != Drag::None;
    case Event::MouseUp: {
        if (event.button != Event::LeftButton)
            return m_drag->kind != Drag::None;
        const Drag drag = m_drag->kind;
        const StandardWidgets pressed = m_drag->pressed;
        m_drag->kind = Drag::None;
        m_drag->pressed = NoWidgets;
        if (drag == Drag::Button) {
            redraw(getStandardWidgetBox(pressed));
            if (buttonAt(event.pos) == pressed)
                pressButton(pressed);
        }
        return true;
    }
    default: return false;
    }
}

void StandardPanel::dragTo(XY<int> screenPos)
{
    const int dx = screenPos.x - m_drag->startScreen.x;
    const int dy = screenPos.y - m_drag->startScreen.y;
    const GlobBox start = m_drag->startBox;
    if (m_drag->kind == Drag::Move) {
        XY<int> to{start.left() + dx, start.bottom() + dy};
        // A top-level panel stays on the screen, so its title bar can always be grabbed again.
        if (!parent())
            to = GlobManager::getSafePosForGlob(to, getSize());
        setPos(to.x, to.y);
        return;
    }
    const XY<int> minSize = getMinSize();
    int left = start.left();
    int right = start.right();
    int bottom = start.bottom();
    int top = start.top();
    // The edge opposite the one dragged stays where it was; the dragged one stops at the minimum size.
    if (m_drag->edges & EdgeLeft)
        left = std::min(start.left() + dx, right - minSize.x);
    if (m_drag->edges & EdgeRight)
        right = std::max(start.right() + dx, left + minSize.x);
    if (m_drag->edges & EdgeBottom)
        bottom = std::min(start.bottom() + dy, top - minSize.y);
    if (m_drag->edges & EdgeTop)
        top = std::max(start.top() + dy, bottom + minSize.y);
    right = std::min(right, left + 65535);
    top = std::min(top, bottom + 65535);
    if (left != getX() || bottom != getY())
        setPos(left, bottom);
    resize(right - left, top - bottom);
}

int StandardPanel::contextCursor(const XY<int>& local)
{
    const unsigned edges = edgesAt(local);
    const bool horizontal = edges & (EdgeLeft | EdgeRight);
    const bool vertical = edges & (EdgeBottom | EdgeTop);
    if (horizontal && vertical)
        return CursorResizeDiagonal;
    if (horizontal)
        return CursorResizeHorizontal;
    if (vertical)
        return CursorResizeVertical;
    if (buttonAt(local) != NoWidgets)
        return CursorHand;
    return Glob::contextCursor(local);
}

// ---------------------------------------------------------------------------------------------------------
// Drawing

void StandardPanel::drawBackground()
{
    painter().fillRect(getLocalBox(), getPalette().window());
}

void StandardPanel::drawBorder()
{
    Pictor::Painter& p = painter();
    const GlobBox box = getLocalBox();
    switch (m_border) {
    case NoBorder: break;
    case ThinBorder: p.strokeRect(box, getPalette().border()); break;
    case RaisedBorder:
    case SunkenBorder:
        p.strokeRect(box, getPalette().border());
        StylePainter::drawBevel(p, box.expanded(-1), getPalette(), m_border == SunkenBorder);
        break;
    }
}

void StandardPanel::drawText()
{
    if (!hasTitleBar())
        return;
    Pictor::Painter& p = painter();
    const GlobBox bar = getTitleBarBox();
    if (!p.isVisible(bar))
        return;
    const Palette& pal = getPalette();
    p.fillRect(bar, pal.titleBar());
    int textLeft = bar.left() + buttonMargin;
    int textRight = bar.right() - buttonMargin;
    for (StandardWidgets w : {CloseButton, DoItButton, MenuButton}) {
        const GlobBox b = getStandardWidgetBox(w);
        if (b.empty())
            continue;
        if (w == MenuButton)
            textLeft = b.right() + buttonMargin;
        else
            textRight = std::min(textRight, b.left() - buttonMargin);
        drawTitleButton(w);
    }
    StylePainter::drawTitleBar(p, GlobBox(textLeft, bar.bottom(), std::max(textLeft, textRight), bar.top()), pal,
                               m_title.getString().view(), isEnabledInTree());
    p.drawLine(bar.left(), bar.bottom(), bar.right() - 1, bar.bottom(), pal.border());
}

void StandardPanel::drawTitleButton(StandardWidgets button)
{
    Pictor::Painter& p = painter();
    const GlobBox box = getStandardWidgetBox(button);
    const Palette& pal = getPalette();
    const bool down = m_drag->kind == Drag::Button && m_drag->pressed == button && m_drag->pressedInside;
    const bool enabled = isStandardWidgetEnabled(button);
    StylePainter::drawButton(p, box, pal,
                             !enabled ? StylePainter::Disabled
                             : down   ? StylePainter::Pressed
                                      : StylePainter::Normal);
    const GlobBox glyph = box.expanded(-5);
    const Colour ink = enabled ? pal.titleText() : pal.disabledText();
    switch (button) {
    case CloseButton:
        p.drawLine(glyph.left(), glyph.bottom(), glyph.right(), glyph.top(), ink, 1.5);
        p.drawLine(glyph.left(), glyph.top(), glyph.right(), glyph.bottom(), ink, 1.5);
        break;
    case DoItButton: StylePainter::drawCheckMark(p, glyph, ink); break;
    case MenuButton:
        for (int i = 0; i < 3; ++i) {
            const double y = glyph.bottom() + 1 + i * (glyph.height() - 2) / 2.0;
            p.drawLine(glyph.left(), y, glyph.right(), y, ink, 1.5);
        }
        break;
    default: break;
    }
}
