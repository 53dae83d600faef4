#pragma once
// AutoProgressBar: a counter for a loop of known length that shows a ProgInd only when the loop turns out
// to be slow: not before a second has passed, and never for a loop already three quarters done by then.
// While it lives, the watchdog knows the main thread is busy on purpose.
//
//     AutoProgressBar bar(panel, UIString(L"Importing"), files.size());
//     for (auto& file : files) { import(file); bar.inc(); }

#include "logging/detail/ProgressHolds.h"
#include "toolkit/support/UIString.h"
#include "toolkit/ui/Glob.h"

#include <cstdint>

class ProgInd;

class AutoProgressBar {
public:
    AutoProgressBar(Glob* parent, const UIString& title, uint64_t total);
    // A copy counts on from the same point but never closes the original's indicator; a move takes it over.
    AutoProgressBar(const AutoProgressBar&) = default;
    AutoProgressBar(AutoProgressBar&&) noexcept = default;
    AutoProgressBar& operator=(const AutoProgressBar&) = default;
    AutoProgressBar& operator=(AutoProgressBar&&) noexcept = default;

    void inc();

    // The indicator once it has popped up and while it is open, else null.
    ProgInd* getIndicator() const;
    uint64_t getCount() const { return m_count; }

    static constexpr double popUpDelayMsecs = 1000.0;
    static constexpr double nearlyDoneFraction = 0.75;

private:
    LifeSupportHold m_lifeSupport; // first made, last gone: the indicator closes while it still holds
    OwnedIndicator m_indicator;
    UIString m_title;
    GlobWatch m_parent;
    uint64_t m_count = 0;
    uint64_t m_total = 0;
    double m_startTime = 0.0;
};
