#include "toolkit/widgets/StatusMessage.h"

#include "toolkit/support/SettingsReader.h"
#include "toolkit/gfx/Font.h"
#include "toolkit/gfx/Painter.h"
#include "toolkit/gfx/WordWrappingTextRenderer.h"
#include "toolkit/support/BackgroundTasks.h"
#include "toolkit/support/Clock.h"
#include "toolkit/ui/GlobManager.h"
#include "toolkit/ui/Screen.h"
#include "toolkit/ui/UifStd.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr int standardWidth = 320;

StandardPanel::InitArgs panelArgs(const StatusMessage::InitArgs& args)
{
    StandardPanel::InitArgs panel = args;
    // No title bar: a message is read, not managed.
    panel.title = UIString();
    panel.standardWidgets = StandardPanel::NoWidgets;
    panel.border = StandardPanel::RaisedBorder;
    panel.movable = false;
    panel.resizable = false;
    if (panel.width == 0)
        panel.width = standardWidth;
    return panel;
}

const bool registeredByName = GlobManager::registerWidget<StatusMessage>("StatusMessage");

} // namespace

StatusMessage::InitArgs::InitArgs(UIString messageText, uint16_t w, double timeoutMs, const Palette& pal, Canvas* c)
    : StandardPanel::InitArgs(UIString(), w, 0, StandardPanel::NoWidgets, pal, c)
    , text(std::move(messageText))
    , timeout(timeoutMs)
{
}

StatusMessage::InitArgs::InitArgs(const GlobCreationInfo& info) : StandardPanel::InitArgs(info)
{
    const SettingsReader settings(info.config);
    text = settings.text("text").value_or(text.getString());
    timeout = settings.number("timeout").value_or(timeout);
}

StatusMessage::StatusMessage(const InitArgs& args)
    : StandardPanel(panelArgs(args)), m_content{args.text.getString()}
{
    setTimeout(args.timeout);
    fitHeight();
    startPolling();
}

StatusMessage::StatusMessage(uint16_t width, uint16_t height, const Palette& palette, Canvas* canvas)
    : StandardPanel(width, height, palette, canvas)
{
    removeStandardWidgets(CloseButton | DoItButton | MenuButton);
    setMovable(false);
    startPolling();
}

StatusMessage::StatusMessage(const StatusMessage& other)
    : EventHandler(other), Cv::InternalRefCount(other), iVirtual(other), iObject(other), StandardPanel(other),
      m_content(other.m_content)
{
    startPolling();
}

StatusMessage& StatusMessage::operator=(const StatusMessage& other)
{
    if (this != &other) {
        StandardPanel::operator=(other);
        m_content = other.m_content;
        restartTimer();
    }
    return *this;
}

LightweightString<char> StatusMessage::idstring() const
{
    return "StatusMessage";
}

StatusMessage* StatusMessage::make(const UIString& text, XY<int> bottomLeft, double timeoutMs)
{
    if (!Screen::current())
        return nullptr;
    auto* message = new StatusMessage(InitArgs(text, 0, timeoutMs, UifStd::getColourScheme()));
    const XY<int> at = GlobManager::getSafePosForGlob(bottomLeft, message->getSize());
    message->setPos(at.x, at.y);
    if (!GlobManager::realize(message)) {
        delete message;
        return nullptr;
    }
    return message;
}

// ---------------------------------------------------------------------------------------------------------
// Text and size

void StatusMessage::addMessage(const UIString& text)
{
    const LightweightString<wchar_t> more = text.getString();
    if (!more.empty()) {
        if (!m_content.text.empty())
            m_content.text += L"\n";
        m_content.text += more;
        fitHeight();
        redraw();
    }
    restartTimer();
}

int StatusMessage::calcHeight(const LightweightString<wchar_t>& text, int width, int footer)
{
    const int gap = UifStd::getWidgetGap();
    const int textWidth = std::max(1, width - 2 * gap);
    const int lines = WordWrappingTextRenderer::calcNumDisplayLines(text.view(), UifStd::defaultFont(), textWidth);
    return static_cast<int>(std::ceil(lines * UifStd::defaultFont().lineHeight())) + 2 * gap + footer;
}

void StatusMessage::fitHeight()
{
    const int userWidth = getUserArea().width();
    const XY<int> size = calcPanelSize(userWidth, calcHeight(m_content.text, userWidth, m_content.footer));
    resize(getWidth(), size.y);
}

void StatusMessage::setFooterHeight(int height)
{
    m_content.footer = std::max(0, height);
    fitHeight();
}

// ---------------------------------------------------------------------------------------------------------
// Time

void StatusMessage::setTimeout(double ms)
{
    m_content.timeout = std::isfinite(ms) && ms > 0.0 ? ms : 0.0;
    restartTimer();
}

void StatusMessage::restartTimer()
{
    m_shownAt = service_get_msecs_precise();
}

void StatusMessage::startPolling()
{
    restartTimer();
    // Checked once per turn of the event loop; a message is rare, so one poller each costs nothing.
    m_poller = Cv::ScopedBackgroundPoller([this] { poll(); });
}

void StatusMessage::poll()
{
    if (m_content.timeout <= 0.0 || m_pointer->hover)
        return;
    // Readings are large fractional numbers: allow for the rounding of their difference.
    if (service_get_msecs_precise() - m_shownAt >= m_content.timeout - 1e-6)
        close(); // destroys this message: nothing may follow
}

// ---------------------------------------------------------------------------------------------------------
// Input and drawing

bool StatusMessage::react(const Event& event)
{
    switch (event.type) {
    case Event::MouseEnter:
        m_pointer->hover = true;
        return true;
    case Event::MouseLeave:
        m_pointer->hover = false;
        restartTimer();
        return true;
    case Event::MouseDown:
    case Event::MouseDrag:
    case Event::MouseUp: {
        const ClickTracker::Result result = m_pointer->click.track(event, getLocalBox());
        if (result == ClickTracker::Clicked)
            close(); // destroys this message: nothing may follow
        return result != ClickTracker::Ignored;
    }
    default:
        return StandardPanel::react(event);
    }
}

bool StatusMessage::handleMessageEvent(LightweightString<char> name, Glob* sender)
{
    // News from widgets a subclass placed in the message is for the subclass; anything it leaves is dropped
    // here rather than passed to a panel owner the message does not have.
    (void)name;
    (void)sender;
    return false;
}

void StatusMessage::drawText()
{
    StandardPanel::drawText();
    const int gap = UifStd::getWidgetGap();
    GlobBox area = getUserArea();
    area.removeFromBottom(m_content.footer);
    const GlobBox textBox = area.expanded(-gap);
    if (textBox.empty() || m_content.text.empty())
        return;
    painter().drawWrappedText(m_content.text.view(), UifStd::defaultFont(), getPalette().text(), textBox,
                              Pictor::TextAlign::Left);
}
