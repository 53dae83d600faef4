#include "logging/detail/VideoWindow.h"

#include "toolkit/gfx/Painter.h"

VideoWindow::VideoWindow(uint16_t width, uint16_t height, const Colour& background, const Palette& palette)
    : Glob(width, height, palette)
    , m_background(background)
{
}

Pictor::Image& VideoWindow::getRenderTarget()
{
    if (m_target.isNull() || m_target.width() != getWidth() || m_target.height() != getHeight()) {
        m_target = Pictor::Image(std::max<int>(1, getWidth()), std::max<int>(1, getHeight()));
        m_target.fill(m_background);
    }
    return m_target;
}

void VideoWindow::draw()
{
    Pictor::Painter& p = painter();
    p.fillRect(Pictor::PaintRect::fromSize(0, 0, getWidth(), getHeight()), m_background);
    if (!m_target.isNull())
        p.drawImage(m_target, 0, 0);
}

void VideoWindow::reshape()
{
    m_target = Pictor::Image(); // made again at the new size by the next render
    Glob::reshape();
}
