#pragma once
// The main (user-interface) thread, and the hand-over of calls to it from other threads.
//
// Which thread is main: the thread that loads the toolkit library (the one that runs its static initialisers),
// which for an editor linked against the toolkit is the process's first thread. A host that loads the toolkit
// from some other thread calls setMainThread() from its user-interface thread before it makes any widget.
//
// Deferral: defer() may be called from any thread. The call is queued and runs on the main thread at its next
// drain (runDeferredCalls(), or glob_poll_background_tasks() which drains too), in the order posted. Every call
// runs exactly once. A call posted while a drain is running waits for the next drain, so a deferred call that
// defers again cannot keep one drain busy for ever.

#include <concepts>
#include <cstddef>
#include <functional>
#include <type_traits>
#include <utility>

bool isMainThread();
// Makes the calling thread the main thread.
void setMainThread();

class DeferableMethodCallback;

// What DeferableMethodCallback accepts as a call: anything invocable with no arguments.
template <typename F>
concept DeferableCall = std::invocable<std::add_lvalue_reference_t<std::decay_t<F>>> && !std::same_as<std::decay_t<F>,
    DeferableMethodCallback>;

template <typename M>
concept MethodPointer = std::is_member_function_pointer_v<M>;

// A call to be run later on the main thread: any callable that takes no arguments, or an object's method with
// its arguments bound by value. The object may be given as a raw pointer (the caller guarantees it outlives the
// call) or as a Cv::Ptr (which keeps it alive until the call has run).
class DeferableMethodCallback {
public:
    DeferableMethodCallback() = default;

    template <DeferableCall F>
    DeferableMethodCallback(F&& call)
        : m_call(std::forward<F>(call))
    {
    }

    template <typename Object, MethodPointer Method, typename... Args>
    DeferableMethodCallback(Object object, Method method, Args... args)
        : m_call([object = std::move(object), method, ... args = std::move(args)]() mutable {
            std::invoke(method, object, args...);
        })
    {
    }

    explicit operator bool() const { return static_cast<bool>(m_call); }
    void operator()() const
    {
        if (m_call)
            m_call();
    }

private:
    std::function<void()> m_call;
};

// Queues a call for the main thread. An empty call is ignored.
void defer(DeferableMethodCallback call);

// Runs the calls queued so far, on the main thread only (elsewhere it does nothing), and answers how many ran.
// If a call throws, the calls after it stay queued, ahead of newer ones, and the exception propagates.
size_t runDeferredCalls();

// How many calls wait for the next drain.
size_t numDeferredCalls();

// The window loop's wake-up: called on the posting thread when a post finds the queue empty, so a loop that
// sleeps waiting for events notices work from other threads. Once this returns, the previous hook is never
// called again. The hook must be quick and must not wait for the main thread.
void setDeferWakeup(std::function<void()> wakeup);
