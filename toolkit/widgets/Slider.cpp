#include "toolkit/widgets/Slider.h"

#include "toolkit/support/SettingsReader.h"
#include "toolkit/gfx/Painter.h"
#include "toolkit/ui/GlobManager.h"
#include "toolkit/ui/StylePainter.h"
#include "toolkit/ui/UifStd.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace {

constexpr int thumbWidth = 10;
constexpr int trackThickness = 4;

const bool registeredByName = GlobManager::registerWidget<Slider>("Slider");

} // namespace

Slider::InitArgs::InitArgs(const GlobCreationInfo& info) : GlobCreationInfo(info)
{
    const SettingsReader settings(info.config);
    minimum = settings.number("min").value_or(0.0);
    maximum = settings.number("max").value_or(1.0);
    value = settings.number("value").value_or(minimum);
}

Slider::Slider(const InitArgs& args) : Glob(args), m_colour(args.colour)
{
    if (getHeight() == 0)
        resize(getWidth(), UifStd::getButtonHeight());
    setValueRange(args.minimum, args.maximum);
    setPosition(args.value);
}

Slider::Slider(uint16_t width, uint16_t height, const Palette& palette, Canvas* canvas)
    : Glob(width, height ? height : static_cast<uint16_t>(UifStd::getButtonHeight()), palette, canvas)
    , m_colour(palette.highlight())
{
}

Slider::~Slider() = default;

LightweightString<char> Slider::idstring() const
{
    return "Slider";
}

// ---------------------------------------------------------------------------------------------------------
// Value and range

void Slider::setValueRange(double minimum, double maximum)
{
    if (!std::isfinite(minimum) || !std::isfinite(maximum))
        return;
    if (minimum > maximum)
        std::swap(minimum, maximum);
    m_min = minimum;
    m_max = maximum;
    m_value = clampToRange(m_value);
    redraw();
}

double Slider::clampToRange(double value) const
{
    return std::clamp(value, m_min, m_max);
}

void Slider::setPosition(double value)
{
    if (std::isnan(value))
        return;
    value = clampToRange(value);
    if (value == m_value)
        return;
    m_value = value;
    redraw();
}

void Slider::setPointOfInterest(double value)
{
    if (!std::isfinite(value))
        return;
    m_poi = value;
    redraw();
}

void Slider::clearPointOfInterest()
{
    m_poi.reset();
    redraw();
}

void Slider::setColour(const Colour& colour)
{
    m_colour = colour;
    redraw();
}

double Slider::keyStep() const
{
    return m_step > 0.0 ? m_step : (m_max - m_min) / 100.0;
}

void Slider::showValue(const double& value, DataChangeType)
{
    setPosition(value);
}

bool Slider::userChange(double value, DataChangeType type)
{
    value = clampToRange(value);
    const bool moved = value != m_value;
    setPosition(value);
    GlobWatch self(this);
    // The end of a drag is published even without a last move, so that observers waiting for the final
    // step of a gesture get one.
    if (moved || type == kDataChangeFinal)
        publishValue(m_value, type);
    if (!self)
        return false;
    return moved ? callMsg(changedMsg) : true;
}

// ---------------------------------------------------------------------------------------------------------
// Geometry

int Slider::trackLeft() const
{
    return thumbWidth / 2 + 1;
}

int Slider::trackRight() const
{
    return std::max(trackLeft(), getWidth() - thumbWidth / 2 - 1);
}

int Slider::valueToX(double value) const
{
    const double span = m_max - m_min;
    const double f = span > 0.0 ? (clampToRange(value) - m_min) / span : 0.0;
    return trackLeft() + static_cast<int>(std::lround(f * (trackRight() - trackLeft())));
}

double Slider::xToValue(double x) const
{
    const int travel = trackRight() - trackLeft();
    if (travel <= 0)
        return m_min;
    const double f = std::clamp((x - trackLeft()) / travel, 0.0, 1.0);
    return m_min + f * (m_max - m_min);
}

GlobBox Slider::thumbBox() const
{
    const int x = valueToX(m_value);
    const int h = std::min<int>(getHeight(), 16);
    const int bottom = (getHeight() - h) / 2;
    return GlobBox(x - thumbWidth / 2, bottom, x - thumbWidth / 2 + thumbWidth, bottom + h);
}

