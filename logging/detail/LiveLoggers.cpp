#include "logging/detail/LiveLoggers.h"

#include "logging/Logger.h"
#include "toolkit/support/MainThread.h"

#include <shared_mutex>
#include <unordered_set>

namespace {

struct Registry {
    std::shared_mutex mutex;
    std::unordered_set<const void*> live;
};

Registry& registry()
{
    static Registry* instance = new Registry; // never destroyed: panels may close during exit
    return *instance;
}

} // namespace

namespace LiveLoggers {

void add(Logger* logger)
{
    std::unique_lock lock(registry().mutex);
    registry().live.insert(logger);
}

void remove(Logger* logger)
{
    std::unique_lock lock(registry().mutex);
    registry().live.erase(logger);
}

bool with(Logger* handle, const std::function<void(Logger&)>& action)
{
    std::shared_lock lock(registry().mutex);
    if (!registry().live.count(handle))
        return false;
    // On the user-interface thread a panel whose destruction was asked for is dead already. Elsewhere the set
    // alone answers (it holds only log panels): a virtual call there could meet a destructor just begun.
    if (isMainThread() && (!is_good_glob_ptr(handle) || handle->idstring() != "logger"))
        return false;
    action(*handle);
    return true;
}

} // namespace LiveLoggers
