#include "logging/AutoProgressBar.h"

#include "logging/ProgInd.h"
#include "toolkit/support/Clock.h"
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
        m_indicator.set(ProgInd::make(m_title, m_parent.get()));
    }
}
