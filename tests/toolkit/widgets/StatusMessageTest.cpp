// Transient status messages on the toolkit clock, and titled widgets.

#include "toolkit/testing/UiHarness.h"
#include "toolkit/ui/GlobManager.h"
#include "toolkit/ui/UifStd.h"
#include "toolkit/widgets/Button.h"
#include "toolkit/widgets/Checkbox.h"
#include "toolkit/widgets/Slider.h"
#include "toolkit/widgets/StatusMessage.h"
#include "toolkit/widgets/TitledGlob.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

class StatusMessageTest : public ::testing::Test {
protected:
    UiHarness ui{640, 480};
};

TEST_F(StatusMessageTest, GoesAwayAfterItsTimeOnTheToolkitClock)
{
    StatusMessage* m = StatusMessage::make(UIString(L"Saved"), {100, 100}, 2000.0);
    ASSERT_NE(m, nullptr);
    const IdStamp stamp = m->getIdStamp();
    EXPECT_TRUE(m->isShowing());
    ui.advance(1999);
    ui.step();
    EXPECT_TRUE(is_good_glob_ptr(m, stamp));
    ui.advance(1);
    ui.step();
    EXPECT_FALSE(is_good_glob_ptr(m, stamp));
    ui.step(); // the screen paints without it
}

TEST_F(StatusMessageTest, AClickDismissesItAndATimeoutOfZeroWaitsForOne)
{
    StatusMessage* m = StatusMessage::make(UIString(L"Read me"), {100, 100}, 0.0);
    const IdStamp stamp = m->getIdStamp();
    ui.advance(60 * 60 * 1000.0);
    ui.step();
    EXPECT_TRUE(is_good_glob_ptr(m, stamp));
    ui.click(m);
    EXPECT_FALSE(is_good_glob_ptr(m, stamp));
}

TEST_F(StatusMessageTest, AddMessageAppendsGrowsAndRestartsTheTime)
{
    StatusMessage* m = StatusMessage::make(UIString(L"First"), {100, 100}, 1000.0);
    const IdStamp stamp = m->getIdStamp();
    const int height = m->getHeight();
    const int bottom = m->getY();
    ui.advance(900);
    m->addMessage(UIString(L"Second, a longer line that will have to wrap inside the message box width"));
    EXPECT_EQ(m->getText(), L"First\nSecond, a longer line that will have to wrap inside the message box width");
    EXPECT_GT(m->getHeight(), height + 20);
    EXPECT_EQ(m->getY(), bottom) << "it grows upward from its anchor";
    ui.advance(900);
    ui.step();
    EXPECT_TRUE(is_good_glob_ptr(m, stamp)) << "the time started again at the addition";
    ui.advance(100);
    ui.step();
    EXPECT_FALSE(is_good_glob_ptr(m, stamp));
}

TEST_F(StatusMessageTest, ThePointerRestingOnItHoldsTheTime)
{
    StatusMessage* m = StatusMessage::make(UIString(L"Hover me"), {100, 100}, 1000.0);
    const IdStamp stamp = m->getIdStamp();
    ui.moveTo(m);
    ui.advance(5000);
    ui.step();
    EXPECT_TRUE(is_good_glob_ptr(m, stamp));
    ui.moveTo(&ui.owner(), XY<int>(5, 5));
    ui.advance(999);
    ui.step();
    EXPECT_TRUE(is_good_glob_ptr(m, stamp)) << "the full time again once the pointer leaves";
    ui.advance(1);
    ui.step();
    EXPECT_FALSE(is_good_glob_ptr(m, stamp));
}

TEST_F(StatusMessageTest, ACopyMadeUnderThePointerGoesAwayOnItsOwnTime)
{
    StatusMessage* m = StatusMessage::make(UIString(L"Hover me"), {100, 100}, 1000.0);
    const IdStamp stamp = m->getIdStamp();
    ui.moveTo(m);
    auto* copy = new StatusMessage(*m);
    ASSERT_TRUE(GlobManager::realize(copy));
    const IdStamp copyStamp = copy->getIdStamp();
    EXPECT_EQ(copy->getText(), L"Hover me");
    ui.advance(1000);
    ui.step();
    EXPECT_FALSE(is_good_glob_ptr(copy, copyStamp)) << "the pointer rests on the original, not on the copy";
    EXPECT_TRUE(is_good_glob_ptr(m, stamp));
}

