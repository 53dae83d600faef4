// Input through the screen: bottom-up coordinates, bubbling, capture, double clicks on the toolkit clock,
// disabled and hidden widgets, keys, intercept stacks, global mouse listeners, tooltips and cursors.

#include "UiTestWidgets.h"
#include "toolkit/testing/UiHarness.h"

#include <gtest/gtest.h>

#include <tuple>

class ScreenInput : public ::testing::Test {
protected:
    UiHarness ui { 400, 300 };

    ProbeGlob* probe(int x, int y, int w, int h, Glob* parent = nullptr)
    {
        auto* made = new ProbeGlob(static_cast<uint16_t>(w), static_cast<uint16_t>(h));
        (parent ? parent : &ui.owner())->addChild(made, Glob::BottomLeft(x, y));
        return made;
    }
};

TEST_F(ScreenInput, ClickArrivesInTheWidgetsOwnBottomUpCoordinates)
{
    ProbeGlob* outer = probe(100, 50, 80, 60);
    ProbeGlob* inner = probe(10, 20, 30, 20, outer);
    ui.clickAt({ 100 + 10 + 5, 50 + 20 + 3 });
    const Event* down = inner->lastOf(Event::MouseDown);
    ASSERT_NE(down, nullptr);
    EXPECT_EQ(std::tuple(down->pos, down->screenPos, down->button),
        std::tuple(XY<int>(5, 3), XY<int>(115, 73), Event::LeftButton));
    EXPECT_EQ(outer->countOf(Event::MouseDown), 0u) << "handled by the inner widget";
}

TEST_F(ScreenInput, AnUnhandledPressBubblesToTheParentInItsCoordinates)
{
    ProbeGlob* outer = probe(100, 50, 80, 60);
    ProbeGlob* inner = probe(10, 20, 30, 20, outer);
    inner->handles = false;
    ui.click(inner, XY<int>(1, 2));
    const Event* atParent = outer->lastOf(Event::MouseDown);
    ASSERT_NE(atParent, nullptr);
    EXPECT_EQ(atParent->pos, XY<int>(11, 22));
}

TEST_F(ScreenInput, ThePressedWidgetKeepsTheDragAndTheRelease)
{
    ProbeGlob* a = probe(10, 10, 50, 50);
    ProbeGlob* b = probe(100, 10, 50, 50);
    ui.drag(a, { 25, 25 }, { 115, 25 }); // ends over b, after passing outside both
    EXPECT_GE(a->countOf(Event::MouseDrag), 3u);
    EXPECT_EQ(a->lastOf(Event::MouseDrag)->pos, XY<int>(115, 25)) << "positions run outside the widget";
    EXPECT_EQ(a->lastOf(Event::MouseDrag)->button, Event::LeftButton);
    ASSERT_NE(a->lastOf(Event::MouseUp), nullptr);
    EXPECT_TRUE(b->events.empty());
    EXPECT_EQ(ui.screen().getCapture(), nullptr);

    // Once released, moving goes to whatever is under the pointer again.
    ui.moveTo(b, XY<int>(30, 30));
    EXPECT_EQ(b->countOf(Event::MouseMove), 1u);
    EXPECT_EQ(b->countOf(Event::MouseEnter), 1u);
}

TEST_F(ScreenInput, DoubleClicksFollowTheToolkitClock)
{
    ProbeGlob* a = probe(10, 10, 50, 50);
    ProbeGlob* b = probe(100, 10, 50, 50);
    const XY<int> spot = UiHarness::toScreen(a);
    auto pressAt = [&](XY<int> where) {
        ui.screen().mouseButton(where, Event::LeftButton, true);
        ui.screen().mouseButton(where, Event::LeftButton, false);
    };

    pressAt(spot);
    ui.advance(Screen::getDoubleClickTime() - 1);
    pressAt(spot);
    EXPECT_TRUE(a->lastOf(Event::MouseDown)->isDoubleClick());

    ui.advance(Screen::getDoubleClickTime() + 1);
    pressAt(spot);
    EXPECT_EQ(a->lastOf(Event::MouseDown)->clickCount, 1) << "too slow";

    ui.advance(50);
    pressAt(spot + XY<int>(Screen::getDoubleClickDistance() + 1, 0));
    EXPECT_EQ(a->lastOf(Event::MouseDown)->clickCount, 1) << "moved too far";

    ui.advance(50);
    pressAt(UiHarness::toScreen(b));
    EXPECT_EQ(b->lastOf(Event::MouseDown)->clickCount, 1) << "a different widget";
}

