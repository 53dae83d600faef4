#pragma once
// SystemWatchdog: tells whether the main thread looks hung. The main loop (and any long loop that keeps the user
// interface alive by hand) calls heartbeat(); a long operation that cannot beat brackets itself with
// beginLifeSupport() / endLifeSupport() so that it is not taken for a hang. Whoever wants to know (a crash
// reporter, a diagnostics panel) asks looksHung() from any thread; the watchdog has no thread of its own.
//
// Rules, in terms of the toolkit clock:
//   - until the first heartbeat nothing is watched, so a process still starting up never looks hung;
//   - the main thread looks hung when no heartbeat came for longer than the threshold and no life support is on;
//   - life support nests; ending the outermost counts as a heartbeat, so the loop gets a full threshold to
//     resume after a long operation; an end without a begin is ignored.

class SystemWatchdog {
public:
    static constexpr double defaultHangThresholdMsecs = 10000.0;

    static void heartbeat();
    static void beginLifeSupport();
    static void endLifeSupport();

    static bool looksHung();
    static bool isOnLifeSupport();
    static int lifeSupportDepth();
    // Milliseconds since the last heartbeat; negative before the first.
    static double msecsSinceHeartbeat();

    static void setHangThreshold(double msecs);
    static double getHangThreshold();

    // Life support for the lifetime of a scope.
    class LifeSupport {
    public:
        LifeSupport() { beginLifeSupport(); }
        ~LifeSupport() { endLifeSupport(); }
        LifeSupport(const LifeSupport&) = delete;
        LifeSupport& operator=(const LifeSupport&) = delete;
    };
};
