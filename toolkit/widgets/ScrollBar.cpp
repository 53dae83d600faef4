#include "toolkit/widgets/ScrollBar.h"

#include "toolkit/gfx/Painter.h"
#include "toolkit/ui/GlobManager.h"
#include "toolkit/ui/StylePainter.h"
#include "toolkit/ui/UifStd.h"

#include <algorithm>
#include <array>
#include <cmath>

const char* const ScrollBar::thumbMovedMsg = "scrollbar_thumb_moved";
const char* const ScrollBar::upButtonPressedMsg = "scrollbar_up_pressed";
const char* const ScrollBar::downButtonPressedMsg = "scrollbar_down_pressed";

namespace {

// A thumb is never thinner than this, so it can still be gripped when the view is a sliver of the whole.
constexpr int minThumb = 8;

const bool registeredByName = [] {
    GlobManager::registerType("ScrollBar", [](const GlobCreationInfo& info) -> Glob* {
        return new ScrollBar(ScrollBar::InitArgs(info));
    });
    return true;
}();

double unit(double v)
{
    return std::isfinite(v) ? std::clamp(v, 0.0, 1.0) : 1.0;
}

} // namespace

ScrollBar::ScrollBar(const InitArgs& args) : Glob(args)
{
    if (getWidth() == 0)
        resize(UifStd::getScrollBarWidth(), getHeight());
    setThumbSize(args.thumbSize);
    setThumbPos(args.thumbPos);
}

ScrollBar::ScrollBar(uint16_t width, uint16_t height, const Palette& palette, Canvas* canvas)
    : Glob(width ? width : static_cast<uint16_t>(UifStd::getScrollBarWidth()), height, palette, canvas)
{
}

ScrollBar::ScrollBar(const ScrollBar& other)
    : EventHandler(other)
    , Cv::InternalRefCount(other)
    , iVirtual(other)
    , iObject(other)
    , Glob(other)
    , m_pos(other.m_pos)
    , m_size(other.m_size)
{
}

ScrollBar::ScrollBar(ScrollBar&& other) : ScrollBar(static_cast<const ScrollBar&>(other)) {}

ScrollBar& ScrollBar::operator=(const ScrollBar& other)
{
    if (this == &other)
        return *this;
    Glob::operator=(other);
    m_pos = other.m_pos;
    m_size = other.m_size;
    return *this;
}

ScrollBar& ScrollBar::operator=(ScrollBar&& other)
{
    return *this = static_cast<const ScrollBar&>(other);
}

ScrollBar::~ScrollBar() = default;

LightweightString<char> ScrollBar::idstring() const
{
    return "ScrollBar";
}

bool ScrollBar::isScrollBarMsg(const LightweightString<char>& name)
{
    return name == thumbMovedMsg || name == upButtonPressedMsg || name == downButtonPressedMsg;
}

// ---------------------------------------------------------------------------------------------------------
// Thumb

void ScrollBar::setThumbPos(double position)
{
    if (std::isnan(position))
        return;
    const double clamped = std::clamp(position, 0.0, std::max(0.0, 1.0 - m_size));
    if (clamped == m_pos)
        return;
    m_pos = clamped;
    redraw();
}

void ScrollBar::setThumbSize(double size)
{
    const double s = std::isnan(size) ? 1.0 : unit(size);
    if (s != m_size) {
        m_size = s;
        redraw();
    }
    setThumbPos(m_pos);
}

bool ScrollBar::userMove(double position)
{
    const double before = m_pos;
    setThumbPos(position);
    return m_pos == before ? true : callMsg(thumbMovedMsg);
}

// ---------------------------------------------------------------------------------------------------------
// Geometry

GlobBox ScrollBar::upButtonBox() const
{
    const int side = std::min<int>(getWidth(), getHeight() / 2);
    return GlobBox(0, getHeight() - side, getWidth(), getHeight());
}

GlobBox ScrollBar::downButtonBox() const
{
    const int side = std::min<int>(getWidth(), getHeight() / 2);
    return GlobBox(0, 0, getWidth(), side);
}

GlobBox ScrollBar::trackBox() const
{
    return GlobBox(0, downButtonBox().top(), getWidth(), upButtonBox().bottom());
}

