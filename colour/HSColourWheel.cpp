#include "colour/HSColourWheel.h"

#include "colour/HSWheelGeometry.h"
#include "frame/StartupSettings.h"
#include "toolkit/gfx/Painter.h"
#include "toolkit/ui/Screen.h"
#include "toolkit/ui/UifStd.h"

#include <algorithm>
#include <array>
#include <cmath>

using namespace HSWheelGeometry;

namespace {

// The field at full brightness: every pixel's hue and saturation, with the rim's coverage as alpha so that
// the edge is smooth. Premultiplied, as images are.
Pictor::Image paintFullField(int size, double radius)
{
    Pictor::Image image(size, size);
    if (image.isNull())
        return image;
    const double centre = size / 2.0;
    for (int row = 0; row < size; ++row) {
        uint32_t* out = image.row(row);
        const double y = (size - row - 0.5) - centre;
        for (int col = 0; col < size; ++col) {
            const double x = col + 0.5 - centre;
            const double d = std::sqrt(x * x + y * y);
            const double coverage = std::clamp(radius - d + 0.5, 0.0, 1.0);
            if (coverage <= 0.0) {
                out[col] = 0;
                continue;
            }
            const double hue = convertDisplayToHueAngle(displayAngleOf(x, y));
            const NormalisedRGB rgb = HSVToRGB({hue, std::min(d / radius, 1.0), 1.0});
            out[col] = Pictor::Image::premultiplied(Colour(rgb, coverage));
        }
    }
    return image;
}

// The full-brightness field scaled to brightness v. Value scales every channel of an HSV colour alike, so
// one table per brightness does the whole field.
Pictor::Image scaleField(const Pictor::Image& full, double v)
{
    Pictor::Image out(full.width(), full.height());
    if (out.isNull())
        return out;
    std::array<uint32_t, 256> table{};
    const double factor = std::clamp(v, 0.0, 1.0);
    for (int i = 0; i < 256; ++i)
        table[i] = static_cast<uint32_t>(std::lround(i * factor));
    for (int row = 0; row < full.height(); ++row) {
        const uint32_t* in = full.row(row);
        uint32_t* dst = out.row(row);
        for (int col = 0; col < full.width(); ++col) {
            const uint32_t p = in[col];
            dst[col] = (p & 0xff000000u) | (table[(p >> 16) & 0xff] << 16) | (table[(p >> 8) & 0xff] << 8)
                | table[p & 0xff];
        }
    }
    return out;
}

} // namespace

HSColourWheel::HSColourWheel(Canvas* canvas, uint16_t size, double v, uint16_t margin)
    : Glob(size, size, UifStd::getColourScheme(), canvas)
{
    initFrom(margin, v);
}

HSColourWheel::HSColourWheel(const InitArgs& args)
    : Glob(args)
{
    initFrom(args.margin, args.value);
}

void HSColourWheel::initFrom(uint16_t margin, double v)
{
    m_margin = margin;
    m_displayV = v;
    m_shownV = v;
    m_value = ColourData(0.0, 0.0, v);
    m_background = getPalette().window();
    updateGeometry();
}

void HSColourWheel::updateGeometry()
{
    const int side = std::min<int>(getWidth(), getHeight());
    m_radius = std::max(0.0, (side - 2.0 * m_margin) / 2.0);
    m_hitBox = getLocalBox();
    // The cursor keeps its colour: put it back where that colour lies on the new wheel.
    const ColourData shown = UIColourFromDataColour(m_value);
    double x = 0.0;
    double y = 0.0;
    if (convertHStoXY(m_radius, shown.hue, shown.saturation, x, y) == 0) {
        m_cursorX = x;
        m_cursorY = y;
    }
}

Cv::Box<double> HSColourWheel::getAreaForCrosshair() const
{
    const double gap = UifStd::getWidgetGap();
    const double cx = m_margin + m_cursorX + m_radius;
    const double cy = m_margin + m_cursorY + m_radius;
    return Cv::Box<double>(cx - gap, cy - gap, cx + gap, cy + gap);
}

