#include "toolkit/support/BackgroundTasks.h"

#include "toolkit/support/MainThread.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

TEST(BackgroundTasks, PollRunsDeferredCallsThenEachPollerOnce)
{
    std::vector<char> order;
    const auto a = Cv::addBackgroundPoller([&] { order.push_back('a'); });
    const auto b = Cv::addBackgroundPoller([&] { order.push_back('b'); });
    defer([&] { order.push_back('d'); });

    glob_poll_background_tasks();
    EXPECT_EQ(order, (std::vector<char> { 'd', 'a', 'b' }));

    EXPECT_TRUE(Cv::removeBackgroundPoller(a));
    EXPECT_FALSE(Cv::removeBackgroundPoller(a));
    glob_poll_background_tasks();
    EXPECT_EQ(order, (std::vector<char> { 'd', 'a', 'b', 'b' }));
    EXPECT_TRUE(Cv::removeBackgroundPoller(b));
}

TEST(BackgroundTasks, PollerThatPollsAgainIsNotReentered)
{
    int depth = 0;
    int maxDepth = 0;
    int deferredRuns = 0;
    const auto id = Cv::addBackgroundPoller([&] {
        ++depth;
        maxDepth = std::max(maxDepth, depth);
        // A long loop inside a poller still lets deferred calls through.
        defer([&] { ++deferredRuns; });
        glob_poll_background_tasks();
        --depth;
    });
    glob_poll_background_tasks();
    EXPECT_EQ(maxDepth, 1);
    EXPECT_EQ(deferredRuns, 1);
    Cv::removeBackgroundPoller(id);
    runDeferredCalls();
}

TEST(BackgroundTasks, PollerMayRemoveItselfAndOthers)
{
    int firstRuns = 0;
    int secondRuns = 0;
    Cv::BackgroundPollerId first = 0;
    Cv::BackgroundPollerId second = 0;
    first = Cv::addBackgroundPoller([&] {
        ++firstRuns;
        Cv::removeBackgroundPoller(first);
        Cv::removeBackgroundPoller(second);
    });
    second = Cv::addBackgroundPoller([&] { ++secondRuns; });
    glob_poll_background_tasks();
    glob_poll_background_tasks();
    EXPECT_EQ(firstRuns, 1);
    EXPECT_EQ(secondRuns, 0);
}
