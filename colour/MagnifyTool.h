#pragma once
// MagnifyTool: a small top-level view of the screen around the pointer, enlarged so that single pixels can be
// aimed at. It follows the pointer by itself (a global mouse listener takes a fresh look at every mouse
// event); whoever made it decides where it stands. The pixel under the pointer is framed at the centre, and
// an area of the screen (the eyedropper's rectangle) can be outlined over the view.
//
// Made by the eyedropper while it captures, and by the "Show Magnifier" command, where it stands alone at the
// screen's corner and a click on it closes it.

#include "toolkit/gfx/Image.h"
#include "toolkit/support/Box.h"
#include "toolkit/support/Notifier.h"
#include "toolkit/support/Ptr.h"
#include "toolkit/ui/Glob.h"
#include "toolkit/ui/Transient.h"
#include "toolkit/ui/UifStd.h"

#include <optional>

class MagnifyTool : public Glob {
public:
    struct InitArgs : GlobCreationInfo {
        InitArgs() = default;
        // A view `w` by `h` pixels inside a frame `frameWidth` wide, enlarging `zoom` times.
        InitArgs(int frameWidth, uint16_t w, uint16_t h, int zoomFactor,
                 const Palette& pal = UifStd::getColourScheme())
            : GlobCreationInfo(w, h, pal), frame(frameWidth), zoom(zoomFactor)
        {
        }

        int frame = 1;
        int zoom = 8;
    };

    explicit MagnifyTool(const InitArgs& args);
    // A copy starts following the pointer at its first refresh().
    MagnifyTool(const MagnifyTool&) = default;
    MagnifyTool(MagnifyTool&&) = default;
    MagnifyTool& operator=(const MagnifyTool&) = default;
    MagnifyTool& operator=(MagnifyTool&&) = default;
    ~MagnifyTool() override = default;

    LightweightString<char> idstring() const override { return "MagnifyTool"; }

    // An area of the screen to outline over the view (bottom-up screen coordinates).
    void setAreaToOutline(const Cv::Box<double>& screenArea);
    void clearAreaToOutline();
    const std::optional<Cv::Box<double>>& getAreaToOutline() const { return m_outline; }
    // Takes a fresh look at the screen around the pointer.
    void refresh();
    // The screen pixel shown at the centre of the view.
    XY<int> getViewCentre() const { return m_centre; }
    int getZoom() const { return m_zoom; }
    // Where a screen point is drawn in the view, in the tool's own coordinates.
    XY<double> screenToView(XY<double> screenPoint) const;
    // A click on the tool closes it (the standalone magnifier has no title bar).
    void setClosesOnClick(bool closes) { m_closesOnClick = closes; }

    // ---- Called by the toolkit
    bool react(const Event& event) override;
    void drawBackground() override;
    void drawBorder() override;
    void drawText() override;

private:
    int handleGlobalMouse(const NotifyMsg& msg);

    int m_frame = 1;
    int m_zoom = 8;
    bool m_closesOnClick = false;
    XY<int> m_centre;
    Pictor::Image m_view;
    std::optional<Cv::Box<double>> m_outline;
    // Releasing the guard (with the tool) ends the listening.
    Transient<Cv::Ptr<Cv::Guard>> m_listener;
};
