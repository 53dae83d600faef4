// Sliders, scroll bars and gauges: dragging, paging, keys, and clamping at both ends of every range.

#include "toolkit/testing/UiHarness.h"
#include "toolkit/ui/UifStd.h"
#include "toolkit/widgets/Gauge.h"
#include "toolkit/widgets/ScrollBar.h"
#include "toolkit/widgets/Slider.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

class SliderTest : public ::testing::Test {
protected:
    UiHarness ui{400, 300};

    Slider* slider(double lo = 0.0, double hi = 1.0, uint16_t width = 210)
    {
        auto* s = ui.make<Slider>(Slider::InitArgs(Palette().highlight(), width, 22, UifStd::getColourScheme()),
                                  Glob::BottomLeft(50, 50));
        s->setValueRange(lo, hi);
        return s;
    }
    int mid(const Slider* s) const { return s->getHeight() / 2; }
};

TEST_F(SliderTest, PositionsAndPixelsMapBothWaysAcrossTheTrack)
{
    Slider* s = slider(-10.0, 30.0);
    EXPECT_EQ(s->valueToX(-10.0), s->trackLeft());
    EXPECT_EQ(s->valueToX(30.0), s->trackRight());
    EXPECT_EQ(s->valueToX(1000.0), s->trackRight()) << "values outside the range are drawn at the end";
    EXPECT_DOUBLE_EQ(s->xToValue(s->trackLeft() - 50), -10.0);
    EXPECT_DOUBLE_EQ(s->xToValue(s->trackRight() + 50), 30.0);
    for (double v : {-10.0, -2.5, 10.0, 29.0})
        EXPECT_NEAR(s->xToValue(s->valueToX(v)), v, 40.0 / (s->trackRight() - s->trackLeft()));
}

TEST_F(SliderTest, ClickInTheTrackJumpsAndDraggingClampsAtBothEnds)
{
    Slider* s = slider(0.0, 100.0);
    const int x75 = s->valueToX(75.0);
    ui.click(s, XY<int>(x75, mid(s)));
    EXPECT_NEAR(s->getValue(), 75.0, 0.6);
    EXPECT_EQ(ui.owner().count(Slider::changedMsg), 1u);

    ui.drag(s, {s->valueToX(s->getValue()), mid(s)}, {s->getWidth() + 100, mid(s)});
    EXPECT_DOUBLE_EQ(s->getValue(), 100.0);
    ui.drag(s, {s->valueToX(100.0), mid(s)}, {-300, mid(s)});
    EXPECT_DOUBLE_EQ(s->getValue(), 0.0);

    ui.owner().clear();
    ui.drag(s, {s->valueToX(0.0), mid(s)}, {-30, mid(s)});
    EXPECT_EQ(ui.owner().count(), 0u) << "pushing past the end changes nothing, so nobody is told";
}

TEST_F(SliderTest, ThumbKeepsWhereItWasGripped)
{
    Slider* s = slider(0.0, 100.0);
    s->setPosition(50.0);
    const int centre = s->valueToX(50.0);
    // Gripped 3 pixels right of its centre and moved 20 pixels: the centre moves 20 pixels, no jump.
    ui.drag(s, {centre + 3, mid(s)}, {centre + 23, mid(s)});
    EXPECT_NEAR(s->getValue(), s->xToValue(centre + 20), 1e-9);
}

TEST_F(SliderTest, KeysStepPageAndJumpToTheEnds)
{
    Slider* s = slider(0.0, 200.0);
    ui.focus(s);
    ui.pressKey(Event::KeyRight);
    EXPECT_DOUBLE_EQ(s->getValue(), 2.0);
    ui.pressKey(Event::KeyPageUp);
    EXPECT_DOUBLE_EQ(s->getValue(), 22.0);
    ui.pressKey(Event::KeyEnd);
    EXPECT_DOUBLE_EQ(s->getValue(), 200.0);
    ui.pressKey(Event::KeyUp);
    EXPECT_DOUBLE_EQ(s->getValue(), 200.0);
    s->setStep(5.0);
    ui.pressKey(Event::KeyDown);
    EXPECT_DOUBLE_EQ(s->getValue(), 195.0);
    ui.pressKey(Event::KeyHome);
    EXPECT_DOUBLE_EQ(s->getValue(), 0.0);
    const size_t heard = ui.owner().count(Slider::changedMsg);
    ui.pressKey(Event::KeyLeft);
    EXPECT_EQ(ui.owner().count(Slider::changedMsg), heard) << "no change at the minimum";
    EXPECT_EQ(heard, 5u);
}

