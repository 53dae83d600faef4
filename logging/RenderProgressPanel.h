#pragma once
// RenderProgressPanel: a panel that shows the frame being rendered with a gauge under it, fed with
// ProgressSnapshots. Lines written to it are ignored: it shows progress only.
//
// Every panel of this kind shares one throttle time, so several renders running at once together update
// the screen no more often than one would.

#include "logging/LoggerBase.h"
#include "toolkit/ui/StandardPanel.h"

#include <cstdint>

class Gauge;
class VideoWindow;

class RenderProgressPanel : public StandardPanel, public LoggerBase {
public:
    // `aspect` is the picture's width divided by its height.
    RenderProgressPanel(uint16_t width, double aspect, const Colour& background);
    RenderProgressPanel(const RenderProgressPanel&) = delete;
    RenderProgressPanel& operator=(const RenderProgressPanel&) = delete;
    ~RenderProgressPanel() override;

    LightweightString<char> idstring() const override { return "RenderProgressPanel"; }

    // 14 button heights wide, where the toolkit puts new windows.
    static RenderProgressPanel* make(double aspect);
    static XY<int> calcImageSize(int width, double aspect);
    static int calcHeightFromWidth(int width, double aspect);
    // Where the picture lies, in screen coordinates.
    GlobBox getAreaForImage() const;

    void write(const Item&) override { }
    using LoggerBase::write;

    Gauge* getGauge() const { return m_gauge; }
    VideoWindow* getVideoWindow() const { return m_video; }

    // Called by the toolkit
    void handleProgressUpdate(const ProgressSnapshot& snapshot) override;

private:
    double m_startTime = 0.0;
    Gauge* m_gauge = nullptr;
    VideoWindow* m_video = nullptr;
};