// ---------------------------------------------------------------------------------------------------------
// Input

bool Slider::react(const Event& event)
{
    switch (event.type) {
    case Event::MouseEnter:
    case Event::MouseLeave:
        m_hover = event.type == Event::MouseEnter;
        redraw();
        return true;
    case Event::MouseDown: {
        if (event.button != Event::LeftButton || !isEnabledInTree())
            return false;
        const GlobBox thumb = thumbBox();
        const int centre = valueToX(m_value);
        m_dragging = true;
        if (thumb.contains(event.pos)) {
            m_grip = event.pos.x - centre;
            redraw();
            return true;
        }
        m_grip = 0;
        userChange(xToValue(event.pos.x), kDataChangeInteractive);
        return true;
    }
    case Event::MouseDrag:
        if (!*m_dragging)
            return false;
        userChange(xToValue(event.pos.x - *m_grip), kDataChangeInteractive);
        return true;
    case Event::MouseUp:
        if (event.button != Event::LeftButton || !*m_dragging)
            return false;
        m_dragging = false;
        redraw();
        userChange(xToValue(event.pos.x - *m_grip), kDataChangeFinal);
        return true;
    case Event::MouseWheel:
        if (event.wheelDelta == 0)
            return false;
        userChange(m_value + event.wheelDelta * keyStep(), kDataChangeFinal);
        return true;
    case Event::FocusGained:
    case Event::FocusLost:
        redraw();
        return true;
    case Event::Key: {
        if (event.hasAnyModifier())
            return false;
        const double page = (m_max - m_min) / 10.0;
        double to = m_value;
        switch (event.key) {
        case Event::KeyLeft:
        case Event::KeyDown: to = m_value - keyStep(); break;
        case Event::KeyRight:
        case Event::KeyUp: to = m_value + keyStep(); break;
        case Event::KeyPageDown: to = m_value - page; break;
        case Event::KeyPageUp: to = m_value + page; break;
        case Event::KeyHome: to = m_min; break;
        case Event::KeyEnd: to = m_max; break;
        default: return false;
        }
        userChange(to, kDataChangeFinal);
        return true;
    }
    default:
        return Glob::react(event);
    }
}

// ---------------------------------------------------------------------------------------------------------
// Drawing

void Slider::drawBackground()
{
    Pictor::Painter& p = painter();
    const Palette& pal = getPalette();
    p.fillRect(getLocalBox(), pal.window());
    if (hasFocus())
        StylePainter::drawFocusRing(p, getLocalBox(), pal);
}

void Slider::drawText()
{
    Pictor::Painter& p = painter();
    const Palette& pal = getPalette();
    const bool enabled = isEnabledInTree();
    const int mid = getHeight() / 2;
    const int left = trackLeft();
    const int right = trackRight();
    const int x = valueToX(m_value);
    const Pictor::PaintRect track(left, mid - trackThickness / 2, right, mid + trackThickness / 2);
    p.fillRoundedRect(track, trackThickness / 2.0, pal.window(0));
    if (x > left)
        p.fillRoundedRect(Pictor::PaintRect(left, track.y0, x, track.y1), trackThickness / 2.0,
                          enabled ? m_colour : pal.disabledText());

    if (m_poi) {
        // A small notch under the track, so the reference stays visible under the thumb's shadow.
        const double px = valueToX(*m_poi) + 0.5;
        const double top = mid - trackThickness / 2.0 - 1.0;
        const std::array<XY<double>, 3> notch = {XY<double>(px, top), XY<double>(px - 3.5, top - 5.0),
                                                 XY<double>(px + 3.5, top - 5.0)};
        p.fillPolygon(notch, enabled ? pal.subheadingText() : pal.disabledText());
    }

    const GlobBox thumb = thumbBox();
    const StylePainter::ButtonState state = !enabled ? StylePainter::Disabled
                                            : *m_dragging ? StylePainter::Pressed
                                            : *m_hover    ? StylePainter::Hovered
                                                         : StylePainter::Normal;
    StylePainter::drawButton(p, thumb, pal, state);
}
