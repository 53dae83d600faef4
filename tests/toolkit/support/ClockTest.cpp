#include "toolkit/support/Clock.h"

#include <gtest/gtest.h>

TEST(Clock, TestClocksStandStillUntilMovedAndNeverTurnTimeBack)
{
    Cv::TestClock outer;
    const double start = service_get_msecs_precise();
    EXPECT_EQ(service_get_msecs_precise(), start);
    outer.advance(399.75);
    EXPECT_DOUBLE_EQ(service_get_msecs_precise(), start + 399.75);

    outer.set(500.9);
    EXPECT_EQ(service_get_msecs(), 500); // whole milliseconds round down
    EXPECT_EQ(service_get_ticks(), 500);
    {
        Cv::TestClock inner;
        EXPECT_DOUBLE_EQ(service_get_msecs_precise(), 500.9);
        inner.advance(250.0);
    }
    // The outer clock carries on from where the inner one stopped.
    EXPECT_EQ(service_get_msecs(), 750);
    outer.advance(1.0);
    EXPECT_DOUBLE_EQ(outer.now(), 751.9);
}

TEST(Clock, RealTimeResumesWhenTheTestClockEnds)
{
    {
        Cv::TestClock clock;
        clock.set(-1.0e9);
        EXPECT_LT(service_get_msecs(), 0);
    }
    const double first = service_get_msecs_precise();
    const double second = service_get_msecs_precise();
    EXPECT_GE(first, 0.0);
    EXPECT_GE(second, first);
}
