// Cost of one notification round, and of handing calls to the main thread.
#include "toolkit/support/MainThread.h"
#include "toolkit/support/Notifier.h"

#include <benchmark/benchmark.h>

#include <vector>

namespace {

void BM_NotifyListeners(benchmark::State& state)
{
    Notifier notifier;
    int heard = 0;
    std::vector<Cv::Ptr<Cv::Guard>> guards;
    for (int64_t i = 0; i < state.range(0); ++i)
        guards.push_back(notifier.addListener(Cv::makeListener<NotifyMsg>([&heard](const NotifyMsg&) { ++heard; })));
    const NotifyMsg msg("param_changed");
    for (auto _ : state) {
        notifier.issueNotification(msg, 11);
        benchmark::DoNotOptimize(heard);
    }
    state.SetItemsProcessed(state.iterations());
    state.counters["notifications/s"]
        = benchmark::Counter(static_cast<double>(state.iterations()), benchmark::Counter::kIsRate);
}
BENCHMARK(BM_NotifyListeners)->Arg(1)->Arg(100);

// Listeners registered for other types cost the walk but not the call.
void BM_NotifyOneOfManyTypes(benchmark::State& state)
{
    Notifier notifier;
    int heard = 0;
    std::vector<Cv::Ptr<Cv::Guard>> guards;
    for (int type = 0; type < 100; ++type)
        guards.push_back(
            notifier.registerNotification(Cv::makeListener<NotifyMsg>([&heard](const NotifyMsg&) { ++heard; }), type));
    const NotifyMsg msg("tick");
    for (auto _ : state) {
        notifier.issueNotification(msg, 42);
        benchmark::DoNotOptimize(heard);
    }
    state.counters["notifications/s"]
        = benchmark::Counter(static_cast<double>(state.iterations()), benchmark::Counter::kIsRate);
}
BENCHMARK(BM_NotifyOneOfManyTypes);

void BM_RegisterAndRelease(benchmark::State& state)
{
    Notifier notifier;
    const auto listener = Cv::makeListener<NotifyMsg>([](const NotifyMsg&) {});
    for (auto _ : state) {
        auto guard = notifier.addListener(listener);
        benchmark::DoNotOptimize(guard);
    }
}
BENCHMARK(BM_RegisterAndRelease);

// Posting a batch of calls and draining it on the main thread.
void BM_DeferAndDrain(benchmark::State& state)
{
    int ran = 0;
    const int64_t batch = state.range(0);
    for (auto _ : state) {
        for (int64_t i = 0; i < batch; ++i)
            defer([&ran] { ++ran; });
        runDeferredCalls();
    }
    benchmark::DoNotOptimize(ran);
    state.SetItemsProcessed(state.iterations() * batch);
}
BENCHMARK(BM_DeferAndDrain)->Arg(1)->Arg(1000);

} // namespace
