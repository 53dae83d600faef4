#include "toolkit/support/TaskLog.h"

void TaskLog::add(const LightweightString<wchar_t>& text, int kind, uint16_t tag)
{
    add(Entry { toUTF8(text.view()), kind, tag });
}

void TaskLog::add(Entry entry)
{
    {
        std::lock_guard lock(m_mutex);
        m_entries.push_back(entry);
    }
    // Told outside the lock, so a listener may read the log; one thread's entries still arrive in its order.
    m_additions.call(entry, NotifierBase::allTypes);
}

void TaskLog::setProgress(double fraction)
{
    {
        std::lock_guard lock(m_mutex);
        m_progress = fraction;
    }
    m_progressNotifier.call(fraction, NotifierBase::allTypes);
}

std::vector<TaskLog::Entry> TaskLog::getContents() const
{
    std::lock_guard lock(m_mutex);
    return std::vector<Entry>(m_entries.begin(), m_entries.end());
}

void TaskLog::forEach(const std::function<void(const Entry&)>& visit) const
{
    std::lock_guard lock(m_mutex);
    for (const Entry& entry : m_entries)
        visit(entry);
}

size_t TaskLog::size() const
{
    std::lock_guard lock(m_mutex);
    return m_entries.size();
}

double TaskLog::getProgress() const
{
    std::lock_guard lock(m_mutex);
    return m_progress;
}

Cv::Ptr<Cv::Guard> TaskLog::addAdditionListener(const Cv::Ptr<iCallbackBase<int, Entry>>& listener)
{
    return m_additions.addListener(listener);
}

Cv::Ptr<Cv::Guard> TaskLog::addProgressListener(const Cv::Ptr<iCallbackBase<int, double>>& listener)
{
    return m_progressNotifier.addListener(listener);
}
