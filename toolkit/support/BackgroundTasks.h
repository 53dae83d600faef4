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

void glob_poll_background_tasks();

namespace Cv {

using BackgroundPollerId = uint64_t; // 0 is no poller

// Pollers run on the main thread, in the order added. A poller may add or remove pollers, itself included.
BackgroundPollerId addBackgroundPoller(std::function<void()> poller);
bool removeBackgroundPoller(BackgroundPollerId id);

} // namespace Cv