TEST_F(SliderTest, RangesAndPositionsFromCodeAreClampedAndSilent)
{
    Slider* s = slider(10.0, -10.0);
    EXPECT_DOUBLE_EQ(s->getMinimum(), -10.0) << "ends given the wrong way round";
    EXPECT_DOUBLE_EQ(s->getMaximum(), 10.0);
    s->setPosition(25.0);
    EXPECT_DOUBLE_EQ(s->getValue(), 10.0);
    s->setPosition(std::numeric_limits<double>::quiet_NaN());
    EXPECT_DOUBLE_EQ(s->getValue(), 10.0);
    s->setValueRange(0.0, 5.0);
    EXPECT_DOUBLE_EQ(s->getValue(), 5.0) << "a narrower range pulls the value in";
    s->setValueRange(3.0, 3.0);
    EXPECT_DOUBLE_EQ(s->getValue(), 3.0);
    EXPECT_EQ(s->valueToX(3.0), s->trackLeft());
    ui.click(s, XY<int>(s->getWidth() - 5, mid(s)));
    EXPECT_DOUBLE_EQ(s->getValue(), 3.0);
    EXPECT_EQ(ui.owner().count(), 0u);
}

TEST_F(SliderTest, ThePointOfInterestIsDrawnUnderTheTrack)
{
    Slider* s = slider(0.0, 1.0);
    s->setPosition(0.0);
    const XY<int> at(s->valueToX(0.6), mid(s) - 5);
    const Colour before = ui.pixelAt(s, at);
    s->setPointOfInterest(0.6);
    const Colour with = ui.pixelAt(s, at);
    EXPECT_FALSE(with.isCloseTo(before, 30.0 / 255));
    s->clearPointOfInterest();
    EXPECT_TRUE(ui.pixelAt(s, at).isCloseTo(before));
}

TEST_F(SliderTest, DisabledSlidersIgnoreTheUser)
{
    Slider* s = slider(0.0, 1.0);
    s->setEnabled(false);
    ui.click(s, XY<int>(s->valueToX(0.8), mid(s)));
    EXPECT_DOUBLE_EQ(s->getValue(), 0.0);
    EXPECT_EQ(ui.owner().count(), 0u);
}

// ---------------------------------------------------------------------------------------------------------
// Scroll bars

class ScrollBarTest : public ::testing::Test {
protected:
    UiHarness ui{400, 300};

    ScrollBar* bar(double size)
    {
        ScrollBar::InitArgs args(200);
        args.thumbSize = size;
        return ui.make<ScrollBar>(args, Glob::BottomLeft(30, 30));
    }
};

TEST_F(ScrollBarTest, ThePositionIsClampedAtBothEnds)
{
    ScrollBar* b = bar(0.25);
    b->setThumbPos(2.0);
    EXPECT_DOUBLE_EQ(b->getThumbPos(), 0.75);
    b->setThumbPos(-1.0);
    EXPECT_DOUBLE_EQ(b->getThumbPos(), 0.0);
    b->setThumbPos(0.7);
    b->setThumbSize(0.5);
    EXPECT_DOUBLE_EQ(b->getThumbPos(), 0.5) << "a bigger thumb pulls the position back";
    b->setThumbSize(3.0);
    EXPECT_DOUBLE_EQ(b->getThumbSize(), 1.0);
    EXPECT_DOUBLE_EQ(b->getThumbPos(), 0.0);
    EXPECT_FALSE(b->isScrollable());
}

