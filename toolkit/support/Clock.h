#pragma once
// The one clock of the toolkit. Every time-dependent rule (double clicks, throttled updates, pop-up delays, the
// watchdog) reads it, so that tests can replace real time with a manual clock and never sleep.

#include <cstdint>

// Milliseconds since the clock's origin (the first reading in the process), whole and fractional.
// Real time comes from a steady clock: it never jumps when the wall clock is changed.
int64_t service_get_msecs();
double service_get_msecs_precise();

// The tick reading used to time double clicks. One tick is one millisecond of the same clock.
int64_t service_get_ticks();

namespace Cv {

// While a TestClock lives, the toolkit's clock stands still at a manual reading that only set() and advance()
// change. It starts at the reading it replaces, so times recorded earlier stay in the past. A nested TestClock
// shares the manual reading; when it ends, the outer one carries on from there, so time never runs backwards
// inside a test.
class TestClock {
public:
    TestClock();
    ~TestClock();
    TestClock(const TestClock&) = delete;
    TestClock& operator=(const TestClock&) = delete;

    void set(double msecs);
    void advance(double msecs);
    double now() const;

private:
    bool m_wasManual = false;
};

} // namespace Cv
