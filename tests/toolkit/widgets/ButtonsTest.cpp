// Buttons, image buttons, check boxes and radio groups, driven as a user drives them: clicks, drags off and
// back, keys, and owners that destroy the widget from inside its own report.

#include "toolkit/testing/UiHarness.h"
#include "toolkit/ui/GlobManager.h"
#include "toolkit/ui/TabOrderManager.h"
#include "toolkit/ui/UifStd.h"
#include "toolkit/widgets/Button.h"
#include "toolkit/widgets/Checkbox.h"
#include "toolkit/widgets/ImageButton.h"
#include "toolkit/widgets/RadioSet.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

class ButtonsTest : public ::testing::Test {
protected:
    UiHarness ui{400, 300};

    Button* button(const wchar_t* label = L"Apply", int x = 20, int y = 20)
    {
        return ui.make<Button>(Button::InitArgs(label, 80, 22, UifStd::getColourScheme()), Glob::BottomLeft(x, y));
    }
};

TEST_F(ButtonsTest, AClickTellsTheOwnerOnceAndAChangeOfMindTellsNobody)
{
    Button* b = button();
    ui.click(b);
    EXPECT_EQ(ui.owner().count(Button::clickMsg), 1u);
    EXPECT_EQ(ui.owner().lastSender(), b);

    ui.owner().clear();
    // Pressed, dragged off and released elsewhere: the user changed their mind.
    ui.drag(b, {40, 11}, {200, 150});
    EXPECT_EQ(ui.owner().count(), 0u);

    // Dragged off and back on before the release: it counts.
    ui.press(b);
    ui.moveTo(b, XY<int>(200, 11));
    EXPECT_FALSE(b->isPressedNow()) << "drawn released while the pointer is off it";
    ui.moveTo(b, XY<int>(10, 11));
    EXPECT_TRUE(b->isPressedNow());
    ui.release(b, XY<int>(10, 11));
    EXPECT_EQ(ui.owner().count(Button::clickMsg), 1u);
}

TEST_F(ButtonsTest, DisabledOrClickThroughButtonsDoNothing)
{
    Button* b = button();
    b->setEnabled(false);
    ui.click(b);
    ui.focus(b);
    ui.pressKey(' ');
    EXPECT_EQ(ui.owner().count(), 0u);

    b->setEnabled(true);
    b->setIgnoreMouseClicks(true);
    ui.click(b);
    EXPECT_EQ(ui.owner().count(), 0u);
    EXPECT_FALSE(b->isPressedNow());
    b->setIgnoreMouseClicks(false);
    ui.click(b);
    EXPECT_EQ(ui.owner().count(), 1u);
}

TEST_F(ButtonsTest, SpaceAndReturnActivateTheFocusedButton)
{
    Button* b = button();
    ASSERT_TRUE(ui.focus(b));
    ui.pressKey(' ');
    ui.pressKey(Event::KeyReturn);
    ui.pressKey('x');
    EXPECT_EQ(ui.owner().count(Button::clickMsg), 2u);

    // A click gives the focus, unless the button does not want it.
    Button* other = button(L"Other", 150);
    ui.click(other);
    EXPECT_TRUE(other->hasFocus());
    Button* line = button(L"Line", 250);
    line->setWantsFocus(false);
    ui.click(line);
    EXPECT_FALSE(line->hasFocus());
    EXPECT_TRUE(other->hasFocus());
}

TEST_F(ButtonsTest, ACallbackReplacesTheMessageAndMayDestroyTheButton)
{
    Button* b = button();
    int calls = 0;
    b->setCallback([&] { ++calls; });
    ui.click(b);
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(ui.owner().count(), 0u) << "one channel: the callback or the message, never both";

    b->setCallback([&] {
        ++calls;
        Glob::destroy(b);
    });
    ui.click(b);
    EXPECT_EQ(calls, 2);
    EXPECT_FALSE(is_good_glob_ptr(b));
    ui.step(); // painting after the destruction must not touch it
}

TEST_F(ButtonsTest, AnOwnerMayDestroyTheButtonFromInsideItsReport)
{
    Button* b = button();
    b->setLatching(true);
    ui.owner().onMessage = [](const RecordingOwner::Received& r) { Glob::destroy(r.sender); };
    ui.click(b);
    EXPECT_FALSE(is_good_glob_ptr(b));
    ui.step();
}

