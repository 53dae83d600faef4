#include "toolkit/support/Clock.h"

#include <atomic>
#include <chrono>
#include <cmath>

namespace {

// Constant-initialised, so the clock may be read from static initialisers of any library.
std::atomic<bool> g_manual { false };
std::atomic<double> g_manualReading { 0.0 };

double realMsecs()
{
    using Clock = std::chrono::steady_clock;
    static const Clock::time_point origin = Clock::now();
    return std::chrono::duration<double, std::milli>(Clock::now() - origin).count();
}

} // namespace

double service_get_msecs_precise()
{
    if (g_manual.load(std::memory_order_acquire))
        return g_manualReading.load(std::memory_order_acquire);
    return realMsecs();
}

int64_t service_get_msecs()
{
    return static_cast<int64_t>(std::floor(service_get_msecs_precise()));
}

int64_t service_get_ticks()
{
    return service_get_msecs();
}

namespace Cv {

TestClock::TestClock()
    : m_wasManual(g_manual.load(std::memory_order_acquire))
{
    // Taken over from real time, the reading starts on a whole millisecond, so that differences the code takes
    // come out exact: a test that advances 30,000 ms sees exactly 30,000 elapsed, never a hair less that a
    // truncation turns into a second less. A nested test clock keeps the outer one's reading as it is.
    const double now = service_get_msecs_precise();
    g_manualReading.store(m_wasManual ? now : std::floor(now), std::memory_order_release);
    g_manual.store(true, std::memory_order_release);
}

TestClock::~TestClock()
{
    g_manual.store(m_wasManual, std::memory_order_release);
}

void TestClock::set(double msecs)
{
    g_manualReading.store(msecs, std::memory_order_release);
}

void TestClock::advance(double msecs)
{
    double reading = g_manualReading.load(std::memory_order_acquire);
    while (!g_manualReading.compare_exchange_weak(reading, reading + msecs, std::memory_order_acq_rel)) { }
}

double TestClock::now() const
{
    return g_manualReading.load(std::memory_order_acquire);
}

} // namespace Cv
