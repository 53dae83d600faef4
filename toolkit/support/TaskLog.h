#pragma once
// TaskLog: the full record of what a long task reported: every line in the order written, and its progress.
//
// Tasks write from worker threads, so every operation may be called from any thread. The log keeps its
// entries under a lock and tells its listeners after each addition, on the writing thread (a listener that
// owns widgets hands the news to the user-interface thread itself). Entries written by one thread are kept,
// and reported, in the order that thread wrote them.
//
// Text is kept as UTF-8: a log holds millions of lines, and half the memory of wide text matters there.
// An addition's text is shared, not copied, with whoever keeps it from the notification.

#include "toolkit/support/LightweightString.h"
#include "toolkit/support/Notifier.h"

#include <cstdint>
#include <deque>
#include <functional>
#include <mutex>
#include <vector>

class TaskLog {
public:
    struct Entry {
        LightweightString<char> text; // UTF-8; may hold several lines
        int kind = 0;
        uint16_t tag = 0;
    };

    TaskLog() = default;
    TaskLog(const TaskLog&) = delete;
    TaskLog& operator=(const TaskLog&) = delete;

    void add(const LightweightString<wchar_t>& text, int kind, uint16_t tag = 0);
    void add(Entry entry);
    // A fraction of the task done, 0..1 (not clamped: listeners decide what a value outside means).
    void setProgress(double fraction);

    // A copy of every entry, in order.
    std::vector<Entry> getContents() const;
    // Calls `visit` with each entry in order, holding the lock: writers wait meanwhile, so keep it short.
    void forEach(const std::function<void(const Entry&)>& visit) const;
    size_t size() const;
    double getProgress() const;

    // Listeners hear additions and progress on the thread that reported them.
    [[nodiscard]] Cv::Ptr<Cv::Guard> addAdditionListener(const Cv::Ptr<iCallbackBase<int, Entry>>& listener);
    [[nodiscard]] Cv::Ptr<Cv::Guard> addProgressListener(const Cv::Ptr<iCallbackBase<int, double>>& listener);

private:
    mutable std::mutex m_mutex;
    std::deque<Entry> m_entries;
    double m_progress = 0.0;
    GenericNotifier<Entry> m_additions;
    GenericNotifier<double> m_progressNotifier;
};
