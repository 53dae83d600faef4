#include "toolkit/widgets/Button.h"

#include "toolkit/support/SettingsReader.h"
#include "toolkit/gfx/Font.h"
#include "toolkit/gfx/Painter.h"
#include "toolkit/ui/GlobManager.h"
#include "toolkit/ui/UifStd.h"

#include <algorithm>

// A list makes one button per line: what a button adds to a Glob is watched like the Glob itself.
static_assert(sizeof(Button) <= sizeof(Glob) + 48, "Button grew: move rarely used state into Button::Extras");

namespace {

// The round indicator of a radio button: its diameter for a button of the given height.
int indicatorSize(int height)
{
    return std::clamp(height - 8, 8, 14);
}

const bool registeredByName = GlobManager::registerWidget<Button>("Button");

} // namespace

Button::InitArgs::InitArgs(const GlobCreationInfo& info) : GlobCreationInfo(info)
{
    label = SettingsReader(info.config).text("label").value_or(label.getString());
}

Button::Button(const InitArgs& args) : Glob(args)
{
    initFrom(args);
}

Button::Button(uint16_t width, uint16_t height, const Palette& palette, Canvas* canvas)
    : Glob(width, height, palette, canvas)
{
    if (height == 0)
        resize(width, UifStd::getButtonHeight());
}

Button::~Button() = default;

void Button::initFrom(const InitArgs& args)
{
    m_label = args.label;
    setStyle(args.style);
    setLatching(args.latching);
    if (!args.message.empty())
        setMessage(args.message);
    const uint16_t w = args.width ? args.width : calcWidth(args.label, args.style);
    const uint16_t h = args.height ? args.height : static_cast<uint16_t>(UifStd::getButtonHeight());
    if (w != getWidth() || h != getHeight())
        resize(w, h);
}

LightweightString<char> Button::idstring() const
{
    return "Button";
}

// ---------------------------------------------------------------------------------------------------------
// Label and size

void Button::setString(const UIString& label)
{
    if (label == m_label)
        return;
    m_label = label;
    redraw();
}

void Button::setStringAuto(const UIString& label)
{
    setString(label);
    resize(calcWidth(label, getStyle()), getHeight() ? getHeight() : UifStd::getButtonHeight());
}

uint16_t Button::calcWidth(const UIString& label, Style style)
{
    const int text = UifStd::defaultFont().pixelWidth(label.getString().view());
    const int gap = UifStd::getWidgetGap();
    int width = 0;
    if (style == RadioStyle)
        width = gap + indicatorSize(UifStd::getButtonHeight()) + gap + text + gap;
    else
        width = text + 2 * (gap + UifStd::getIndentWidth() / 2);
    return static_cast<uint16_t>(std::clamp(width, 1, 65535));
}

void Button::setStyle(Style style)
{
    m_bits = static_cast<uint16_t>((m_bits & ~(3u << StyleShift)) | ((static_cast<unsigned>(style) & 3u) << StyleShift));
    redraw();
}

// ---------------------------------------------------------------------------------------------------------
// What a press does

void Button::setCallback(WidgetCallback callback)
{
    if (!callback && !m_extras)
        return;
    m_extras.made().callback = std::move(callback);
}

void Button::setMessage(const LightweightString<char>& message)
{
    if (message.empty() && !m_extras)
        return;
    m_extras.made().message = message;
}

LightweightString<char> Button::getMessage() const
{
    return m_extras && !m_extras->message.empty() ? m_extras->message : LightweightString<char>(clickMsg);
}

bool Button::activate()
{
    GlobWatch self(this);
    iButtonGroup* group = getGroup();
    if (group) {
        group->buttonActivated(*this);
        if (!self)
            return false;
    } else if (isLatching()) {
        setDown(!isDown());
    }
    if (m_extras && m_extras->callback) {
        // A copy: the callback may replace itself, or destroy this button.
        const WidgetCallback callback = m_extras->callback;
        callback();
        return self.alive();
    }
    return callMsg(getMessage());
}

// ---------------------------------------------------------------------------------------------------------
// State

void Button::setDown(bool down, eRedrawFlag redrawFlag)
{
    setShownBit(DownBit, down, redrawFlag);
}

void Button::setHeldDown(bool held, eRedrawFlag redrawFlag)
{
    setShownBit(HeldDownBit, held, redrawFlag);
}

void Button::setShownBit(uint16_t bit, bool on, eRedrawFlag redrawFlag)
{
    if (on == hasBit(bit))
        return;
    setBit(bit, on);
    if (redrawFlag == Redraw)
        redraw();
}

void Button::setDownCols(const Colour& back, const Colour& text)
{
    Extras& e = m_extras.made();
    e.downBack = back;
    e.downText = text;
    if (isDown())
        redraw();
}

Colour Button::getBackCol() const
{
    const Palette& pal = getPalette();
    if (!isEnabledInTree())
        return pal.window(2);
    if (isDown() || isPressedNow())
        return m_extras && m_extras->downBack ? *m_extras->downBack : pal.highlight();
    return isHovered() ? pal.window(4) : pal.window(3);
}

Colour Button::getTextCol() const
{
    const Palette& pal = getPalette();
    if (!isEnabledInTree())
        return pal.disabledText();
    if (getStyle() == PushStyle && (isDown() || isPressedNow()))
        return m_extras && m_extras->downText ? *m_extras->downText : pal.highlightText();
    return pal.text();
}