GlobBox ScrollBar::thumbBox() const
{
    const GlobBox track = trackBox();
    const int h = track.height();
    if (h <= 0)
        return {};
    const int thumbH = std::min(h, std::max(minThumb, static_cast<int>(std::lround(m_size * h))));
    // The thumb's travel is what is left of the track, so the top end of 0..1-size reaches the bottom.
    const double maxPos = 1.0 - m_size;
    const double f = maxPos > 0.0 ? m_pos / maxPos : 0.0;
    const int top = track.top() - static_cast<int>(std::lround(f * (h - thumbH)));
    return GlobBox(track.left(), top - thumbH, track.right(), top);
}

double ScrollBar::positionForThumbTop(int top) const
{
    const GlobBox track = trackBox();
    const int travel = track.height() - thumbBox().height();
    if (travel <= 0)
        return 0.0;
    const double f = std::clamp(static_cast<double>(track.top() - top) / travel, 0.0, 1.0);
    return f * (1.0 - m_size);
}

// ---------------------------------------------------------------------------------------------------------
// Input

bool ScrollBar::react(const Event& event)
{
    switch (event.type) {
    case Event::MouseDown: {
        if (event.button != Event::LeftButton || !isEnabledInTree())
            return false;
        if (upButtonBox().contains(event.pos)) {
            m_pressed = Part::Up;
            redraw(upButtonBox());
            callMsg(upButtonPressedMsg);
            return true;
        }
        if (downButtonBox().contains(event.pos)) {
            m_pressed = Part::Down;
            redraw(downButtonBox());
            callMsg(downButtonPressedMsg);
            return true;
        }
        if (!isScrollable())
            return true;
        const GlobBox thumb = thumbBox();
        if (thumb.contains(event.pos)) {
            m_pressed = Part::Thumb;
            m_grip = thumb.top() - event.pos.y;
            redraw();
            return true;
        }
        m_pressed = Part::Track;
        // Pages towards the pointer: above the thumb is earlier in what scrolls.
        userMove(event.pos.y >= thumb.top() ? m_pos - m_size : m_pos + m_size);
        return true;
    }
    case Event::MouseDrag:
        if (m_pressed == Part::Thumb)
            userMove(positionForThumbTop(event.pos.y + m_grip));
        return m_pressed != Part::None;
    case Event::MouseUp:
        if (event.button != Event::LeftButton || m_pressed == Part::None)
            return false;
        m_pressed = Part::None;
        redraw();
        return true;
    case Event::MouseWheel:
        if (event.wheelDelta == 0 || !isEnabledInTree())
            return false;
        for (int i = 0; i < std::abs(event.wheelDelta); ++i)
            if (!callMsg(event.wheelDelta > 0 ? upButtonPressedMsg : downButtonPressedMsg))
                return true;
        return true;
    default:
        return Glob::react(event);
    }
}

// ---------------------------------------------------------------------------------------------------------
// Drawing

void ScrollBar::drawBackground()
{
    Pictor::Painter& p = painter();
    const Palette& pal = getPalette();
    const bool enabled = isEnabledInTree();
    const GlobBox track = trackBox();
    p.fillRect(track, pal.window(1));
    if (isScrollable() && !track.empty()) {
        const GlobBox thumb = thumbBox();
        const Colour face = !enabled ? pal.window(3) : m_pressed == Part::Thumb ? pal.highlight() : pal.window(4);
        p.fillRoundedRect(Pictor::PaintRect(thumb.left() + 2, thumb.bottom() + 1, thumb.right() - 2, thumb.top() - 1),
                          3.0, face);
    }
    auto state = [&](Part part) {
        return !enabled ? StylePainter::Disabled : m_pressed == part ? StylePainter::Pressed : StylePainter::Normal;
    };
    StylePainter::drawButton(p, upButtonBox(), pal, state(Part::Up));
    StylePainter::drawButton(p, downButtonBox(), pal, state(Part::Down));
}

void ScrollBar::drawText()
{
    Pictor::Painter& p = painter();
    const Palette& pal = getPalette();
    const Colour ink = isEnabledInTree() ? pal.text() : pal.disabledText();
    auto arrow = [&](const GlobBox& box, bool up) {
        const XY<double> c(box.left() + box.width() / 2.0, box.bottom() + box.height() / 2.0);
        const double r = std::max(2.0, std::min(box.width(), box.height()) / 4.0);
        const double dir = up ? 1.0 : -1.0;
        const std::array<XY<double>, 3> tri = {XY<double>(c.x - r, c.y - dir * r / 2), XY<double>(c.x + r, c.y - dir * r / 2),
                                               XY<double>(c.x, c.y + dir * r / 2)};
        p.fillPolygon(tri, ink);
    };
    arrow(upButtonBox(), true);
    arrow(downButtonBox(), false);
}