TEST_F(ScreenInput, ASecondButtonWhileOneIsHeldMakesAChord)
{
    ProbeGlob* a = probe(10, 10, 50, 50);
    const XY<int> at = UiHarness::toScreen(a);
    ui.screen().mouseButton(at, Event::LeftButton, true);
    ui.screen().mouseButton(at, Event::RightButton, true);
    const Event* chord = a->lastOf(Event::MouseChord);
    ASSERT_NE(chord, nullptr);
    EXPECT_EQ(chord->button, Event::LeftButton | Event::RightButton);
}

TEST_F(ScreenInput, DisabledWidgetsSwallowPressesAndHiddenOnesAreSkipped)
{
    ProbeGlob* under = probe(10, 10, 100, 100);
    ProbeGlob* over = probe(20, 20, 40, 40, under);
    over->setActive(false, NoRedraw);
    ui.click(over);
    EXPECT_TRUE(over->events.empty());
    EXPECT_EQ(under->countOf(Event::MouseDown), 0u) << "the press on a disabled widget goes nowhere";

    over->setActive(true, NoRedraw);
    over->setVisible(false);
    ui.clickAt(UiHarness::toScreen(over));
    EXPECT_TRUE(over->events.empty());
    EXPECT_EQ(under->countOf(Event::MouseDown), 1u) << "the widget beneath a hidden one takes the click";
}

TEST_F(ScreenInput, KeysGoToTheFocusedWidgetThenUpItsParents)
{
    ProbeGlob* panel = probe(10, 10, 200, 100);
    auto* field = new FocusProbe(50, 20);
    panel->addChild(field, Glob::BottomLeft(10, 10));
    ASSERT_TRUE(ui.focus(field));
    ui.typeText(L"hé");
    ASSERT_EQ(field->countOf(Event::Key), 2u);
    EXPECT_EQ(field->events.back().key, L'é');
    EXPECT_TRUE(field->events.back().isPrintable());

    field->handles = false;
    ui.pressKey(Event::KeyEscape);
    ASSERT_NE(panel->lastOf(Event::Key), nullptr);
    EXPECT_EQ(panel->lastOf(Event::Key)->key, 27);
}

TEST_F(ScreenInput, InterceptsSeeInputFirstAndOutsideOnlyFiltersLetTheirOwnWidgetsThrough)
{
    ProbeGlob* modal = probe(100, 100, 100, 80);
    ProbeGlob* okButton = probe(10, 10, 40, 20, modal);
    ProbeGlob* behind = probe(0, 0, 60, 60);
    EventInterceptStack& stack = getEventInterceptStack(0);
    const IdStamp id = stack.push(modal, EventInterceptStack::Mouse | EventInterceptStack::OutsideOnly);
    ASSERT_FALSE(id.isNull());

    ui.click(behind);
    EXPECT_TRUE(behind->events.empty()) << "the modal panel swallowed it";
    const Event* seen = modal->lastOf(Event::MouseDown);
    ASSERT_NE(seen, nullptr);
    EXPECT_EQ(seen->pos, XY<int>(30 - 100, 30 - 100)) << "in the filter's own coordinates";

    ui.click(okButton);
    EXPECT_EQ(okButton->countOf(Event::MouseDown), 1u);

    EXPECT_TRUE(stack.remove(id));
    EXPECT_FALSE(stack.remove(id));
    ui.click(behind);
    EXPECT_EQ(behind->countOf(Event::MouseDown), 1u);

    // A filter that dies is dropped.
    stack.push(okButton, EventInterceptStack::Mouse);
    ui.owner().removeChild(modal);
    EXPECT_TRUE(stack.empty());
}

