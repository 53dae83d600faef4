#pragma once
// What an AutoProgressBar holds that a member-wise copy would get wrong, each as a value whose copy does the
// right thing, so the bar itself copies and moves with the compiler's operations.

#include "toolkit/support/SystemWatchdog.h"
#include "toolkit/ui/Glob.h"

#include <utility>

// The pop-up indicator and whether this holder closes it. Only one holder closes an indicator: a copy watches
// the same one without closing it, a move takes the closing over, and being assigned to first closes the
// indicator this holder owned. A holder made new owns whatever indicator it is later given.
class OwnedIndicator {
public:
    OwnedIndicator() = default;
    OwnedIndicator(const OwnedIndicator& other)
        : m_watch(other.m_watch)
        , m_owns(false)
    {
    }
    OwnedIndicator(OwnedIndicator&& other) noexcept
        : m_watch(other.m_watch)
        , m_owns(std::exchange(other.m_owns, false))
    {
    }
    OwnedIndicator& operator=(const OwnedIndicator& other)
    {
        if (this != &other) {
            close();
            m_watch = other.m_watch;
            m_owns = false;
        }
        return *this;
    }
    OwnedIndicator& operator=(OwnedIndicator&& other) noexcept
    {
        if (this != &other) {
            *this = static_cast<const OwnedIndicator&>(other);
            m_owns = std::exchange(other.m_owns, false);
        }
        return *this;
    }
    ~OwnedIndicator() { close(); }

    Glob* get() const { return m_watch.get(); }
    void set(const Glob* indicator) { m_watch = GlobWatch(indicator); }

private:
    void close()
    {
        if (m_owns)
            Glob::destroy(m_watch.get());
    }

    GlobWatch m_watch;
    bool m_owns = true;
};

// The watchdog's life support for as long as the holder lives; a copy holds its own.
class LifeSupportHold {
public:
    LifeSupportHold() { SystemWatchdog::beginLifeSupport(); }
    LifeSupportHold(const LifeSupportHold&)
        : LifeSupportHold()
    {
    }
    LifeSupportHold& operator=(const LifeSupportHold&) { return *this; }
    ~LifeSupportHold() { SystemWatchdog::endLifeSupport(); }
};
