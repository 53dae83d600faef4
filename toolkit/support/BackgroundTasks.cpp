#include "toolkit/support/BackgroundTasks.h"

#include "toolkit/support/MainThread.h"

#include <algorithm>
#include <memory>
#include <mutex>
#include <vector>

namespace {

struct Poller {
    Cv::BackgroundPollerId id;
    // Shared so that a poller removed while it runs stays alive until it returns.
    std::shared_ptr<std::function<void()>> function;
    bool running;
};

struct Pollers {
    std::mutex mutex;
    std::vector<Poller> list;
    Cv::BackgroundPollerId lastId = 0;
};

Pollers& pollers()
{
    static auto* all = new Pollers;
    return *all;
}

void setRunning(Cv::BackgroundPollerId id, bool running)
{
    Pollers& all = pollers();
    std::lock_guard lock(all.mutex);
    for (Poller& poller : all.list) {
        if (poller.id == id)
            poller.running = running;
    }
}

} // namespace

void glob_poll_background_tasks()
{
    if (!isMainThread())
        return;
    runDeferredCalls();

    Pollers& all = pollers();
    std::vector<Cv::BackgroundPollerId> ids;
    {
        std::lock_guard lock(all.mutex);
        ids.reserve(all.list.size());
        for (const Poller& poller : all.list)
            ids.push_back(poller.id);
    }
    for (const Cv::BackgroundPollerId id : ids) {
        std::shared_ptr<std::function<void()>> function;
        {
            std::lock_guard lock(all.mutex);
            const auto found
                = std::find_if(all.list.begin(), all.list.end(), [id](const Poller& p) { return p.id == id; });
            // Removed by an earlier poller, or running further up this thread's stack.
            if (found == all.list.end() || found->running)
                continue;
            found->running = true;
            function = found->function;
        }
        struct Running {
            Cv::BackgroundPollerId id;
            ~Running() { setRunning(id, false); }
        } running { id };
        (*function)();
    }
}

namespace Cv {

BackgroundPollerId addBackgroundPoller(std::function<void()> poller)
{
    if (!poller)
        return 0;
    Pollers& all = pollers();
    std::lock_guard lock(all.mutex);
    const BackgroundPollerId id = ++all.lastId;
    all.list.push_back({ id, std::make_shared<std::function<void()>>(std::move(poller)), false });
    return id;
}

bool removeBackgroundPoller(BackgroundPollerId id)
{
    std::shared_ptr<std::function<void()>> released;
    Pollers& all = pollers();
    std::lock_guard lock(all.mutex);
    const auto found = std::find_if(all.list.begin(), all.list.end(), [id](const Poller& p) { return p.id == id; });
    if (found == all.list.end())
        return false;
    released = std::move(found->function);
    all.list.erase(found);
    return true;
}

} // namespace Cv