TEST_F(ScreenInput, GlobalMouseListenersHearEveryMouseEventUntilReleased)
{
    ProbeGlob* a = probe(10, 10, 50, 50);
    std::vector<Event> heard;
    Cv::Ptr<Cv::Guard> guard = Pictor::addMouseListener(Cv::makeListener<NotifyMsg>([&](const NotifyMsg& msg) {
        if (auto info = msg.getObjectAs<MouseEventInfo>())
            heard.push_back(info->event);
    }));
    ASSERT_TRUE(guard);
    ui.click(a, XY<int>(2, 3));
    ASSERT_GE(heard.size(), 2u);
    EXPECT_EQ(heard[heard.size() - 2].type, Event::MouseDown);
    EXPECT_EQ(heard.back().screenPos, XY<int>(12, 13));
    guard->release();
    const size_t before = heard.size();
    ui.click(a);
    EXPECT_EQ(heard.size(), before);
}

TEST_F(ScreenInput, TooltipsPopUpAfterThePointerRestsAndGoWhenItMoves)
{
    ProbeGlob* a = probe(10, 10, 50, 50);
    a->setContextString(UIString(), UIString(L"Trims the clip"));
    ui.moveTo(a);
    ui.advance(Screen::getTooltipDelay() - 1);
    EXPECT_EQ(ui.screen().getTooltip(), nullptr);
    ui.advance(1);
    Glob* tip = ui.screen().getTooltip();
    ASSERT_NE(tip, nullptr);
    EXPECT_TRUE(tip->isShowing());

    ui.moveTo(a, XY<int>(3, 3));
    EXPECT_EQ(ui.screen().getTooltip(), nullptr);
    EXPECT_FALSE(is_good_glob_ptr(tip));

    CvTooltipsEnable(false);
    ui.advance(Screen::getTooltipDelay() * 2);
    EXPECT_EQ(ui.screen().getTooltip(), nullptr);
}

TEST_F(ScreenInput, ThePointerTakesTheCursorOfTheWidgetUnderIt)
{
    ProbeGlob* a = probe(10, 10, 50, 50);
    ProbeGlob* inner = probe(5, 5, 10, 10, a);
    a->setMouseCursor(CursorHand);
    ui.moveTo(inner);
    EXPECT_EQ(ui.screen().getCursor(), CursorHand) << "inherited from the parent";
    EXPECT_EQ(ui.backend().getCursorShape(), CursorHand);
    ui.clickAt({ 300, 250 });
    EXPECT_EQ(ui.screen().getCursor(), CursorArrow);

    pictor_enableMouseContextLogic(false);
    pictor_setCursor(CursorEyedropper);
    ui.moveTo(a);
    EXPECT_EQ(ui.screen().getCursor(), CursorEyedropper) << "a tool's cursor stays while context logic is off";
    pictor_enableMouseContextLogic(true);
}

TEST_F(ScreenInput, PressingALowerPanelRaisesIt)
{
    auto* back = ui.makeTopLevel<ProbeGlob>(ProbeGlob::InitArgs(100, 100), { 50, 50 });
    auto* front = ui.makeTopLevel<ProbeGlob>(ProbeGlob::InitArgs(100, 100), { 100, 100 });
    EXPECT_EQ(ui.screen().getTopLevels().back(), front);
    ui.click(back, XY<int>(5, 5));
    EXPECT_EQ(ui.screen().getTopLevels().back(), back);
    EXPECT_EQ(ui.screen().widgetAt({ 120, 120 }), back);
}