TEST_F(ButtonsTest, LatchingButtonsFlipTheirDownStateAndCodeSwitchesItSilently)
{
    Button* b = button();
    b->setLatching(true);
    ui.click(b);
    EXPECT_TRUE(b->isDown());
    ui.click(b);
    EXPECT_FALSE(b->isDown());
    EXPECT_EQ(ui.owner().count(Button::clickMsg), 2u);

    b->setDown(true);
    EXPECT_EQ(ui.owner().count(), 2u) << "set from code: silent";
    // An ordinary button pressed by its owner stays down through clicks: only latching buttons flip.
    Button* tool = button(L"Tool", 150);
    tool->setDown(true);
    ui.click(tool);
    EXPECT_TRUE(tool->isDown());
}

TEST_F(ButtonsTest, OwnMessagesAndDownColours)
{
    Button* b = button();
    b->setMessage("apply_pressed");
    ui.click(b);
    EXPECT_EQ(ui.owner().last(), "apply_pressed");

    const Colour back = Colour::fromBytes(200, 40, 40);
    b->setDownCols(back, Colour::fromBytes(255, 255, 255));
    b->setDown(true);
    EXPECT_TRUE(ui.pixelAt(b, {4, 4}).isCloseTo(back, 2.0 / 255)) << "the down face is drawn in the down colour";
    b->setDown(false);
    EXPECT_FALSE(ui.pixelAt(b, {4, 4}).isCloseTo(back, 20.0 / 255));
}

TEST_F(ButtonsTest, SetStringAutoFitsTheLabel)
{
    Button* b = button(L"OK");
    const int small = b->getWidth();
    b->setStringAuto(UIString(L"A much longer label than before"));
    EXPECT_GT(b->getWidth(), small + 100);
    EXPECT_EQ(b->getWidth(), Button::calcWidth(UIString(L"A much longer label than before")));
    EXPECT_EQ(b->getHeight(), 22);
    b->setStringAuto(UIString(L"OK"));
    EXPECT_EQ(b->getWidth(), Button::calcWidth(UIString(L"OK")));
}

TEST_F(ButtonsTest, MadeByTypeNameWithItsLabel)
{
    GlobCreationInfo info(100, 22);
    info.typeName = "Button";
    info.config.set("label", "Render");
    std::unique_ptr<Glob> made(GlobManager::createGlob(info));
    auto* b = dynamic_cast<Button*>(made.get());
    ASSERT_NE(b, nullptr);
    EXPECT_EQ(b->getString().getString(), L"Render");
}

TEST_F(ButtonsTest, AnImageButtonScalesItsPictureInsideTheFaceKeepingItsShape)
{
    Pictor::Image picture(40, 20);
    const Colour red = Colour::fromBytes(230, 20, 20);
    picture.fill(red);
    auto* b = ui.make<ImageButton>(ImageButton::InitArgs(picture, 30, 30, UifStd::getColourScheme()),
                                   Glob::BottomLeft(50, 50));
    const GlobBox area = b->imageArea();
    EXPECT_EQ(area.width(), 2 * area.height()) << "proportions kept";
    EXPECT_TRUE(b->getLocalBox().contains(area));
    EXPECT_TRUE(ui.pixelAt(b, area.centre()).isCloseTo(red, 3.0 / 255));
    EXPECT_FALSE(ui.pixelAt(b, {area.centre().x, area.top() + 2}).isCloseTo(red, 40.0 / 255))
        << "nothing drawn above the scaled picture";

    b->setEnabled(false);
    EXPECT_FALSE(ui.pixelAt(b, area.centre()).isCloseTo(red, 40.0 / 255)) << "a disabled picture is faded";

    b->setEnabled(true);
    ui.click(b);
    EXPECT_EQ(ui.owner().count(Button::clickMsg), 1u) << "it behaves as a button";
}

// ---------------------------------------------------------------------------------------------------------
// Check boxes

