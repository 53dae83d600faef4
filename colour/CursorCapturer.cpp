#include "colour/CursorCapturer.h"

#include "colour/MagnifyTool.h"
#include "toolkit/support/DiagnosticLog.h"
#include "toolkit/ui/Screen.h"

#include <algorithm>

namespace {

// Mouse and keys: every press anywhere, and Escape.
constexpr int captureFilterFlags = EventInterceptStack::Mouse | EventInterceptStack::Keys;
static_assert(captureFilterFlags == 768);

} // namespace

CursorCapturer::CursorCapturer(const ImageButton::InitArgs& args)
    : ImageButton(args)
{
    setMouseCursor(CursorEyedropper);
}

CursorCapturer::~CursorCapturer()
{
    // A button destroyed mid-capture must not leave the screen captured.
    disableCapture();
}

int CursorCapturer::enableCapture()
{
    if (m_session->capturing == 1)
        return 0;
    m_session->interceptStamp = getEventInterceptStack(0).push(this, captureFilterFlags);
    if (m_session->interceptStamp.isNull()) {
        DiagnosticLog::write(LogBoth, captureFailedLog);
        return -1;
    }
    m_session->capturing = 1;
    pictor_enableMouseContextLogic(false);
    CvTooltipsEnable(false);
    pictor_setCursor(CursorEyedropper);
    m_session->mouseListener = Pictor::addMouseListener(Cv::makeListener(this, &CursorCapturer::handleGlobalMouseEvent));

    const XY<int> mouse = glib_getMousePos();
    auto* magnifier = new MagnifyTool(MagnifyTool::InitArgs(1, magnifierSize, magnifierSize, 8));
    magnifier->setupRootPos(Glob::BottomLeft(mouse.x + magnifierOffset.x, mouse.y + magnifierOffset.y));
    Screen* screen = Screen::current();
    if (!screen || !screen->addTopLevel(magnifier)) {
        delete magnifier;
        return 0;
    }
    m_session->magnifier = GlobWatch(magnifier);
    return 0;
}

int CursorCapturer::disableCapture()
{
    if (m_session->capturing != 1)
        return 0;
    if (getEventInterceptStack(0).remove(m_session->interceptStamp)) {
        m_session->capturing = 0;
        m_session->interceptStamp = IdStamp();
    } else {
        DiagnosticLog::write(LogBoth, releaseFailedLog);
    }
    pictor_enableMouseContextLogic(true);
    CvTooltipsEnable(true);
    m_session->anchor = {-1.0, -1.0};
    Glob::destroy(m_session->magnifier.get());
    m_session->magnifier = GlobWatch();
    return m_session->capturing == 0 ? 0 : -1;
}

MagnifyTool* CursorCapturer::getMagnifier() const
{
    return static_cast<MagnifyTool*>(m_session->magnifier.get());
}

Cv::Box<double, Cv::BottomUpTraits> CursorCapturer::getAreaToSample() const
{
    const XY<int> mouse = glib_getMousePos();
    const double x = mouse.x;
    const double y = mouse.y;
    return Cv::Box<double, Cv::BottomUpTraits>(std::min(x, m_session->anchor.x), std::min(y, m_session->anchor.y),
                                               std::max({x, m_session->anchor.x, x + 1.0}),
                                               std::max({y, m_session->anchor.y, y + 1.0}));
}

bool CursorCapturer::cursorOverButton(uint16_t x, uint16_t y)
{
    return getScreenBox().contains(x, y);
}

void CursorCapturer::evaluatePixelAndNotify(uint16_t, uint16_t) { }

int CursorCapturer::handleGlobalMouseEvent(const NotifyMsg& msg)
{
    MagnifyTool* magnifier = getMagnifier();
    if (!magnifier)
        return 0;
    const Cv::Ptr<MouseEventInfo> info = msg.getObjectAs<MouseEventInfo>();
    const XY<int> at = info ? info->event.screenPos : glib_getMousePos();
    const XY<int> origin = at + magnifierOffset;
    const XY<int> now = magnifier->getPosition();
    if (origin != now)
        magnifier->setPos(now.x + (origin.x - now.x), now.y + (origin.y - now.y));
    if (m_style == captureArea && m_session->anchor.x > 0.0)
        magnifier->setAreaToOutline(getAreaToSample());
    pictor_setCursor(CursorEyedropper);
    return 0;
}

void CursorCapturer::endCaptureShown()
{
    setDown(false, Redraw);
    disableCapture();
}

bool CursorCapturer::react(const Event& event)
{
    if (event.isMouse()) {
        if (!isEnabledInTree())
            return false;
        // Entering and leaving carry no button: they keep the button's hover look.
        if (event.type == Event::MouseEnter || event.type == Event::MouseLeave)
            return ImageButton::react(event) || m_session->capturing == 1;
        if (event.button != Event::LeftButton)
            return true;
        const XY<int> at = event.screenPos;
        const auto sx = static_cast<uint16_t>(std::clamp(at.x, 0, 65535));
        const auto sy = static_cast<uint16_t>(std::clamp(at.y, 0, 65535));
        if (event.type == Event::MouseDown) {
            if (m_session->capturing != 1) {
                setDown(true, Redraw);
                return true;
            }
            if (cursorOverButton(sx, sy))
                return true;
            if (m_style == captureArea)
                m_session->anchor = {double(at.x), double(at.y)};
            else
                evaluatePixelAndNotify(sx, sy);
            return true;
        }
        if (event.type == Event::MouseUp) {
            if (m_session->capturing == 1) {
                GlobWatch self(this);
                if (m_style == captureArea && !cursorOverButton(sx, sy)) {
                    const Cv::Box<double, Cv::BottomUpTraits> area = getAreaToSample();
                    if (m_processing == ProcessRange) {
                        m_selectedRange = ColEyeDropBase::getPixelRange(area);
                        callMsg(rangeMsg);
                    } else {
                        callMsg(ColEyeDropBase::pixelToMsg(ColEyeDropBase::getPixelColour(area)));
                    }
                }
                if (self)
                    endCaptureShown();
                return true;
            }
            if (isDown()) {
                enableCapture();
                return true;
            }
        }
        const bool handled = ImageButton::react(event);
        return m_session->capturing == 1 || handled;
    }
    if (event.isKey() && event.key == Event::KeyEscape && m_session->capturing == 1) {
        endCaptureShown();
        return true;
    }
    return ImageButton::react(event);
}
