// Actions reported from a worker thread and delivered to listeners on the main thread: the whole hand-over
// (posting, draining, the hint check against the preferences, the notification round).
#include "toolkit/support/MainThread.h"
#include "toolkit/support/Preferences.h"
#include "uistate/UIStateManager.h"

#include <benchmark/benchmark.h>

#include <thread>

namespace {

void BM_ActionsFromAnotherThreadDeliveredOnMain(benchmark::State& state)
{
    const int64_t perBatch = state.range(0);
    // Preferences in memory only, hints off: the figure is the hand-over, not a hint window.
    const std::string previous = prefs().file();
    prefs().setFile("");
    UIStateManager& manager = UIStateManager::instance();
    manager.setHintsEnabled(false, false);
    int64_t heard = 0;
    const auto guard = manager.addListener(Cv::makeListener<eUIActionType>([&heard](const eUIActionType&) { ++heard; }));
    for (auto _ : state) {
        const int64_t target = heard + perBatch;
        std::thread reporter([perBatch] {
            for (int64_t i = 0; i < perBatch; ++i)
                UIStateManager::instance().recordAction(static_cast<eUIActionType>(i % numUIActionTypes));
        });
        while (heard < target)
            runDeferredCalls();
        reporter.join();
    }
    state.SetItemsProcessed(state.iterations() * perBatch);
    state.counters["actions/s"]
        = benchmark::Counter(static_cast<double>(state.iterations() * perBatch), benchmark::Counter::kIsRate);
    prefs().setFile(previous);
}
BENCHMARK(BM_ActionsFromAnotherThreadDeliveredOnMain)->Arg(10000)->UseRealTime();

} // namespace
