#pragma once
// SoftwarePreviewOutput: a video output with no hardware behind it. Started, it shows the frames it is given
// at the project's output image format, in a window of that size; without a window system it keeps them
// off screen, so what it would show can still be read back.

#include "toolkit/media/CvResourceTypeBase.h"
#include "toolkit/media/VideoFrameSink.h"

#include <memory>
#include <mutex>

class SoftwarePreviewOutput : public CvResourceTypeBase {
public:
    explicit SoftwarePreviewOutput(LightweightString<wchar_t> name = L"Software preview");
    ~SoftwarePreviewOutput() override;

    // Shows a frame, stretched to the output format's picture size. Answers false while stopped.
    bool showFrame(const VideoFrame& frame);
    bool isRunning() const;
    // Whether the frames reach a window (false: off screen).
    bool hasWindow() const;
    OutputFormat::Details getFormat() const;
    // The last frame shown, at the output format's size.
    VideoFrame getLastFrame() const;
    int getFramesShown() const;

    bool open() override;
    void close() override;
    void stop() override;
    void setOutputImageFormat(const OutputFormat::Details& format) override;
    void start(const CvVideoResources& resources) override;

private:
    mutable std::mutex m_mutex;
    OutputFormat::Details m_format;
    std::unique_ptr<VideoFrameSink> m_window;
    VideoFrame m_lastFrame;
    int m_framesShown = 0;
    bool m_running = false;
};