void HSColourWheel::setCol(const Colour& colour, bool publish)
{
    const ColourData data = ColourData::fromColour(colour);
    setDisplayV(data.value);
    setFromColour(UIColourToDataColour(data), publish ? kDataChangeFinal : kDataChangeSet);
}

void HSColourWheel::setDisplayV(double v)
{
    m_displayV = v;
    displayBrightness(v);
}

void HSColourWheel::setCursorVisible(bool visible)
{
    if (visible == m_cursorVisible)
        return;
    m_cursorVisible = visible;
    redrawCursor();
}

void HSColourWheel::setBackgrndCol(const Colour& colour)
{
    m_background = colour;
    m_ownBackground = true;
    redraw();
}

void HSColourWheel::displayCursorMoved()
{
    redrawCursor();
}

void HSColourWheel::displayBrightness(double v)
{
    if (v == m_shownV)
        return;
    m_shownV = v;
    redraw();
}

void HSColourWheel::showValue(const ColourData& value, DataChangeType)
{
    setNewWidgetValue(value, Redraw);
}

void HSColourWheel::setNewWidgetValue(const ColourData& colour, eRedrawFlag redrawFlag)
{
    const bool reflect = StartupSettings::colourWheelReflectLuma() != 0 && redrawFlag == Redraw;
    m_value = colour;
    const ColourData shown = UIColourFromDataColour(colour);
    double x = 0.0;
    double y = 0.0;
    if (convertHStoXY(m_radius, shown.hue, shown.saturation, x, y) == 0 && (x != m_cursorX || y != m_cursorY)) {
        setCursor(x, y);
        if (reflect)
            displayCursorMoved();
    }
    if (shown.value != m_displayV) {
        m_displayV = shown.value;
        if (reflect)
            displayBrightness(shown.value);
    }
}

int HSColourWheel::setCursor(double x, double y)
{
    if (x == m_cursorX && y == m_cursorY)
        return -1;
    double hue = 0.0;
    double saturation = 0.0;
    if (!pointOfInterest(m_radius, x, y) || convertXYtoHS(m_radius, x, y, hue, saturation) != 0)
        return -1;
    redrawCursor();
    m_cursorX = x;
    m_cursorY = y;
    redrawCursor();
    return 0;
}

bool HSColourWheel::setFromColour(const ColourData& colour, DataChangeType changeType)
{
    const ColourData shown = UIColourFromDataColour(colour);
    double x = 0.0;
    double y = 0.0;
    if (convertHStoXY(m_radius, shown.hue, shown.saturation, x, y) == 0)
        setCursor(x, y);
    m_value = colour;
    if (changeType == kDataChangeSet)
        return true;
    GlobWatch self(this);
    publishValue(colour, changeType);
    return self.alive();
}

void HSColourWheel::setFromXY(double x, double y, DataChangeType changeType)
{
    snapPoint(m_radius, x, y);
    if (changeType != kDataChangeSet && static_cast<int64_t>(x) == static_cast<int64_t>(m_cursorX)
        && static_cast<int64_t>(y) == static_cast<int64_t>(m_cursorY))
        return;
    double hue = 0.0;
    double saturation = 0.0;
    if (convertXYtoHS(m_radius, x, y, hue, saturation) != 0)
        return;
    const ColourData shown(hue, saturation, m_displayV, m_value.alpha);
    setFromColour(UIColourToDataColour(shown), changeType);
}

bool HSColourWheel::handleMouseCursorEvent(const Event& event, double& x, double& y)
{
    if (!isEnabledInTree())
        return false;
    *m_changed = false;
    const XY<int> p = event.pos;
    const bool leftOrRight = event.button == Event::LeftButton || event.button == Event::RightButton;
    if (event.type == Event::MouseDown && leftOrRight && x >= 0.0 && y >= 0.0) {
        const double gap = UifStd::getWidgetGap();
        if (p.x >= x - 1 - gap && p.x <= x + 1 + gap && p.y >= y - 1 - gap && p.y <= y + 1 + gap) {
            x = p.x;
            y = p.y;
            *m_dragging = true;
            *m_changed = true;
            return true;
        }
    }
    // Our toolkit reports a right press alone as a press and one made while another button is held as a
    // chord; both are the right-button chord that jumps the cursor.
    const bool rightChord = (event.type == Event::MouseDown && event.button == Event::RightButton)
        || (event.type == Event::MouseChord && (event.button & Event::RightButton) != 0);
    if (rightChord && m_hitBox.left() <= p.x && p.x <= m_hitBox.right() && m_hitBox.bottom() <= p.y
        && p.y <= m_hitBox.top()) {
        x = p.x;
        y = p.y;
        *m_dragging = true;
        *m_changed = true;
        return true;
    }
    if (event.type == Event::MouseDrag && *m_dragging) {
        x = p.x;
        y = p.y;
        *m_changed = true;
        return true;
    }
    if (event.type == Event::MouseUp && *m_dragging)
        *m_dragging = false;
    return false;
}