void Button::setGroup(iButtonGroup* group)
{
    if (!group && !m_extras)
        return;
    m_extras.made().group = group;
}

iButtonGroup* Button::getGroup() const
{
    return m_extras ? *m_extras->group : nullptr;
}

bool Button::acceptsFocus() const
{
    if (hasBit(NoFocusBit))
        return false;
    const iButtonGroup* group = getGroup();
    return !group || group->memberAcceptsFocus(*this);
}

StylePainter::ButtonState Button::visualState() const
{
    if (!isEnabledInTree())
        return StylePainter::Disabled;
    if (isDown() || isPressedNow())
        return StylePainter::Pressed;
    return isHovered() ? StylePainter::Hovered : StylePainter::Normal;
}

GlobBox Button::contentBox() const
{
    return getLocalBox().expanded(-2);
}

void Button::setActive(bool active, eRedrawFlag redrawFlag)
{
    if (!active)
        setBit(ArmedBit | HoverBit, false);
    Glob::setActive(active, redrawFlag);
}

// ---------------------------------------------------------------------------------------------------------
// Input

bool Button::react(const Event& event)
{
    if (event.isMouse())
        return handleMouse(event);
    switch (event.type) {
    case Event::FocusGained:
    case Event::FocusLost:
        redraw();
        return true;
    case Event::Key:
        if (!isEnabledInTree() || event.hasAnyModifier())
            return false;
        if (event.key == ' ' || event.key == Event::KeyReturn) {
            activate();
            return true;
        }
        if (iButtonGroup* group = getGroup())
            return group->buttonKey(*this, event.key);
        return false;
    default:
        return Glob::react(event);
    }
}

bool Button::handleMouse(const Event& event)
{
    switch (event.type) {
    case Event::MouseEnter:
    case Event::MouseLeave:
        if (isHovered() != (event.type == Event::MouseEnter)) {
            setBit(HoverBit, event.type == Event::MouseEnter);
            redraw();
        }
        return true;
    case Event::MouseDown:
        if (event.button != Event::LeftButton || ignoresMouseClicks() || !isEnabledInTree())
            return false;
        setBit(ArmedBit | InsideBit, true);
        redraw();
        return true;
    case Event::MouseDrag:
        if (hasBit(ArmedBit)) {
            const bool inside = getLocalBox().contains(event.pos);
            if (inside != hasBit(InsideBit)) {
                setBit(InsideBit, inside);
                redraw();
            }
            return true;
        }
        return false;
    case Event::MouseUp: {
        if (event.button != Event::LeftButton || !hasBit(ArmedBit))
            return false;
        const bool inside = getLocalBox().contains(event.pos);
        setBit(ArmedBit | InsideBit, false);
        setBit(HoverBit, inside);
        redraw();
        if (inside)
            activate();
        return true;
    }
    default:
        return Glob::handleMouseEvent(event);
    }
}

// ---------------------------------------------------------------------------------------------------------
// Drawing

void Button::drawBackground()
{
    Pictor::Painter& p = painter();
    const GlobBox box = getLocalBox();
    const Palette& pal = getPalette();
    const StylePainter::ButtonState state = visualState();
    if (getStyle() == RadioStyle) {
        p.fillRect(box, pal.window(state == StylePainter::Hovered ? 3 : 2));
        const int d = indicatorSize(getHeight());
        const double cx = UifStd::getWidgetGap() + d / 2.0;
        const double cy = getHeight() / 2.0;
        Pictor::EllipseDescription ring;
        ring.centre = {cx, cy};
        ring.radii = {d / 2.0 - 0.5, d / 2.0 - 0.5};
        ring.fill = pal.entry();
        ring.outline = state == StylePainter::Disabled ? pal.window(3)
                       : state == StylePainter::Hovered ? pal.highlight()
                                                        : pal.window(5);
        p.drawEllipse(ring);
        if (isDown() || isPressedNow()) {
            Pictor::EllipseDescription dot;
            dot.centre = {cx, cy};
            dot.radii = {d / 2.0 - 3.5, d / 2.0 - 3.5};
            dot.fill = state == StylePainter::Disabled ? pal.disabledText() : pal.highlight();
            p.drawEllipse(dot);
        }
        if (hasFocus())
            StylePainter::drawFocusRing(p, box, pal);
        return;
    }
    if (state == StylePainter::Pressed && m_extras && m_extras->downBack) {
        p.fillRect(box, *m_extras->downBack);
        p.strokeRect(box, pal.border());
        if (hasFocus())
            StylePainter::drawFocusRing(p, box, pal);
        return;
    }
    StylePainter::drawButton(p, box, pal, state, hasFocus());
}

void Button::drawBorder() {}

void Button::drawText()
{
    const LightweightString<wchar_t> text = m_label.getString();
    if (text.empty())
        return;
    const GlobBox box = getLocalBox();
    const int gap = UifStd::getWidgetGap();
    if (getStyle() == RadioStyle) {
        const int left = gap + indicatorSize(getHeight()) + gap;
        painter().drawTextInBox(text.view(), UifStd::defaultFont(), getTextCol(),
                                Pictor::PaintRect(left, box.bottom(), box.right() - gap, box.top()),
                                Pictor::TextAlign::Left, Pictor::textEllipsis);
        return;
    }
    painter().drawTextInBox(text.view(), UifStd::defaultFont(), getTextCol(),
                            Pictor::PaintRect(box.left() + gap, box.bottom(), box.right() - gap, box.top()),
                            Pictor::TextAlign::Centre, Pictor::textEllipsis);
}
