#include "toolkit/support/MainThread.h"

#include "toolkit/support/Ptr.h"

#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <stdexcept>
#include <thread>
#include <vector>

namespace {

// The queue is process-wide: start each test with nothing left over and no wake-up hook.
class Deferral : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(isMainThread());
        runDeferredCalls();
        setDeferWakeup(nullptr);
    }
    void TearDown() override
    {
        setDeferWakeup(nullptr);
        runDeferredCalls();
    }
};

} // namespace

TEST_F(Deferral, CallsFromManyThreadsEachRunOnceOnTheMainThread)
{
    constexpr int threads = 4;
    constexpr int callsPerThread = 5000;
    std::vector<std::atomic<int>> runs(threads * callsPerThread);
    std::atomic<int> offMainThread { 0 };
    std::atomic<int> wakeups { 0 };
    setDeferWakeup([&] { wakeups.fetch_add(1); });

    std::atomic<int> postersDone { 0 };
    std::vector<std::thread> posters;
    for (int t = 0; t < threads; ++t) {
        posters.emplace_back([&, t] {
            for (int i = 0; i < callsPerThread; ++i) {
                const int slot = t * callsPerThread + i;
                defer([&, slot] {
                    runs[static_cast<size_t>(slot)].fetch_add(1);
                    if (!isMainThread())
                        offMainThread.fetch_add(1);
                });
            }
            postersDone.fetch_add(1);
        });
    }
    // Drain while the posters are still busy, as the window loop would.
    size_t ran = 0;
    while (postersDone.load() < threads) {
        ran += runDeferredCalls();
        std::this_thread::yield();
    }
    for (std::thread& poster : posters)
        poster.join();
    ran += runDeferredCalls();

    EXPECT_EQ(ran, runs.size());
    EXPECT_EQ(offMainThread.load(), 0);
    for (size_t slot = 0; slot < runs.size(); ++slot)
        ASSERT_EQ(runs[slot].load(), 1) << "call " << slot;
    // A post to an empty queue wakes the loop; posts that find work waiting do not.
    EXPECT_GE(wakeups.load(), 1);
    EXPECT_LE(wakeups.load(), threads * callsPerThread);
}

TEST_F(Deferral, CallPostedDuringADrainWaitsForTheNextOne)
{
    std::vector<int> order;
    defer([&] {
        order.push_back(1);
        defer([&] { order.push_back(3); });
    });
    defer([&] { order.push_back(2); });

    EXPECT_EQ(runDeferredCalls(), 2u);
    EXPECT_EQ(order, (std::vector<int> { 1, 2 }));
    EXPECT_EQ(numDeferredCalls(), 1u);
    EXPECT_EQ(runDeferredCalls(), 1u);
    EXPECT_EQ(order, (std::vector<int> { 1, 2, 3 }));
}

TEST_F(Deferral, OtherThreadsCannotDrain)
{
    int ran = 0;
    defer([&] { ++ran; });
    size_t drainedElsewhere = 99;
    bool mainElsewhere = true;
    std::thread([&] {
        mainElsewhere = isMainThread();
        drainedElsewhere = runDeferredCalls();
    }).join();
    EXPECT_FALSE(mainElsewhere);
    EXPECT_EQ(drainedElsewhere, 0u);
    EXPECT_EQ(ran, 0);
    EXPECT_EQ(runDeferredCalls(), 1u);
    EXPECT_EQ(ran, 1);
}

TEST_F(Deferral, ThrowingCallLeavesTheRestQueuedInOrder)
{
    std::vector<int> order;
    defer([&] { order.push_back(1); });
    defer([] { throw std::runtime_error("deferred failure"); });
    defer([&] { order.push_back(2); });
    defer([&] { order.push_back(3); });

    EXPECT_THROW(runDeferredCalls(), std::runtime_error);
    EXPECT_EQ(order, (std::vector<int> { 1 }));
    defer([&] { order.push_back(4); });
    EXPECT_EQ(runDeferredCalls(), 3u);
    EXPECT_EQ(order, (std::vector<int> { 1, 2, 3, 4 }));
}

TEST_F(Deferral, MethodCallKeepsASharedObjectAliveUntilItRuns)
{
    struct Counter : public iObject {
        Counter(int& totalOut, bool& destroyedOut)
            : total(totalOut)
            , destroyed(destroyedOut)
        {
        }
        ~Counter() override { destroyed = true; }
        void add(int amount, int times) { total += amount * times; }
        int& total;
        bool& destroyed;
    };
    int total = 0;
    bool destroyed = false;
    {
        auto counter = Cv::make<Counter>(total, destroyed);
        defer(DeferableMethodCallback(counter, &Counter::add, 3, 5));
    }
    EXPECT_FALSE(destroyed);
    runDeferredCalls();
    EXPECT_EQ(total, 15);
    EXPECT_TRUE(destroyed); // the queued call gave its reference back once it had run
}

TEST(MainThread, SetMainThreadMovesTheRole)
{
    ASSERT_TRUE(isMainThread());
    bool workerWasMain = false;
    std::thread([&] {
        setMainThread();
        workerWasMain = isMainThread();
    }).join();
    EXPECT_TRUE(workerWasMain);
    EXPECT_FALSE(isMainThread());
    setMainThread();
    EXPECT_TRUE(isMainThread());
}