class CheckboxTest : public ButtonsTest {
protected:
    Checkbox* box(int style = Checkbox::BoxFirst, bool value = false)
    {
        return ui.make<Checkbox>(Checkbox::InitArgs(L"Show hints", value, style, 0, 0, UifStd::getColourScheme()),
                                 Glob::BottomLeft(20, 100));
    }
};

TEST_F(CheckboxTest, ClickOnTheBoxOrTheLabelTogglesAndTellsTheOwner)
{
    Checkbox* c = box();
    ui.click(c, c->boxArea().centre());
    EXPECT_TRUE(c->getValue());
    EXPECT_EQ(ui.owner().last(), Checkbox::checkedMsg);
    EXPECT_TRUE(ui.owner().last().startsWith("Checkbox "));

    ui.click(c, XY<int>(c->getWidth() - 8, c->getHeight() / 2)); // on the label
    EXPECT_FALSE(c->getValue());
    EXPECT_EQ(ui.owner().last(), Checkbox::uncheckedMsg);
    EXPECT_TRUE(Checkbox::isCheckboxMsg(ui.owner().last()));
    EXPECT_EQ(ui.owner().count(), 2u);

    ui.drag(c, c->boxArea().centre(), {300, 250});
    EXPECT_FALSE(c->getValue()) << "released elsewhere: no toggle";
}

TEST_F(CheckboxTest, SpaceTogglesAndDisabledBoxesIgnoreEverything)
{
    Checkbox* c = box();
    ui.focus(c);
    ui.pressKey(' ');
    EXPECT_TRUE(c->getValue());
    ui.pressKey(Event::KeyReturn);
    EXPECT_TRUE(c->getValue()) << "Return belongs to the panel (its do-it), not to the box";

    c->setEnabled(false);
    ui.click(c);
    EXPECT_TRUE(c->getValue());
    EXPECT_EQ(ui.owner().count(), 1u);
}

TEST_F(CheckboxTest, SetValueFromCodeIsSilentAndShowsTheTick)
{
    Checkbox* c = box();
    const GlobBox b = c->boxArea();
    const Colour before = ui.pixelAt(c, b.centre());
    c->setValue(true);
    EXPECT_EQ(ui.owner().count(), 0u);
    EXPECT_FALSE(ui.pixelAt(c, b.centre()).isCloseTo(before, 20.0 / 255)) << "the tick crosses the box's centre";
}

TEST_F(CheckboxTest, WidthFitsTheLabelAndLabelFirstPutsTheBoxAfterIt)
{
    EXPECT_GT(Checkbox::calcWidth(UIString(L"Do not show this again")), Checkbox::calcWidth(UIString(L"Off")) + 50);
    Checkbox* first = box(Checkbox::BoxFirst);
    EXPECT_LT(first->boxArea().left(), 10);
    Checkbox* row = ui.make<Checkbox>(Checkbox::InitArgs(L"Enabled", true, Checkbox::LegendRow, 200, 22),
                                      Glob::BottomLeft(20, 150));
    EXPECT_GT(row->boxArea().left(), 30);
    row->setLabelWidth(120);
    EXPECT_EQ(row->boxArea().left(), 120);
    EXPECT_TRUE(row->getLocalBox().contains(row->boxArea()));
    ui.click(row, row->boxArea().centre());
    EXPECT_FALSE(row->getValue());
    (void)first;
}

// ---------------------------------------------------------------------------------------------------------
// Radio groups

class RadioTest : public ButtonsTest {
protected:
    RadioSet* set()
    {
        return ui.make<RadioSet>(RadioSet::InitArgs({L"Low", L"Medium", L"High"}, 0, false, 0,
                                                    UifStd::getColourScheme()),
                                 Glob::BottomLeft(20, 20));
    }
};