bool HSColourWheel::react(const Event& event)
{
    if (!event.isMouse())
        return Glob::react(event);
    const XY<double> centre = getCentre();
    double x = centre.x + m_cursorX;
    double y = centre.y + m_cursorY;
    if (!handleMouseCursorEvent(event, x, y))
        return false;
    if (*m_changed)
        setFromXY(x - centre.x, y - centre.y, kDataChangeInteractive);
    return true;
}

void HSColourWheel::resize(double width, double height)
{
    Glob::resize(width, height);
    updateGeometry();
}

void HSColourWheel::setActive(bool active, eRedrawFlag redrawFlag)
{
    if (!active)
        m_dragging.reset();
    Glob::setActive(active, redrawFlag);
}

int HSColourWheel::contextCursor(const XY<int>& local)
{
    const Cv::Box<double> grab = getAreaForCrosshair().expanded(1.0);
    if (grab.left() <= local.x && local.x <= grab.right() && grab.bottom() <= local.y && local.y <= grab.top())
        return CursorHand;
    const XY<double> centre = getCentre();
    return validColourPoint(m_radius, local.x - centre.x, local.y - centre.y) ? CursorCrosshair : CursorInherit;
}

const Pictor::Image& HSColourWheel::shownField()
{
    const int size = static_cast<int>(std::ceil(2.0 * m_radius));
    if (m_fullField.isNull() || m_fullField.width() != size) {
        m_fullField = paintFullField(size, m_radius);
        m_field = Pictor::Image();
    }
    if (m_field.isNull() || m_fieldV != m_shownV) {
        m_field = scaleField(m_fullField, m_shownV);
        m_fieldV = m_shownV;
    }
    return m_field;
}

void HSColourWheel::drawBackground()
{
    Pictor::Painter& p = painter();
    p.fillRect(getLocalBox(), m_ownBackground ? m_background : getPalette().window());
    if (m_radius <= 0.0)
        return;
    p.drawImage(shownField(), m_margin, m_margin);
    if (!isEnabledInTree())
        p.fillRect(getLocalBox(), getPalette().window().withAlpha(0.6));
}

void HSColourWheel::drawText()
{
    drawCursor();
}

void HSColourWheel::drawCursor()
{
    if (!m_cursorVisible || m_radius <= 0.0)
        return;
    snapPoint(m_radius, m_cursorX, m_cursorY);
    const Cv::Box<double> area = getAreaForCrosshair();
    Pictor::EllipseDescription ring;
    ring.centre = area.centre();
    ring.radii = {area.width() / 2.0 - 1.0, area.height() / 2.0 - 1.0};
    ring.outline = Colour(0, 0, 0, 0.85);
    ring.lineWidth = 2.0;
    painter().drawEllipse(ring);
    ring.radii = {area.width() / 2.0 - 2.5, area.height() / 2.0 - 2.5};
    ring.outline = Colour(1, 1, 1, 0.95);
    ring.lineWidth = 1.0;
    painter().drawEllipse(ring);
}

void HSColourWheel::redrawCursor()
{
    const Cv::Box<double> area = getAreaForCrosshair().expanded(2.0);
    redraw(GlobBox(static_cast<int>(std::floor(area.left())), static_cast<int>(std::floor(area.bottom())),
                   static_cast<int>(std::ceil(area.right())), static_cast<int>(std::ceil(area.top()))));
}
