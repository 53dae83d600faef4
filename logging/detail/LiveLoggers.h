#pragma once
// The panels the free functions may act on, for callers on any thread. The toolkit's own liveness test
// belongs to the user-interface thread; this set is locked, and a panel leaves it first thing in its
// destructor, which waits for any call in progress on another thread to finish.

#include <functional>

class Logger;

namespace LiveLoggers {

void add(Logger* logger);
void remove(Logger* logger);
// Runs `action` with the logger while it is held live, when `handle` is a live log panel (on the
// user-interface thread: a live glob whose id string is "logger"); answers whether it ran.
bool with(Logger* handle, const std::function<void(Logger&)>& action);

} // namespace LiveLoggers