TEST_F(ScrollBarTest, TheThumbIsTheVisibleFractionAndStaysInTheTrack)
{
    ScrollBar* b = bar(0.5);
    const GlobBox track = b->trackBox();
    EXPECT_NEAR(b->thumbBox().height(), track.height() / 2, 1);
    EXPECT_EQ(b->thumbBox().top(), track.top());
    b->setThumbPos(0.5);
    EXPECT_EQ(b->thumbBox().bottom(), track.bottom());
    b->setThumbSize(0.001);
    EXPECT_GE(b->thumbBox().height(), 8) << "a sliver of a view still has a grip";
    b->setThumbPos(1.0);
    EXPECT_GE(b->thumbBox().bottom(), track.bottom());
}

TEST_F(ScrollBarTest, ArrowsAndTheWheelAskTheOwnerToScroll)
{
    ScrollBar* b = bar(0.25);
    ui.click(b, b->upButtonBox().centre());
    ui.click(b, b->downButtonBox().centre());
    ui.wheel(b, 2);
    ui.wheel(b, -1);
    EXPECT_EQ(ui.owner().names(), (std::vector<std::string>{ScrollBar::upButtonPressedMsg,
                                                             ScrollBar::downButtonPressedMsg,
                                                             ScrollBar::upButtonPressedMsg,
                                                             ScrollBar::upButtonPressedMsg,
                                                             ScrollBar::downButtonPressedMsg}));
    EXPECT_DOUBLE_EQ(b->getThumbPos(), 0.0) << "the owner moves the view and sets the thumb, not the bar";
    for (const char* name : {ScrollBar::thumbMovedMsg, ScrollBar::upButtonPressedMsg, ScrollBar::downButtonPressedMsg})
        EXPECT_TRUE(ScrollBar::isScrollBarMsg(name));
    EXPECT_FALSE(ScrollBar::isScrollBarMsg("button_clicked"));
}

TEST_F(ScrollBarTest, ClicksInTheTrackPageUntilTheEnd)
{
    ScrollBar* b = bar(0.25);
    const XY<int> nearBottom(b->getWidth() / 2, b->trackBox().bottom() + 2);
    for (double expected : {0.25, 0.5, 0.75}) {
        ui.click(b, nearBottom);
        EXPECT_DOUBLE_EQ(b->getThumbPos(), expected);
    }
    ui.click(b, nearBottom);
    EXPECT_DOUBLE_EQ(b->getThumbPos(), 0.75);
    EXPECT_EQ(ui.owner().count(ScrollBar::thumbMovedMsg), 3u) << "nothing moved at the end, nothing told";

    const XY<int> nearTop(b->getWidth() / 2, b->trackBox().top() - 2);
    ui.click(b, nearTop);
    EXPECT_DOUBLE_EQ(b->getThumbPos(), 0.5);
}

TEST_F(ScrollBarTest, DraggingTheThumbFollowsThePointerAndClamps)
{
    ScrollBar* b = bar(0.25);
    const XY<int> grip = b->thumbBox().centre();
    ui.drag(b, grip, {grip.x, -500});
    EXPECT_DOUBLE_EQ(b->getThumbPos(), 0.75);
    EXPECT_GE(ui.owner().count(ScrollBar::thumbMovedMsg), 1u);

    const XY<int> back = b->thumbBox().centre();
    const int travel = b->trackBox().height() - b->thumbBox().height();
    ui.drag(b, back, {back.x, back.y + travel / 3});
    EXPECT_NEAR(b->getThumbPos(), 0.5, 0.01);

    b->setThumbSize(1.0);
    ui.owner().clear();
    ui.drag(b, b->trackBox().centre(), {5, 5});
    EXPECT_EQ(ui.owner().count(), 0u) << "nothing to scroll";
}

