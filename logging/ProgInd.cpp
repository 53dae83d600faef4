#include "logging/ProgInd.h"

#include "logging/ProgressText.h"
#include "toolkit/support/BackgroundTasks.h"
#include "toolkit/support/Clock.h"
#include "toolkit/support/Resources.h"
#include "toolkit/ui/GlobManager.h"
#include "toolkit/ui/UifStd.h"
#include "toolkit/widgets/Gauge.h"
#include "toolkit/widgets/TableWidget.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr int standardWidth = 400;
constexpr int pleaseWaitId = 10958;

StandardPanel::InitArgs panelArgs(const UIString& title, uint16_t width, const Palette& palette)
{
    StandardPanel::InitArgs args(title, width, static_cast<uint16_t>(ProgInd::calcHeight()), StandardPanel::NoWidgets,
                                 palette);
    return args;
}

} // namespace

ProgInd::ProgInd(const UIString& title, uint16_t width, uint16_t, const Palette& palette, double minimum,
                 double maximum, bool poll)
    : StandardPanel(panelArgs(title, width, palette))
{
    init(title, poll, minimum, maximum);
}

ProgInd::ProgInd(const UIString& title)
    : ProgInd(title, standardWidth, 0, UifStd::getColourScheme(), 0.0, 1.0, true)
{
}

ProgInd::~ProgInd() = default;

int ProgInd::calcHeight()
{
    constexpr int userHeight = 200;
    const StandardPanel::InitArgs titled(UIString(L" "), standardWidth, 0, StandardPanel::NoWidgets);
    return StandardPanel::calcPanelSize(standardWidth, userHeight, titled).y - userHeight
        + TableWidget::getDefaultRowHeight();
}

ProgInd* ProgInd::make(const UIString& title, Glob* parent)
{
    const int height = calcHeight();
    XY<int> pos;
    if (parent) {
        const XY<int> at = parent->getScreenPos();
        pos = { at.x + parent->getWidth() / 2 - standardWidth / 2, at.y + parent->getHeight() / 2 - height / 2 };
    } else {
        pos = GlobManager::getPosForGlob(XY<int>(standardWidth, height));
    }
    auto* indicator = new ProgInd(title);
    indicator->setPos(pos.x, pos.y);
    if (!GlobManager::realize(indicator)) {
        Glob::destroy(indicator);
        return nullptr;
    }
    return indicator;
}

void ProgInd::init(const UIString& title, bool poll, double minimum, double maximum)
{
    setBorderStyle(RaisedBorder);
    setTitle(title.empty() ? UIString(ResId(pleaseWaitId)) : title);
    const Palette& palette = getPalette();
    Gauge::InitArgs args(static_cast<uint16_t>(getUserArea().width()),
                         static_cast<uint16_t>(TableWidget::getDefaultRowHeight()), palette);
    m_gauge = addWidget<Gauge>(args, Glob::BottomLeft(0, 0));
    m_gauge->setCols(palette.highlight(), palette.window(1));
    m_gauge->setTextCol(palette.text());
    m_poll = poll;
    m_minimum = minimum;
    m_maximum = maximum;
    m_range = maximum - minimum;
    m_lastEstimate = none;
    m_lastUpdate = none;
    m_showTimeRemaining = false;
}

void ProgInd::showTimeRemaining(bool on)
{
    m_showTimeRemaining = on;
    if (on)
        m_startTime = static_cast<uint32_t>(service_get_msecs());
}

void ProgInd::setBarColour(const Colour& colour)
{
    m_gauge->setCols(colour, getPalette().window(1));
}

void ProgInd::update_progress(const LightweightString<wchar_t>& text, double value)
{
    update_progress(text, value, m_gauge->getBarCol());
}

void ProgInd::update_progress(const LightweightString<wchar_t>& text, double value, const Colour& colour)
{
    const uint32_t now = static_cast<uint32_t>(service_get_msecs());
    if (m_lastUpdate == none || now - m_lastUpdate >= throttleMsecs || value == 1.0) {
        m_lastUpdate = now;
        LightweightString<wchar_t> message = text;
        if (m_showTimeRemaining) {
            const double fraction = (value - m_minimum) / (m_maximum - m_minimum);
            if (const auto estimate = ProgressText::secondsRemaining(now - m_startTime, fraction)) {
                const uint32_t raw = static_cast<uint32_t>(std::max(0, *estimate));
                uint32_t shown = raw;
                if (raw != m_lastEstimate && m_lastEstimate != none)
                    shown = static_cast<uint32_t>((uint64_t(m_lastEstimate) + raw) / 2);
                m_lastEstimate = raw;
                message += L"  (";
                message += ProgressText::remainingText(static_cast<int>(shown));
                message += L")";
            }
        }
        value = std::clamp(value, std::min(m_minimum, m_maximum), std::max(m_minimum, m_maximum));
        setBarColour(colour);
        m_gauge->setString(message);
        m_gauge->setMeasure(m_range != 0.0 ? (value - m_minimum) / m_range : 0.0);
        m_gauge->display();
    }
    if (m_poll)
        glob_poll_background_tasks();
}

void ProgInd::handleProgressUpdate(const ProgressSnapshot& snapshot)
{
    update_progress(snapshot.text, snapshot.fraction * m_range + m_minimum);
}
