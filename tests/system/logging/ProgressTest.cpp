#include "logging/AutoProgressBar.h"
#include "logging/ProgInd.h"
#include "logging/RenderProgressPanel.h"
#include "logging/detail/VideoWindow.h"
#include "toolkit/gfx/Painter.h"
#include "toolkit/support/BackgroundTasks.h"
#include "toolkit/support/SystemWatchdog.h"
#include "toolkit/testing/UiHarness.h"
#include "toolkit/ui/UifStd.h"
#include "toolkit/widgets/Gauge.h"
#include "toolkit/widgets/TableWidget.h"

#include <gtest/gtest.h>

class ProgIndTest : public ::testing::Test {
protected:
    ProgInd* makeIndicator(double minimum = 0.0, double maximum = 1.0, bool poll = false)
    {
        auto* made = new ProgInd(UIString(L"Export"), 400, 0, UifStd::getColourScheme(), minimum, maximum, poll);
        ui.show(made, { 100, 100 });
        return made;
    }
    LightweightString<wchar_t> text() const { return indicator->getGauge()->getString().getString(); }
    double measure() const { return indicator->getGauge()->getMeasure(); }

    UiHarness ui;
    ProgInd* indicator = makeIndicator();
};

TEST_F(ProgIndTest, AnUpdateWithin11MsOfTheLastIsDropped)
{
    indicator->update_progress(L"a", 0.2);
    ui.clock().advance(5);
    indicator->update_progress(L"b", 0.3);
    EXPECT_EQ(text(), L"a");
    ui.clock().advance(6);
    indicator->update_progress(L"c", 0.4);
    EXPECT_EQ(text(), L"c");
}

TEST_F(ProgIndTest, TheFinalUpdateAlwaysPasses)
{
    indicator->update_progress(L"a", 0.2);
    ui.clock().advance(5);
    indicator->update_progress(L"done", 1.0);
    EXPECT_EQ(text(), L"done");
    EXPECT_DOUBLE_EQ(measure(), 1.0);
}

TEST_F(ProgIndTest, ValuesOutsideTheRangeAreDrawnAtTheNearerEnd)
{
    indicator = makeIndicator(10.0, 20.0);
    indicator->update_progress(L"", 25.0);
    EXPECT_DOUBLE_EQ(measure(), 1.0);
    ui.clock().advance(20);
    indicator->update_progress(L"", 5.0);
    EXPECT_DOUBLE_EQ(measure(), 0.0);
    ui.clock().advance(20);
    indicator->update_progress(L"", 15.0);
    EXPECT_DOUBLE_EQ(measure(), 0.5);
}

TEST_F(ProgIndTest, EstimatesAreSmoothedWithTheOneBefore)
{
    indicator->showTimeRemaining(true);
    // 100 s left, then 80 s, then 80 s again.
    ui.clock().advance(100000);
    indicator->update_progress(L"Export", 0.5);
    EXPECT_EQ(text(), L"Export  (00:01:40 remaining)");
    ui.clock().advance(20000); // 120 s elapsed: 0.6 done leaves 80 s
    indicator->update_progress(L"Export", 0.6);
    EXPECT_EQ(text(), L"Export  (00:01:30 remaining)");
    ui.clock().advance(40000); // 160 s: 2/3 done leaves 80 s
    indicator->update_progress(L"Export", 2.0 / 3.0);
    EXPECT_EQ(text(), L"Export  (00:01:20 remaining)");
}

TEST_F(ProgIndTest, NoEstimateIsShownBeforeAnythingIsDone)
{
    indicator->showTimeRemaining(true);
    ui.clock().advance(1000);
    indicator->update_progress(L"Starting", 0.0);
    EXPECT_EQ(text(), L"Starting");
}

TEST_F(ProgIndTest, ThePollFlagLetsBackgroundTasksRunEvenWhenThrottled)
{
    indicator = makeIndicator(0.0, 1.0, true);
    int polls = 0;
    const Cv::BackgroundPollerId poller = Cv::addBackgroundPoller([&polls] { ++polls; });
    indicator->update_progress(L"", 0.1);
    indicator->update_progress(L"", 0.2); // throttled
    Cv::removeBackgroundPoller(poller);
    EXPECT_EQ(polls, 2);
}

TEST_F(ProgIndTest, AnEmptyTitleBecomesTheWaitText)
{
    auto* untitled = new ProgInd(UIString());
    ui.show(untitled, { 10, 10 });
    EXPECT_EQ(untitled->getTitle().getString(), L"Please wait");
}

TEST_F(ProgIndTest, MakeCentresTheIndicatorOverItsParent)
{
    auto* parent = new StandardPanel(StandardPanel::InitArgs(UIString(L"Bin"), 600, 300));
    ui.show(parent, { 100, 200 });
    ProgInd* made = ProgInd::make(UIString(L"Import"), parent);
    ASSERT_NE(made, nullptr);
    EXPECT_EQ(made->getScreenPos(), XY<int>(100 + 300 - 200, 200 + 150 - ProgInd::calcHeight() / 2));
    EXPECT_EQ(made->getWidth(), 400);
}


