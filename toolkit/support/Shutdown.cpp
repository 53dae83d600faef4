#include "toolkit/support/Shutdown.h"

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <mutex>
#include <vector>

struct ShutdownSequence::State {
    struct Entry {
        CallbackId id;
        int priority;
        Callback callback;
    };

    mutable std::mutex mutex;
    std::vector<Entry> pending; // in the order added; ids grow with it
    CallbackId lastId = 0;
    bool running = false;
};

ShutdownSequence::ShutdownSequence()
    : m_state(std::make_unique<State>())
{
}

ShutdownSequence::~ShutdownSequence() = default;

ShutdownSequence::CallbackId ShutdownSequence::add(Callback callback, int priority)
{
    if (!callback)
        return 0;
    std::lock_guard lock(m_state->mutex);
    const CallbackId id = ++m_state->lastId;
    m_state->pending.push_back({ id, priority, std::move(callback) });
    return id;
}

ShutdownSequence::CallbackId ShutdownSequence::add(std::function<void()> callback, int priority)
{
    if (!callback)
        return 0;
    return add(Callback([call = std::move(callback)](eExitType) { call(); }), priority);
}

bool ShutdownSequence::remove(CallbackId id)
{
    std::lock_guard lock(m_state->mutex);
    auto& pending = m_state->pending;
    const auto found = std::find_if(pending.begin(), pending.end(), [id](const State::Entry& e) { return e.id == id; });
    if (found == pending.end())
        return false;
    pending.erase(found);
    return true;
}

size_t ShutdownSequence::run(eExitType exitType)
{
    {
        std::lock_guard lock(m_state->mutex);
        if (m_state->running)
            return 0;
        m_state->running = true;
    }
    size_t ran = 0;
    for (;;) {
        Callback next;
        {
            std::lock_guard lock(m_state->mutex);
            auto& pending = m_state->pending;
            if (pending.empty()) {
                m_state->running = false;
                return ran;
            }
            // The first of the highest priority: max_element keeps the earliest of equals.
            const auto best = std::max_element(pending.begin(), pending.end(),
                [](const State::Entry& a, const State::Entry& b) { return a.priority < b.priority; });
            next = std::move(best->callback);
            pending.erase(best);
        }
        // Run unlocked, so that a callback may add or remove others.
        try {
            next(exitType);
        } catch (...) {
            // Shutting down must go on: one failing callback may not keep the others from releasing their work.
        }
        ++ran;
    }
}

bool ShutdownSequence::isRunning() const
{
    std::lock_guard lock(m_state->mutex);
    return m_state->running;
}

size_t ShutdownSequence::numPending() const
{
    std::lock_guard lock(m_state->mutex);
    return m_state->pending.size();
}

namespace {

std::atomic<bool> g_started { false };

void runAtExit()
{
    Shutdown::run(ShutdownSequence::normalExit);
}

// Never destroyed, so that the exit handler and late removals always find it.
ShutdownSequence& processSequence()
{
    static ShutdownSequence* sequence = [] {
        auto* made = new ShutdownSequence;
        std::atexit(runAtExit);
        return made;
    }();
    return *sequence;
}

} // namespace

Shutdown::CallbackId Shutdown::addCallback(ShutdownSequence::Callback callback, int priority)
{
    return processSequence().add(std::move(callback), priority);
}

Shutdown::CallbackId Shutdown::addCallback(std::function<void()> callback, int priority)
{
    return processSequence().add(std::move(callback), priority);
}

bool Shutdown::removeCallback(CallbackId id)
{
    return processSequence().remove(id);
}

size_t Shutdown::run(eExitType exitType)
{
    g_started.store(true, std::memory_order_release);
    return processSequence().run(exitType);
}

bool Shutdown::isShuttingDown()
{
    return g_started.load(std::memory_order_acquire);
}