TEST_F(RadioTest, OneSelectionAtATimeAndOneMessagePerChange)
{
    RadioSet* r = set();
    ASSERT_EQ(r->numWidgets(), 3u);
    ui.click(r->getWidget(size_t{2}));
    EXPECT_EQ(r->getSelected(), 2);
    EXPECT_FALSE(r->getWidget(size_t{0})->isDown());
    EXPECT_EQ(ui.owner().count(RadioSet::selectionChangedMsg), 1u);
    EXPECT_EQ(ui.owner().lastSender(), r);
    EXPECT_EQ(ui.owner().count(Button::clickMsg), 0u) << "the buttons' own clicks stay inside the set";

    ui.click(r->getWidget(size_t{2}));
    EXPECT_EQ(r->getSelected(), 2) << "clicking the selected one keeps it";
    EXPECT_EQ(ui.owner().count(RadioSet::selectionChangedMsg), 1u);

    r->select(1);
    EXPECT_EQ(r->getSelected(), 1);
    EXPECT_EQ(ui.owner().count(), 1u) << "selection from code is silent unless asked";
    r->select(-1, RadioSet::NotifyFlag);
    EXPECT_EQ(r->getSelected(), -1);
    EXPECT_EQ(ui.owner().count(), 2u);
}

TEST_F(RadioTest, ArrowKeysMoveSkippingDisabledButtonsAndStopAtTheEnds)
{
    RadioSet* r = set();
    r->getWidget(size_t{1})->setEnabled(false);
    ui.focus(r->getWidget(size_t{0}));
    ui.pressKey(Event::KeyDown);
    EXPECT_EQ(r->getSelected(), 2);
    EXPECT_TRUE(r->getWidget(size_t{2})->hasFocus());
    ui.pressKey(Event::KeyDown);
    EXPECT_EQ(r->getSelected(), 2);
    ui.pressKey(Event::KeyUp);
    EXPECT_EQ(r->getSelected(), 0);
    EXPECT_EQ(ui.owner().count(RadioSet::selectionChangedMsg), 2u);
}

TEST_F(RadioTest, TheGroupIsOneTabStopAtItsSelection)
{
    Button* before = button(L"Before", 200, 20);
    RadioSet* r = set();
    Button* after = button(L"After", 200, 80);
    TabOrderManager::addTabStop(before);
    TabOrderManager::addTabStopsFrom(r);
    TabOrderManager::addTabStop(after);
    r->select(1);

    ui.focus(before);
    ui.pressKey(Event::KeyTab);
    EXPECT_TRUE(r->getWidget(size_t{1})->hasFocus()) << "Tab lands on the selected member";
    ui.pressKey(Event::KeyTab);
    EXPECT_TRUE(after->hasFocus()) << "and leaves the group at the next Tab";
    ui.pressKey(Event::KeyBackTab);
    EXPECT_TRUE(r->getWidget(size_t{1})->hasFocus());

    // A click on another member selects it and moves the stop there.
    ui.click(r->getWidget(size_t{2}));
    EXPECT_TRUE(r->getWidget(size_t{2})->hasFocus());
    ui.focus(before);
    ui.pressKey(Event::KeyTab);
    EXPECT_TRUE(r->getWidget(size_t{2})->hasFocus());

    // With nothing selected the first usable member is the stop.
    r->select(-1);
    r->getWidget(size_t{0})->setEnabled(false);
    ui.focus(before);
    ui.pressKey(Event::KeyTab);
    EXPECT_TRUE(r->getWidget(size_t{1})->hasFocus());
}

TEST_F(RadioTest, APlainGroupOfButtonsSurvivesMembersAndItselfDying)
{
    Button* a = button(L"A", 20, 200);
    Button* b = button(L"B", 120, 200);
    Button* c = button(L"C", 220, 200);
    {
        radio_set group;
        group.addWidget(a);
        group.addWidget(b);
        group.addWidget(c);
        EXPECT_TRUE(a->isLatching());
        ui.click(b);
        EXPECT_EQ(group.getSelectedWidget(), b);
        EXPECT_EQ(ui.owner().count(radio_set::selectionChangedMsg), 1u);
        EXPECT_EQ(ui.owner().count(Button::clickMsg), 1u);

        Glob::destroy(b);
        EXPECT_EQ(group.getSelectedIndex(), -1);
        EXPECT_EQ(group.getWidget(1), nullptr);
        ui.click(c);
        EXPECT_EQ(group.getSelectedWidget(), c);
    }
    // The group is gone: its members forgot it and are ordinary latching buttons again.
    EXPECT_EQ(a->getGroup(), nullptr);
    ui.click(a);
    EXPECT_TRUE(a->isDown());
    EXPECT_TRUE(c->isDown());
}

} // namespace
