#include "toolkit/widgets/ScrollBar.h"

#include "toolkit/gfx/Painter.h"
#include "toolkit/support/BackgroundTasks.h"
#include "toolkit/support/Clock.h"
#include "toolkit/ui/GlobManager.h"
#include "toolkit/ui/StylePainter.h"
#include "toolkit/ui/UifStd.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace {

// A thumb is never thinner than this, so it can still be gripped when the view is a sliver of the whole.
constexpr int minThumb = 8;

const bool registeredByName = GlobManager::registerWidget<ScrollBar>("ScrollBar");

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
        m_press->pointerY = event.pos.y;
        if (upButtonBox().contains(event.pos))
            m_press->part = Part::Up;
        else if (downButtonBox().contains(event.pos))
            m_press->part = Part::Down;
        else if (!isScrollable())
            return true;
        else if (thumbBox().contains(event.pos))
            m_press->part = Part::Thumb;
        else
            m_press->part = Part::Track;
        redraw();
        if (m_press->part == Part::Thumb) {
            m_press->grip = thumbBox().top() - event.pos.y;
            return true;
        }
        GlobWatch self(this);
        if (stepPressedPart() && self)
            startRepeating();
        return true;
    }
    case Event::MouseDrag:
        m_press->pointerY = event.pos.y;
        if (m_press->part == Part::Thumb)
            userMove(positionForThumbTop(event.pos.y + m_press->grip));
        return m_press->part != Part::None;
    case Event::MouseUp:
        if (event.button != Event::LeftButton || m_press->part == Part::None)
            return false;
        m_press->part = Part::None;
        stopRepeating();
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

bool ScrollBar::stepPressedPart()
{
    switch (m_press->part) {
    case Part::Up: return callMsg(upButtonPressedMsg);
    case Part::Down: return callMsg(downButtonPressedMsg);
    case Part::Track: {
        // Pages towards the pointer (above the thumb is earlier in what scrolls), and stops under it.
        const GlobBox thumb = thumbBox();
        if (m_press->pointerY >= thumb.top())
            return userMove(m_pos - m_size);
        if (m_press->pointerY < thumb.bottom())
            return userMove(m_pos + m_size);
        return true;
    }
    default: return true;
    }
}

void ScrollBar::startRepeating()
{
    m_press->nextRepeat = service_get_msecs_precise() + repeatDelay;
    if (!m_repeater->running())
        *m_repeater = Cv::ScopedBackgroundPoller([this] { repeatIfDue(); });
}

void ScrollBar::stopRepeating()
{
    m_repeater->stop();
}

void ScrollBar::repeatIfDue()
{
    if (m_press->part == Part::None || m_press->part == Part::Thumb || !isEnabledInTree()) {
        stopRepeating();
        return;
    }
    // Readings are large fractional numbers: allow for the rounding of their difference.
    const double now = service_get_msecs_precise();
    if (now + 1e-6 < m_press->nextRepeat)
        return;
    m_press->nextRepeat = now + repeatInterval;
    stepPressedPart(); // may destroy this bar, whose destructor then removes this poller: nothing may follow
}

void ScrollBar::setActive(bool active, eRedrawFlag redrawFlag)
{
    if (!active) {
        m_press->part = Part::None;
        stopRepeating();
    }
    Glob::setActive(active, redrawFlag);
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
        const Colour face = !enabled ? pal.window(3) : m_press->part == Part::Thumb ? pal.highlight() : pal.window(4);
        p.fillRoundedRect(Pictor::PaintRect(thumb.left() + 2, thumb.bottom() + 1, thumb.right() - 2, thumb.top() - 1),
                          3.0, face);
    }
    auto state = [&](Part part) {
        return !enabled ? StylePainter::Disabled : m_press->part == part ? StylePainter::Pressed : StylePainter::Normal;
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
