#include "toolkit/support/SystemWatchdog.h"

#include "toolkit/support/Clock.h"

#include <atomic>

namespace {

std::atomic<bool> g_beaten { false };
std::atomic<double> g_lastBeat { 0.0 };
std::atomic<int> g_lifeSupport { 0 };
std::atomic<double> g_threshold { SystemWatchdog::defaultHangThresholdMsecs };

} // namespace

void SystemWatchdog::heartbeat()
{
    g_lastBeat.store(service_get_msecs_precise(), std::memory_order_release);
    g_beaten.store(true, std::memory_order_release);
}

void SystemWatchdog::beginLifeSupport()
{
    g_lifeSupport.fetch_add(1, std::memory_order_acq_rel);
}

void SystemWatchdog::endLifeSupport()
{
    int depth = g_lifeSupport.load(std::memory_order_acquire);
    do {
        if (depth <= 0)
            return;
    } while (!g_lifeSupport.compare_exchange_weak(depth, depth - 1, std::memory_order_acq_rel));
    if (depth == 1)
        heartbeat();
}

bool SystemWatchdog::looksHung()
{
    if (g_lifeSupport.load(std::memory_order_acquire) > 0)
        return false;
    const double since = msecsSinceHeartbeat();
    return since >= 0.0 && since > getHangThreshold();
}

bool SystemWatchdog::isOnLifeSupport()
{
    return lifeSupportDepth() > 0;
}

int SystemWatchdog::lifeSupportDepth()
{
    return g_lifeSupport.load(std::memory_order_acquire);
}

double SystemWatchdog::msecsSinceHeartbeat()
{
    if (!g_beaten.load(std::memory_order_acquire))
        return -1.0;
    const double last = g_lastBeat.load(std::memory_order_acquire);
    // A test clock set before the last beat would give a negative age; that is no hang.
    const double since = service_get_msecs_precise() - last;
    return since < 0.0 ? 0.0 : since;
}

void SystemWatchdog::setHangThreshold(double msecs)
{
    g_threshold.store(msecs > 0.0 ? msecs : defaultHangThresholdMsecs, std::memory_order_release);
}

double SystemWatchdog::getHangThreshold()
{
    return g_threshold.load(std::memory_order_acquire);
}
