#pragma once
// CursorCapturer: the eyedropper button. A click on it captures the mouse for the whole screen; a magnifier
// follows the pointer; the next click (point style) or press, drag and release (area style) elsewhere samples
// the screen there and reports the colour to the button's owner.
//
//   state      | input                                   | result
//   -----------+-----------------------------------------+--------------------------------------------------
//   idle       | left press on the button                | drawn pressed
//   idle       | left release while drawn pressed        | capturing: filter, listener, cursor, magnifier
//   capturing  | left press on the button                | swallowed
//   capturing  | left press elsewhere                    | area style: anchor there; point style:
//              |                                         | evaluatePixelAndNotify(x, y)
//   capturing  | left release (area style, off button)   | samples getAreaToSample(): range message (mode 1)
//              |                                         | or colour message, then idle
//   capturing  | left release otherwise                  | idle, nothing sampled
//   capturing  | Escape                                  | idle
//   capturing  | any other mouse event                   | swallowed: the capture holds the whole screen
//
// While capturing, the magnifier stands 15 pixels right of and 130 below the pointer and, in the area style
// once an anchor is set, outlines the area that a release would sample.

#include "colour/ColEyeDropBase.h"
#include "toolkit/support/IdStamp.h"
#include "toolkit/support/Notifier.h"
#include "toolkit/support/Ptr.h"
#include "toolkit/ui/Transient.h"
#include "toolkit/widgets/ImageButton.h"

class MagnifyTool;

enum captureStyleType : int {
    capturePoint = 0,
    captureArea = 1,
};

class CursorCapturer : public ImageButton {
public:
    enum Processing : int {
        ProcessAverage = 0,
        ProcessRange = 1,
    };

    explicit CursorCapturer(const ImageButton::InitArgs& args);
    // A copy is an idle button of the same style: the capture belongs to the widget that started it.
    CursorCapturer(const CursorCapturer&) = default;
    CursorCapturer(CursorCapturer&&) = default;
    CursorCapturer& operator=(const CursorCapturer&) = default;
    CursorCapturer& operator=(CursorCapturer&&) = default;
    ~CursorCapturer() override;

    LightweightString<char> idstring() const override { return "CursorCapturer"; }

    // 0 when the capture is on after the call, -1 otherwise.
    int enableCapture();
    // 0 when the capture is off after the call, -1 otherwise.
    int disableCapture();
    bool enabled() const { return m_session->capturing == 1; }
    void setDropperStyle(captureStyleType style) { m_style = style; }
    captureStyleType getDropperStyle() const { return m_style; }
    void setProcessingMode(Processing mode) { m_processing = mode; }
    Processing getProcessingMode() const { return m_processing; }
    // From the anchor to the pointer, always covering at least the pixel under the pointer.
    Cv::Box<double, Cv::BottomUpTraits> getAreaToSample() const;
    const ColEyeDropBase::ColourRange& getSelectedRange() const { return m_selectedRange; }
    // The magnifier while capturing, else null.
    MagnifyTool* getMagnifier() const;
    XY<double> getAnchor() const { return m_session->anchor; }

    // The owner's message after a range was measured; the range is then read with getSelectedRange().
    static constexpr const char* rangeMsg = "colour_eye_dropper HSV ";
    static constexpr const char* captureFailedLog = "Failed to enabled cursor capture.";
    static constexpr const char* releaseFailedLog = "Failed to disable cursor capture.";
    // The magnifier's size, and where it stands from the pointer.
    static constexpr int magnifierSize = 130;
    static constexpr XY<int> magnifierOffset{15, -130};

    // Whether a screen point lies on the button.
    virtual bool cursorOverButton(uint16_t x, uint16_t y);
    // The point style's sample at a screen point; the base class samples nothing.
    virtual void evaluatePixelAndNotify(uint16_t x, uint16_t y);
    // The global mouse listener: moves the magnifier with the pointer.
    virtual int handleGlobalMouseEvent(const NotifyMsg& msg);

    // ---- Called by the toolkit
    bool react(const Event& event) override;

private:
    void endCaptureShown();

    // What exists only while capturing.
    struct Session {
        int capturing = 0;
        GlobWatch magnifier;
        XY<double> anchor{-1.0, -1.0};
        IdStamp interceptStamp;
        Cv::Ptr<Cv::Guard> mouseListener;
    };

    captureStyleType m_style = capturePoint;
    Processing m_processing = ProcessAverage;
    ColEyeDropBase::ColourRange m_selectedRange;
    Transient<Session> m_session;
};
