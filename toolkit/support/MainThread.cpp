#include "toolkit/support/MainThread.h"

#include "toolkit/support/CriticalSection.h"

#include <atomic>
#include <cstdint>
#include <mutex>
#include <vector>

namespace {

// Threads are told apart by serial numbers handed out on first use, so that "no main thread yet" (0) and the
// main thread itself are plain constant-initialised atomics, safe to read from any static initialiser.
std::atomic<uint64_t> g_lastSerial { 0 };
std::atomic<uint64_t> g_mainSerial { 0 };

uint64_t threadSerial()
{
    thread_local const uint64_t serial = g_lastSerial.fetch_add(1, std::memory_order_relaxed) + 1;
    return serial;
}

void claimIfUnclaimed()
{
    uint64_t none = 0;
    g_mainSerial.compare_exchange_strong(none, threadSerial(), std::memory_order_acq_rel);
}

// The thread that loads the library becomes main, unless a static initialiser already asked.
struct ClaimAtLoad {
    ClaimAtLoad() { claimIfUnclaimed(); }
} g_claimAtLoad;

struct DeferredCalls {
    std::mutex mutex;
    std::vector<DeferableMethodCallback> pending;
    // Held while the hook runs, so that replacing the hook waits for a wake-up in progress.
    CriticalSection wakeupSection;
    std::function<void()> wakeup;
};

// Never destroyed: a worker thread may still post while the process exits.
DeferredCalls& deferredCalls()
{
    static auto* calls = new DeferredCalls;
    return *calls;
}

} // namespace

bool isMainThread()
{
    if (g_mainSerial.load(std::memory_order_acquire) == 0)
        claimIfUnclaimed();
    return g_mainSerial.load(std::memory_order_acquire) == threadSerial();
}

void setMainThread()
{
    g_mainSerial.store(threadSerial(), std::memory_order_release);
}

void defer(DeferableMethodCallback call)
{
    if (!call)
        return;
    DeferredCalls& calls = deferredCalls();
    bool wasEmpty = false;
    {
        std::lock_guard lock(calls.mutex);
        wasEmpty = calls.pending.empty();
        calls.pending.push_back(std::move(call));
    }
    // Only the first post after a drain wakes the loop: later ones are picked up by the same drain.
    if (wasEmpty) {
        CriticalSection::Lock lock(calls.wakeupSection);
        if (calls.wakeup)
            calls.wakeup();
    }
}

size_t runDeferredCalls()
{
    if (!isMainThread())
        return 0;
    DeferredCalls& calls = deferredCalls();
    std::vector<DeferableMethodCallback> batch;
    {
        std::lock_guard lock(calls.mutex);
        batch.swap(calls.pending);
    }
    size_t ran = 0;
    try {
        for (const DeferableMethodCallback& call : batch) {
            call();
            ++ran;
        }
    } catch (...) {
        std::lock_guard lock(calls.mutex);
        // The call that threw has run; the rest of its batch goes back ahead of anything posted since.
        calls.pending.insert(calls.pending.begin(),
            std::make_move_iterator(batch.begin() + static_cast<std::ptrdiff_t>(ran) + 1),
            std::make_move_iterator(batch.end()));
        throw;
    }
    return ran;
}

size_t numDeferredCalls()
{
    DeferredCalls& calls = deferredCalls();
    std::lock_guard lock(calls.mutex);
    return calls.pending.size();
}

void setDeferWakeup(std::function<void()> wakeup)
{
    DeferredCalls& calls = deferredCalls();
    CriticalSection::Lock lock(calls.wakeupSection);
    calls.wakeup = std::move(wakeup);
}
