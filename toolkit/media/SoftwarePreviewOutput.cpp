#include "toolkit/media/SoftwarePreviewOutput.h"

SoftwarePreviewOutput::SoftwarePreviewOutput(LightweightString<wchar_t> name)
    : CvResourceTypeBase(std::move(name), videoOutputType)
{
}

SoftwarePreviewOutput::~SoftwarePreviewOutput()
{
    close();
}

bool SoftwarePreviewOutput::showFrame(const VideoFrame& frame)
{
    const std::scoped_lock lock(m_mutex);
    if (!m_running)
        return false;
    const OutputFormat::ImageSize size = m_format.imageSize();
    m_lastFrame = frame.scaledTo(size.width, size.height);
    ++m_framesShown;
    if (m_window)
        m_window->show(m_lastFrame);
    return true;
}

bool SoftwarePreviewOutput::isRunning() const
{
    const std::scoped_lock lock(m_mutex);
    return m_running;
}

bool SoftwarePreviewOutput::hasWindow() const
{
    const std::scoped_lock lock(m_mutex);
    return m_window != nullptr;
}

OutputFormat::Details SoftwarePreviewOutput::getFormat() const
{
    const std::scoped_lock lock(m_mutex);
    return m_format;
}

VideoFrame SoftwarePreviewOutput::getLastFrame() const
{
    const std::scoped_lock lock(m_mutex);
    return m_lastFrame;
}

int SoftwarePreviewOutput::getFramesShown() const
{
    const std::scoped_lock lock(m_mutex);
    return m_framesShown;
}

// There is no device to take hold of: the window is made when the output starts.
bool SoftwarePreviewOutput::open()
{
    return true;
}

void SoftwarePreviewOutput::close()
{
    stop();
}

void SoftwarePreviewOutput::stop()
{
    const std::scoped_lock lock(m_mutex);
    m_running = false;
    if (m_window)
        m_window->close();
    m_window.reset();
}

void SoftwarePreviewOutput::setOutputImageFormat(const OutputFormat::Details& format)
{
    const std::scoped_lock lock(m_mutex);
    m_format = format;
}

void SoftwarePreviewOutput::start(const CvVideoResources& resources)
{
    const std::scoped_lock lock(m_mutex);
    const OutputFormat::ImageSize size = m_format.imageSize();
    m_window = VideoFrameSink::create();
    if (m_window && !m_window->open(size.width, size.height, resources.configuration))
        m_window.reset();
    m_lastFrame = VideoFrame(size.width, size.height);
    m_framesShown = 0;
    m_running = true;
}