TEST_F(ScrollBarTest, HoldingAnArrowOrTheTrackRepeatsOnTheToolkitClock)
{
    ScrollBar* b = bar(0.1);
    ui.press(b, b->downButtonBox().centre());
    EXPECT_EQ(ui.owner().count(ScrollBar::downButtonPressedMsg), 1u);
    ui.advance(ScrollBar::repeatDelay - 1);
    ui.step();
    EXPECT_EQ(ui.owner().count(ScrollBar::downButtonPressedMsg), 1u);
    ui.advance(1);
    ui.step();
    EXPECT_EQ(ui.owner().count(ScrollBar::downButtonPressedMsg), 2u);
    ui.advance(ScrollBar::repeatInterval);
    ui.step();
    EXPECT_EQ(ui.owner().count(ScrollBar::downButtonPressedMsg), 3u);
    ui.release(b, b->downButtonBox().centre());
    ui.advance(1000);
    ui.step();
    EXPECT_EQ(ui.owner().count(ScrollBar::downButtonPressedMsg), 3u) << "the release stops the repeat";

    // Holding the track pages towards the pointer and stops when the thumb reaches it.
    const XY<int> halfway(b->getWidth() / 2, b->trackBox().bottom() + b->trackBox().height() / 2);
    ui.press(b, halfway);
    for (int i = 0; i < 20; ++i) {
        ui.advance(ScrollBar::repeatDelay);
        ui.step();
    }
    ui.release(b, halfway);
    const GlobBox thumb = b->thumbBox();
    EXPECT_TRUE(thumb.bottom() <= halfway.y && halfway.y < thumb.top() + 1) << "the thumb stopped under the pointer";
    EXPECT_GT(b->getThumbPos(), 0.3);
    EXPECT_LT(b->getThumbPos(), 0.6);
}

TEST_F(ScrollBarTest, AnOwnerMayDestroyTheBarWhileItRepeats)
{
    ScrollBar* b = bar(0.1);
    int heard = 0;
    ui.owner().onMessage = [&](const RecordingOwner::Received& r) {
        if (++heard == 2)
            Glob::destroy(r.sender);
    };
    ui.press(b, b->upButtonBox().centre());
    ui.advance(ScrollBar::repeatDelay);
    ui.step();
    EXPECT_FALSE(is_good_glob_ptr(b));
    ui.advance(ScrollBar::repeatDelay);
    ui.step();
    EXPECT_EQ(heard, 2);
    ui.owner().onMessage = nullptr;
}

// ---------------------------------------------------------------------------------------------------------
// Gauges

TEST(GaugeTest, TheMeasureIsClampedAndTheBarFilledToIt)
{
    UiHarness ui(400, 300);
    auto* g = ui.make<Gauge>(Gauge::InitArgs(202, 22, UifStd::getColourScheme()), Glob::BottomLeft(20, 20));
    const Colour bar = Colour::fromBytes(40, 180, 60);
    const Colour back = Colour::fromBytes(10, 10, 40);
    g->setCols(bar, back);
    g->setMeasure(0.5);
    EXPECT_EQ(g->filledRight(), 101);
    EXPECT_FALSE(ui.pixelAt(g, {50, 11}).isCloseTo(back, 20.0 / 255));
    EXPECT_TRUE(ui.pixelAt(g, {150, 11}).isCloseTo(back));

    g->setMeasure(1.5);
    EXPECT_DOUBLE_EQ(g->getMeasure(), 1.0);
    EXPECT_FALSE(ui.pixelAt(g, {198, 11}).isCloseTo(back, 20.0 / 255));
    g->setMeasure(-0.2);
    EXPECT_DOUBLE_EQ(g->getMeasure(), 0.0);
    g->setMeasure(std::numeric_limits<double>::quiet_NaN());
    EXPECT_DOUBLE_EQ(g->getMeasure(), 0.0);
    EXPECT_TRUE(ui.pixelAt(g, {3, 11}).isCloseTo(back));

    // display() paints at once, for loops that do not return to the event loop.
    g->setMeasure(1.0);
    g->display();
    EXPECT_FALSE(ui.screen().needsPaint());
}

} // namespace
