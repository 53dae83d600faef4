#include "logging/AutoProgressBar.h"

#include "logging/ProgInd.h"
#include "toolkit/support/Clock.h"
#include "toolkit/support/SystemWatchdog.h"
#include "toolkit/ui/Drawable.h"

namespace {

// Lets the indicator paint even inside a caller's redraw suspension, which is put back afterwards.
class RedrawsLifted {
public:
    RedrawsLifted()
    {
        while (!Drawable::redrawsEnabled()) {
            Drawable::enableRedraws();
            ++m_lifted;
        }
    }
    ~RedrawsLifted()
    {
        for (; m_lifted > 0; --m_lifted)
            Drawable::disableRedraws();
    }
    RedrawsLifted(const RedrawsLifted&) = delete;
    RedrawsLifted& operator=(const RedrawsLifted&) = delete;

private:
    int m_lifted = 0;
};

} // namespace

AutoProgressBar::AutoProgressBar(Glob* parent, const UIString& title, uint64_t total)
    : m_title(title.getString())
    , m_parent(parent)
    , m_total(total)
    , m_startTime(service_get_msecs_precise())
{
    SystemWatchdog::beginLifeSupport();
}

AutoProgressBar::AutoProgressBar(const AutoProgressBar& other)
    : m_indicator(other.m_indicator)
    , m_ownsIndicator(false)
    , m_title(other.m_title)
    , m_parent(other.m_parent)
    , m_count(other.m_count)
    , m_total(other.m_total)
    , m_startTime(other.m_startTime)
{
    SystemWatchdog::beginLifeSupport();
}

AutoProgressBar::AutoProgressBar(AutoProgressBar&& other) noexcept
    : AutoProgressBar(static_cast<const AutoProgressBar&>(other))
{
    m_ownsIndicator = std::exchange(other.m_ownsIndicator, false);
}

AutoProgressBar& AutoProgressBar::operator=(const AutoProgressBar& other)
{
    if (this == &other)
        return *this;
    if (m_ownsIndicator)
        Glob::destroy(m_indicator.get());
    m_indicator = other.m_indicator;
    m_ownsIndicator = false;
    m_title = other.m_title;
    m_parent = other.m_parent;
    m_count = other.m_count;
    m_total = other.m_total;
    m_startTime = other.m_startTime;
    return *this;
}

AutoProgressBar& AutoProgressBar::operator=(AutoProgressBar&& other) noexcept
{
    if (this == &other)
        return *this;
    *this = static_cast<const AutoProgressBar&>(other);
    m_ownsIndicator = std::exchange(other.m_ownsIndicator, false);
    return *this;
}

AutoProgressBar::~AutoProgressBar()
{
    if (m_ownsIndicator)
        Glob::destroy(m_indicator.get());
    SystemWatchdog::endLifeSupport();
}

ProgInd* AutoProgressBar::getIndicator() const
{
    return static_cast<ProgInd*>(m_indicator.get());
}

void AutoProgressBar::inc()
{
    ++m_count;
    const double fraction = m_total ? static_cast<double>(m_count) / static_cast<double>(m_total) : 1.0;
    if (ProgInd* indicator = getIndicator()) {
        RedrawsLifted lifted;
        indicator->update_progress(LightweightString<wchar_t>(), fraction);
    } else if (fraction < nearlyDoneFraction && service_get_msecs_precise() - m_startTime > popUpDelayMsecs) {
        m_indicator = GlobWatch(ProgInd::make(m_title, m_parent.get()));
    }
}
