#include "toolkit/support/Clock.h"

#include <gtest/gtest.h>

#include <cmath>

TEST(Clock, TestClockStandsStillUntilMoved)
{
    Cv::TestClock clock;
    const double start = service_get_msecs_precise();
    EXPECT_EQ(service_get_msecs_precise(), start);

    clock.advance(399.75);
    EXPECT_DOUBLE_EQ(service_get_msecs_precise(), start + 399.75);

    clock.set(1000.9);
    EXPECT_EQ(service_get_msecs(), 1000); // whole milliseconds round down
    EXPECT_EQ(service_get_ticks(), 1000);
}

TEST(Clock, TestClockStartsOnAWholeMillisecondSoElapsedTimesAreExact)
{
    Cv::TestClock clock;
    const double start = service_get_msecs_precise();
    clock.advance(30000.0);
    EXPECT_EQ(service_get_msecs_precise() - start, 30000.0);
    EXPECT_EQ(start, std::floor(start));
}

TEST(Clock, NestedTestClockNeverTurnsTimeBack)
{
    Cv::TestClock outer;
    outer.set(500.0);
    {
        Cv::TestClock inner;
        EXPECT_EQ(service_get_msecs(), 500);
        inner.advance(250.0);
    }
    EXPECT_EQ(service_get_msecs(), 750);
    outer.advance(1.0);
    EXPECT_EQ(service_get_msecs(), 751);
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