class AutoProgressBarTest : public ::testing::Test {
protected:
    UiHarness ui;
};

TEST_F(AutoProgressBarTest, ASlowJobShowsAnIndicatorAtItsFirstStepAfterASecond)
{
    AutoProgressBar bar(&ui.owner(), UIString(L"Import"), 10);
    ui.clock().advance(2000);
    bar.inc();
    ASSERT_NE(bar.getIndicator(), nullptr);
    ui.clock().advance(2000);
    bar.inc();
    EXPECT_DOUBLE_EQ(bar.getIndicator()->getGauge()->getMeasure(), 0.2);
}

TEST_F(AutoProgressBarTest, AJobThreeQuartersDoneWithinASecondNeverShowsOne)
{
    AutoProgressBar bar(&ui.owner(), UIString(L"Import"), 4);
    for (int i = 0; i < 3; ++i) {
        ui.clock().advance(300);
        bar.inc();
    }
    ui.clock().advance(5000);
    bar.inc();
    EXPECT_EQ(bar.getIndicator(), nullptr);
}

TEST_F(AutoProgressBarTest, TheWatchdogIsOnLifeSupportWhileTheBarLivesAndItsIndicatorClosesWithIt)
{
    const int depth = SystemWatchdog::lifeSupportDepth();
    GlobWatch indicator;
    {
        AutoProgressBar bar(&ui.owner(), UIString(L"Import"), 10);
        EXPECT_EQ(SystemWatchdog::lifeSupportDepth(), depth + 1);
        ui.clock().advance(1500);
        bar.inc();
        indicator = GlobWatch(bar.getIndicator());
        ASSERT_TRUE(indicator);
    }
    EXPECT_EQ(SystemWatchdog::lifeSupportDepth(), depth);
    EXPECT_FALSE(indicator);
}

TEST_F(AutoProgressBarTest, ACopyNeverClosesTheOriginalsIndicator)
{
    AutoProgressBar bar(&ui.owner(), UIString(L"Import"), 10);
    ui.clock().advance(1500);
    bar.inc();
    { AutoProgressBar copy(bar); }
    EXPECT_NE(bar.getIndicator(), nullptr);
}

TEST_F(AutoProgressBarTest, AMovedBarClosesTheIndicatorItTookOver)
{
    AutoProgressBar bar(&ui.owner(), UIString(L"Import"), 10);
    ui.clock().advance(1500);
    bar.inc();
    const GlobWatch indicator(bar.getIndicator());
    ASSERT_TRUE(indicator);
    { AutoProgressBar moved(std::move(bar)); }
    EXPECT_FALSE(indicator);
}

class RenderProgressPanelTest : public ::testing::Test {
protected:
    RenderProgressPanel* makePanel()
    {
        auto* made = new RenderProgressPanel(280, 2.0, Colour(0, 0, 0));
        ui.show(made, { 50, 50 });
        return made;
    }
    UiHarness ui;
    RenderProgressPanel* panel = makePanel();
};


TEST_F(RenderProgressPanelTest, TheFrameIsDrawnScaledIntoThePicture)
{
    Pictor::Image frame(4, 2);
    frame.fill(Colour(1.0, 0.0, 0.0));
    RenderProgressPanel::ProgressSnapshot snapshot;
    snapshot.fraction = 0.5;
    snapshot.image = frame;
    panel->handleProgressUpdate(snapshot);
    const GlobBox area = panel->getAreaForImage();
    EXPECT_TRUE(ui.pixel({ area.left() + 2, area.bottom() + 2 }).isCloseTo(Colour(1.0, 0.0, 0.0), 0.05));
    EXPECT_TRUE(ui.pixel({ area.right() - 3, area.top() - 3 }).isCloseTo(Colour(1.0, 0.0, 0.0), 0.05));
}

TEST_F(RenderProgressPanelTest, AllPanelsShareOneThrottleTime)
{
    RenderProgressPanel* other = makePanel();
    ui.clock().advance(100);
    RenderProgressPanel::ProgressSnapshot snapshot;
    snapshot.fraction = 0.3;
    panel->handleProgressUpdate(snapshot);
    ui.clock().advance(5);
    snapshot.fraction = 0.4;
    other->handleProgressUpdate(snapshot);
    EXPECT_DOUBLE_EQ(other->getGauge()->getMeasure(), 0.0);
    snapshot.fraction = 1.0;
    other->handleProgressUpdate(snapshot);
    EXPECT_DOUBLE_EQ(other->getGauge()->getMeasure(), 1.0);
}

TEST_F(RenderProgressPanelTest, TheGaugeShowsTheTimeRemaining)
{
    ui.clock().advance(30000);
    RenderProgressPanel::ProgressSnapshot snapshot;
    snapshot.fraction = 0.25;
    panel->handleProgressUpdate(snapshot);
    EXPECT_EQ(panel->getGauge()->getString().getString(), L"00:01:30 remaining");
}
