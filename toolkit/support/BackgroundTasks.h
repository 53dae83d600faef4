#pragma once
// Letting background work make progress while the main thread is busy in a long loop of its own (a progress
// gauge, a modal wait): glob_poll_background_tasks() runs the deferred calls queued for the main thread and then
// each registered poller once. Pollers are how other parts of the toolkit (the image cache handing back loaded
// thumbnails, for one) finish their work on the main thread.
//
// On any other thread glob_poll_background_tasks() does nothing. A poller that is already running (because it
// polled again, directly or through a deferred call) is not entered a second time; the deferred calls still run.

#include <cstdint>
#include <functional>
#include <utility>

void glob_poll_background_tasks();

namespace Cv {

using BackgroundPollerId = uint64_t; // 0 is no poller

// Pollers run on the main thread, in the order added. A poller may add or remove pollers, itself included.
BackgroundPollerId addBackgroundPoller(std::function<void()> poller);
bool removeBackgroundPoller(BackgroundPollerId id);

// One poller, removed when the handle goes or is given another. Move-only: a widget holding one in a
// Transient loses it on copy (the copy starts its own when it needs one) and stops it on assignment.
class ScopedBackgroundPoller {
public:
    ScopedBackgroundPoller() = default;
    explicit ScopedBackgroundPoller(std::function<void()> poller) : m_id(addBackgroundPoller(std::move(poller))) {}
    ScopedBackgroundPoller(ScopedBackgroundPoller&& other) noexcept : m_id(std::exchange(other.m_id, 0)) {}
    ScopedBackgroundPoller& operator=(ScopedBackgroundPoller&& other) noexcept
    {
        if (this != &other) {
            stop();
            m_id = std::exchange(other.m_id, 0);
        }
        return *this;
    }
    ~ScopedBackgroundPoller() { stop(); }

    bool running() const { return m_id != 0; }
    void stop()
    {
        if (m_id != 0)
            removeBackgroundPoller(std::exchange(m_id, 0));
    }

private:
    BackgroundPollerId m_id = 0;
};

} // namespace Cv
