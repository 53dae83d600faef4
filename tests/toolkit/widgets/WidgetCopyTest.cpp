// Copies of widgets: a copy shows what the original shows, but no gesture in progress follows it across.

#include "toolkit/testing/UiHarness.h"
#include "toolkit/ui/Event.h"
#include "toolkit/ui/MenuGlob.h"
#include "toolkit/ui/UifStd.h"
#include "toolkit/widgets/Button.h"
#include "toolkit/widgets/CustomTextBox.h"
#include "toolkit/widgets/DropDownMenuButton.h"
#include "toolkit/widgets/ScrollBar.h"
#include "toolkit/widgets/Slider.h"
#include "toolkit/widgets/TextBoxBase.h"

#include <gtest/gtest.h>

namespace {

class WidgetCopyTest : public ::testing::Test {
protected:
    UiHarness ui{400, 300};

    Slider* slider()
    {
        auto* s = ui.make<Slider>(Slider::InitArgs(Palette().highlight(), 210, 22, UifStd::getColourScheme()),
                                  Glob::BottomLeft(50, 50));
        s->setValueRange(0.0, 100.0);
        s->setPosition(50.0);
        return s;
    }
    static Event dragTo(XY<int> pos) { return Event::makeMouse(Event::MouseDrag, pos); }
};

} // namespace

TEST_F(WidgetCopyTest, SliderCopiedMidDragDoesNotFollowThePointer)
{
    Slider* s = slider();
    const int y = s->getHeight() / 2;
    ui.press(s, XY<int>(s->valueToX(50.0), y));
    Slider copy(*s);
    copy.react(dragTo({s->trackRight(), y}));
    EXPECT_DOUBLE_EQ(copy.getValue(), 50.0);
    ui.release(s, XY<int>(s->valueToX(50.0), y));
}

TEST_F(WidgetCopyTest, SliderAssignedMidDragStopsDragging)
{
    Slider* s = slider();
    Slider* other = slider();
    const int y = s->getHeight() / 2;
    ui.press(s, XY<int>(s->valueToX(50.0), y));
    *s = *other;
    s->react(dragTo({s->trackRight(), y}));
    EXPECT_DOUBLE_EQ(s->getValue(), 50.0);
    ui.release(s, XY<int>(s->valueToX(50.0), y));
}

TEST_F(WidgetCopyTest, ScrollBarCopiedWhileAnArrowIsHeldLeavesTheOriginalRepeating)
{
    auto* bar = ui.make<ScrollBar>(ScrollBar::InitArgs(200, 16), Glob::BottomLeft(10, 10));
    bar->setThumbSize(0.1);
    bar->setThumbPos(0.5);
    ui.press(bar, XY<int>(8, 4)); // the arrow at the bottom
    { const ScrollBar copy(*bar); }
    ui.owner().clear();
    ui.advance(1000);
    ui.step(3);
    EXPECT_GT(ui.owner().count(), 0u) << "the held arrow keeps stepping after its copy is gone";
    ui.release(bar, XY<int>(8, 4));
}

TEST_F(WidgetCopyTest, ScrollBarAssignedOverWhileHeldStopsRepeatingForGood)
{
    auto* bar = ui.make<ScrollBar>(ScrollBar::InitArgs(200, 16), Glob::BottomLeft(10, 10));
    bar->setThumbSize(0.1);
    bar->setThumbPos(0.5);
    ui.press(bar, XY<int>(8, 4)); // the arrow at the bottom
    *bar = ScrollBar(ScrollBar::InitArgs(200, 16));
    Glob::destroy(bar);
    ui.owner().clear();
    ui.advance(1000);
    ui.step(3); // a repeat left running would now step a bar that is gone
    EXPECT_EQ(ui.owner().count(), 0u);
}

TEST_F(WidgetCopyTest, ButtonCopiedMidPressKeepsItsDownStateButIsNotPressed)
{
    Button::InitArgs args(UIString(L"Loop"), 80);
    args.latching = true;
    auto* button = ui.make<Button>(args, Glob::BottomLeft(10, 10));
    button->setDown(true);
    ui.press(button);
    ASSERT_TRUE(button->isPressedNow());
    const Button copy(*button);
    EXPECT_TRUE(copy.isDown());
    EXPECT_TRUE(copy.isLatching());
    EXPECT_FALSE(copy.isPressedNow());
    EXPECT_FALSE(copy.isHovered());
    ui.release(button);
}

TEST_F(WidgetCopyTest, TextBoxCopiedMidSelectionDragDoesNotFollowThePointer)
{
    auto* box = ui.make<TextBoxBase>(TextBoxBase::InitArgs(L"frames per second", 200, 24, UifStd::getColourScheme()),
                                     Glob::BottomLeft(20, 20));
    ui.focus(box);
    const int y = box->getHeight() / 2;
    ui.press(box, XY<int>(static_cast<int>(box->xForPos(0)), y));
    TextBoxBase copy(*box);
    copy.react(dragTo({static_cast<int>(copy.xForPos(6)), y}));
    EXPECT_EQ(copy.text(), L"frames per second");
    EXPECT_FALSE(copy.hasSelection());
    ui.release(box, XY<int>(static_cast<int>(box->xForPos(0)), y));
}

TEST_F(WidgetCopyTest, CustomTextBoxCopyKeepsItsKeyFilter)
{
    auto* box = ui.make<CustomTextBox>(CustomTextBox::InitArgs(L"", 200, 24, UifStd::getColourScheme()),
                                       Glob::BottomLeft(20, 20));
    box->setKeyFilter([](CustomTextBox&, const Event& key) { return key.key == 'x'; });
    CustomTextBox copy(*box);
    copy.insertText(L"ab");
    Event key = Event::makeKey('x');
    EXPECT_TRUE(copy.react(key));
    EXPECT_EQ(copy.text(), L"ab");
}

TEST_F(WidgetCopyTest, DropDownCopiedWhileItsMenuIsOpenIsNeitherDownNorOpen)
{
    auto* button = ui.make<DropDownMenuButton>(
        DropDownMenuButton::InitArgs(std::vector<UIString>{UIString(L"PAL"), UIString(L"NTSC")}, MenuItemIndex(1)),
        Glob::BottomLeft(50, 200));
    ui.click(button);
    ASSERT_NE(button->getOpenMenu(), nullptr);
    {
        const DropDownMenuButton copy(*button);
        EXPECT_EQ(copy.getSelectedItem(), 1);
        EXPECT_FALSE(copy.isDown());
        EXPECT_EQ(copy.getOpenMenu(), nullptr);
    }
    EXPECT_NE(button->getOpenMenu(), nullptr) << "the copy going closes nothing of the original's";
    EXPECT_TRUE(button->isDown());
}