// A message with a check box of its own, as a first-use hint has.
class HintMessage : public StatusMessage {
public:
    explicit HintMessage(const InitArgs& args) : StatusMessage(args)
    {
        const uint16_t h = static_cast<uint16_t>(UifStd::getButtonHeight());
        setFooterHeight(h);
        const UIString label(L"Show hints");
        box = addWidget<Checkbox>(Checkbox::InitArgs(label, true, Checkbox::BoxFirst, Checkbox::calcWidth(label), h),
                                  BottomLeft(getUserArea().width() - Checkbox::calcWidth(label), 0));
    }
    bool handleMessageEvent(LightweightString<char> name, Glob* sender) override
    {
        if (name.startsWith("Checkbox ")) {
            heard = name;
            return true;
        }
        return StatusMessage::handleMessageEvent(name, sender);
    }
    Checkbox* box = nullptr;
    LightweightString<char> heard;
};

TEST_F(StatusMessageTest, ChildWidgetsTakeTheirOwnClicks)
{
    auto* hint = ui.makeTopLevel<HintMessage>(StatusMessage::InitArgs(UIString(L"Press Space to play"), 300, 0.0),
                                              {50, 50});
    const IdStamp stamp = hint->getIdStamp();
    ui.click(hint->box, hint->box->boxArea().centre());
    ASSERT_TRUE(is_good_glob_ptr(hint, stamp)) << "a click on the check box does not dismiss the message";
    EXPECT_FALSE(hint->box->getValue());
    EXPECT_EQ(hint->heard, Checkbox::uncheckedMsg);
    EXPECT_TRUE(hint->getUserArea().contains(hint->box->getBox())) << "inside the border";
}

// ---------------------------------------------------------------------------------------------------------
// Titled widgets

TEST(TitledGlobTest, TheTitleTakesItsColumnAndTheWidgetTheRest)
{
    UiHarness ui(400, 300);
    using TitledSlider = TitledGlob<Slider>;
    auto* t = ui.make<TitledSlider>(
        TitledSlider::InitArgs(UIString(L"Opacity"), Slider::InitArgs(Palette().highlight(), 120), 80),
        Glob::BottomLeft(10, 10));
    EXPECT_EQ(t->getWidth(), 200);
    EXPECT_EQ(t->widget()->getX(), 80);
    EXPECT_EQ(t->widget()->getWidth(), 120);

    t->resize(300, t->getHeight());
    EXPECT_EQ(t->widget()->getWidth(), 220);
    EXPECT_EQ(t->widget()->getX(), 80);

    // The widget's news reaches the titled widget's owner.
    Slider* s = t->widget();
    ui.click(s, XY<int>(s->valueToX(0.5), s->getHeight() / 2));
    EXPECT_EQ(ui.owner().count(Slider::changedMsg), 1u);

    // Without a column width the title is measured.
    auto* measured = ui.make<TitledGlob<Button>>(
        TitledGlob<Button>::InitArgs(UIString(L"A long legend text"), Button::InitArgs(L"Go", 60, 22)),
        Glob::BottomLeft(10, 100));
    EXPECT_GT(measured->getTitleWidth(), 60);
    EXPECT_EQ(measured->getWidth(), measured->getTitleWidth() + 60);
}

TEST(TitledGlobTest, MadeByTypeName)
{
    UiHarness ui(400, 300);
    GlobCreationInfo info(200, 22);
    info.typeName = "TitledButton";
    info.config.set("title", "Action");
    std::unique_ptr<Glob> made(GlobManager::createGlob(info));
    auto* t = dynamic_cast<TitledGlob<Button>*>(made.get());
    ASSERT_NE(t, nullptr);
    EXPECT_EQ(t->getTitle().getString(), L"Action");
    EXPECT_EQ(t->widget()->getWidth() + t->getTitleWidth(), 200);
    EXPECT_EQ(t->idstring(), "TitledButton");
}

} // namespace
