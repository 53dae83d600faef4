#pragma once
// CriticalSection: a recursive lock. Recursive because notification is re-entrant: a listener called while its
// notifier's list is locked may notify again, or add and remove listeners, on the same thread.

#include <mutex>

class CriticalSection {
public:
    CriticalSection() = default;
    CriticalSection(const CriticalSection&) = delete;
    CriticalSection& operator=(const CriticalSection&) = delete;

    void enter() { m_mutex.lock(); }
    void leave() { m_mutex.unlock(); }
    bool tryEnter() { return m_mutex.try_lock(); }

    // The standard lock names, so std::scoped_lock and std::unique_lock work too.
    void lock() { enter(); }
    void unlock() { leave(); }
    bool try_lock() { return tryEnter(); }

    // Holds the section for the lifetime of the scope.
    class Lock {
    public:
        explicit Lock(CriticalSection& section)
            : m_section(section)
        {
            m_section.enter();
        }
        ~Lock() { m_section.leave(); }
        Lock(const Lock&) = delete;
        Lock& operator=(const Lock&) = delete;

    private:
        CriticalSection& m_section;
    };

private:
    std::recursive_mutex m_mutex;
};
