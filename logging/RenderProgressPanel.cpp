#include "logging/RenderProgressPanel.h"

#include "logging/ProgInd.h"
#include "logging/ProgressText.h"
#include "logging/detail/VideoWindow.h"
#include "toolkit/gfx/Painter.h"
#include "toolkit/support/Clock.h"
#include "toolkit/ui/GlobManager.h"
#include "toolkit/ui/UifStd.h"
#include "toolkit/widgets/Gauge.h"
#include "toolkit/widgets/TableWidget.h"

#include <cmath>

namespace {

// One for all panels, on purpose: see the header.
uint32_t lastUpdate = 0xFFFFFFFFu;

StandardPanel::InitArgs panelArgs(uint16_t width, double aspect)
{
    return StandardPanel::InitArgs(UIString(L"Rendering"), width,
                                   static_cast<uint16_t>(RenderProgressPanel::calcHeightFromWidth(width, aspect)),
                                   StandardPanel::NoWidgets, UifStd::getColourScheme());
}

} // namespace

RenderProgressPanel::RenderProgressPanel(uint16_t width, double aspect, const Colour& background)
    : StandardPanel(panelArgs(width, aspect))
    , m_startTime(service_get_msecs_precise())
{
    const int indent = UifStd::getIndentWidth();
    const XY<int> image = calcImageSize(width, aspect);
    m_video = new VideoWindow(static_cast<uint16_t>(image.x), static_cast<uint16_t>(image.y), background, getPalette());
    addChild(m_video, Glob::UserTopLeft(indent, indent));
    m_gauge = addWidget<Gauge>(Gauge::InitArgs(static_cast<uint16_t>(image.x),
                                               static_cast<uint16_t>(TableWidget::getDefaultRowHeight()), getPalette()),
                               Glob::Below(UifStd::getWidgetGap(), m_video));
}

RenderProgressPanel::~RenderProgressPanel() = default;

RenderProgressPanel* RenderProgressPanel::make(double aspect)
{
    const uint16_t width = static_cast<uint16_t>(14 * UifStd::getButtonHeight());
    auto* panel = new RenderProgressPanel(width, aspect, UifStd::getColourScheme().window(3));
    const XY<int> pos = GlobManager::getPosForGlob(panel->Glob::getSize());
    panel->setPos(pos.x, pos.y);
    if (!GlobManager::realize(panel)) {
        Glob::destroy(panel);
        return nullptr;
    }
    return panel;
}

XY<int> RenderProgressPanel::calcImageSize(int width, double aspect)
{
    const int imageWidth = width - 2 * (UifStd::getBorder() + UifStd::getIndentWidth());
    const int imageHeight = aspect > 0.0 ? static_cast<int>(std::trunc(imageWidth / aspect)) : 0;
    return { imageWidth, imageHeight };
}

int RenderProgressPanel::calcHeightFromWidth(int width, double aspect)
{
    const StandardPanel::InitArgs titled(UIString(L" "), 0, 0, StandardPanel::NoWidgets);
    const int borders = StandardPanel::calcPanelSize(0, 0, titled).y;
    return static_cast<int>(std::floor(calcImageSize(width, aspect).y + 0.5)) + 2 * UifStd::getIndentWidth()
        + UifStd::getWidgetGap() + borders + TableWidget::getDefaultRowHeight();
}

GlobBox RenderProgressPanel::getAreaForImage() const
{
    return m_video->getScreenBox();
}

void RenderProgressPanel::handleProgressUpdate(const ProgressSnapshot& snapshot)
{
    const uint32_t now = static_cast<uint32_t>(service_get_msecs());
    if (lastUpdate != 0xFFFFFFFFu && now - lastUpdate < ProgInd::throttleMsecs && snapshot.fraction != 1.0)
        return;
    lastUpdate = now;
    if (snapshot.fraction != 0.0) {
        if (const auto seconds = ProgressText::secondsRemaining(service_get_msecs_precise() - m_startTime, snapshot.fraction))
            m_gauge->setString(ProgressText::remainingText(*seconds));
    }
    m_gauge->setMeasure(snapshot.fraction);
    m_gauge->display();
    if (!snapshot.image.isNull()) {
        Pictor::Image& target = m_video->getRenderTarget();
        Pictor::Painter painter(target);
        painter.drawImage(snapshot.image, Pictor::PaintRect::fromSize(0, 0, target.width(), target.height()));
        m_video->redraw();
    }
}
