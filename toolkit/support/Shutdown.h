#pragma once
// Work to do as the process ends: closing windows, flushing preferences, releasing devices.
//
// Order: higher priority first; callbacks of equal priority in the order they were added. Each callback runs at
// most once. A callback added while the sequence runs joins those still pending and takes its place among them
// by priority, so nothing added during the run is lost. A callback that throws is skipped past: the others still
// run.

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>

class ShutdownSequence {
public:
    enum eExitType {
        normalExit = 0,
        abnormalExit = 1, // after a fatal error: callbacks should only release what must be released
    };
    using Callback = std::function<void(eExitType)>;
    using CallbackId = uint64_t;

    ShutdownSequence();
    ~ShutdownSequence();
    ShutdownSequence(const ShutdownSequence&) = delete;
    ShutdownSequence& operator=(const ShutdownSequence&) = delete;

    CallbackId add(Callback callback, int priority);
    CallbackId add(std::function<void()> callback, int priority);
    // Answers false when the callback has already run or was never added.
    bool remove(CallbackId id);

    // Runs every pending callback and answers how many ran. A run started while another is going on (from a
    // callback, or from a second thread) does nothing: the run in progress picks up every callback.
    size_t run(eExitType exitType);
    bool isRunning() const;
    size_t numPending() const;

private:
    struct State;
    std::unique_ptr<State> m_state;
};

// The process's own sequence. Hosts call Shutdown::run() as they exit, while everything is still alive. Should
// a host not do so, the sequence runs from the C library's exit handlers; by then static objects made after the
// first callback was added are gone, so callbacks must not rely on them. A library that adds a callback removes
// it when it is unloaded.
class Shutdown {
public:
    using eExitType = ShutdownSequence::eExitType;
    using CallbackId = ShutdownSequence::CallbackId;

    static CallbackId addCallback(ShutdownSequence::Callback callback, int priority = 0);
    static CallbackId addCallback(std::function<void()> callback, int priority = 0);
    static bool removeCallback(CallbackId id);
    static size_t run(eExitType exitType = ShutdownSequence::normalExit);
    static bool isShuttingDown();
};
