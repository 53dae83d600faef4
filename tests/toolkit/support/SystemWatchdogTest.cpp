#include "toolkit/support/SystemWatchdog.h"

#include "toolkit/support/Clock.h"

#include <gtest/gtest.h>

namespace {

// The watchdog is process-wide: each test starts from a fresh beat and leaves no life support behind.
class SystemWatchdogTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_EQ(SystemWatchdog::lifeSupportDepth(), 0);
        SystemWatchdog::setHangThreshold(1000.0);
        clock.set(50000.0); // a whole reading, so the boundary sums below are exact
        SystemWatchdog::heartbeat();
    }
    void TearDown() override { SystemWatchdog::setHangThreshold(SystemWatchdog::defaultHangThresholdMsecs); }

    Cv::TestClock clock;
};

} // namespace

TEST_F(SystemWatchdogTest, HungOnlyAfterMoreThanTheThresholdWithoutAHeartbeat)
{
    clock.advance(1000.0);
    EXPECT_FALSE(SystemWatchdog::looksHung());
    clock.advance(0.5);
    EXPECT_TRUE(SystemWatchdog::looksHung());
    EXPECT_DOUBLE_EQ(SystemWatchdog::msecsSinceHeartbeat(), 1000.5);

    SystemWatchdog::heartbeat();
    EXPECT_FALSE(SystemWatchdog::looksHung());
}

TEST_F(SystemWatchdogTest, NestedLifeSupportHoldsUntilTheOutermostEnds)
{
    SystemWatchdog::beginLifeSupport();
    SystemWatchdog::beginLifeSupport();
    clock.advance(5000.0);
    EXPECT_FALSE(SystemWatchdog::looksHung());

    SystemWatchdog::endLifeSupport();
    EXPECT_TRUE(SystemWatchdog::isOnLifeSupport());
    EXPECT_FALSE(SystemWatchdog::looksHung());

    // Ending the outermost counts as a beat: the loop gets a full threshold to come back.
    SystemWatchdog::endLifeSupport();
    EXPECT_FALSE(SystemWatchdog::looksHung());
    clock.advance(1001.0);
    EXPECT_TRUE(SystemWatchdog::looksHung());
}

TEST_F(SystemWatchdogTest, UnmatchedEndIsIgnored)
{
    SystemWatchdog::endLifeSupport();
    EXPECT_EQ(SystemWatchdog::lifeSupportDepth(), 0);
    {
        SystemWatchdog::LifeSupport support;
        EXPECT_EQ(SystemWatchdog::lifeSupportDepth(), 1);
        clock.advance(2000.0);
        EXPECT_FALSE(SystemWatchdog::looksHung());
    }
    EXPECT_EQ(SystemWatchdog::lifeSupportDepth(), 0);
}
