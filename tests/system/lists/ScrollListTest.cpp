// The scroll list as a person uses it: clicks with and without modifiers, double clicks on the toolkit clock,
// the key table, scrolling, and new strings arriving under a selection.
#include "lists/ScrollList.h"
#include "ListTestSupport.h"
#include "toolkit/testing/UiHarness.h"
#include "toolkit/widgets/ScrollBar.h"

#include <gtest/gtest.h>

#include <string>

namespace {

constexpr uint16_t lineHeight = 20;
constexpr int linesInView = 10;

std::vector<LightweightString<wchar_t>> numberedLines(int count, const wchar_t* stem = L"line ")
{
    std::vector<LightweightString<wchar_t>> lines;
    for (int i = 0; i < count; ++i)
        lines.emplace_back(stem + std::to_wstring(i));
    return lines;
}

class ScrollListTest : public ::testing::Test {
protected:
    ScrollListTest() { moveClockPastEarlierTests(ui); }

    ScrollList* makeList(int count, XY<int> at = { 10, 10 })
    {
        ScrollList::InitArgs args(numberedLines(count), 200, 0, lineHeight);
        // A view of exactly linesInView lines inside the thin border.
        const XY<int> size = StandardPanel::calcPanelSize(200, linesInView * lineHeight, args);
        args.width = static_cast<uint16_t>(size.x);
        args.height = static_cast<uint16_t>(size.y);
        return ui.make<ScrollList>(args, Glob::BottomLeft(at.x, at.y));
    }
    void clickLine(ScrollList* list, int index, int modifiers = 0)
    {
        ui.click(list->getItemWidget(index), std::nullopt, Event::LeftButton, modifiers);
    }
    // Two presses on a line, `apart` milliseconds apart on the toolkit clock.
    void clickTwice(ScrollList* list, int index, double apart)
    {
        clickLine(list, index);
        ui.advance(apart);
        ui.press(list->getItemWidget(index));
        ui.release(list->getItemWidget(index));
    }
    std::vector<int> selection(const ScrollList* list)
    {
        std::vector<int> out;
        for (int i = 0; i < list->numItems(); ++i)
            if (list->itemSelected(i))
                out.push_back(i);
        return out;
    }

    UiHarness ui;
};

using Lines = std::vector<int>;

} // namespace

TEST_F(ScrollListTest, PlainClickSelectsOnlyThatLineAndTellsTheOwner)
{
    ScrollList* list = makeList(20);
    clickLine(list, 2);
    clickLine(list, 5);
    EXPECT_EQ(selection(list), Lines({ 5 }));
    EXPECT_EQ(ui.owner().count(ScrollList::clickMsg), 2u);
}

TEST_F(ScrollListTest, CtrlClickTogglesLinesInMultiSelect)
{
    ScrollList* list = makeList(20);
    list->multiSelect(true);
    clickLine(list, 1);
    clickLine(list, 4, Event::Ctrl);
    clickLine(list, 6, Event::Ctrl);
    clickLine(list, 4, Event::Ctrl);
    EXPECT_EQ(selection(list), Lines({ 1, 6 }));
}

TEST_F(ScrollListTest, ShiftClickExtendsToTheNextSelectedLineAfterIt)
{
    ScrollList* list = makeList(20);
    list->multiSelect(true);
    clickLine(list, 1);
    clickLine(list, 7, Event::Ctrl);
    clickLine(list, 3, Event::Shift);
    EXPECT_EQ(selection(list), Lines({ 3, 4, 5, 6, 7 }));
}

TEST_F(ScrollListTest, ShiftClickReachesBackWhenNothingIsSelectedAfterIt)
{
    ScrollList* list = makeList(20);
    list->multiSelect(true);
    clickLine(list, 2);
    clickLine(list, 5, Event::Shift);
    EXPECT_EQ(selection(list), Lines({ 2, 3, 4, 5 }));
}

TEST_F(ScrollListTest, ShiftClickWithNothingSelectedSelectsOnlyTheClickedLine)
{
    ScrollList* list = makeList(20);
    list->multiSelect(true);
    clickLine(list, 4, Event::Shift);
    EXPECT_EQ(selection(list), Lines({ 4 }));
}

TEST_F(ScrollListTest, ModifiersOnlyToggleAndExtendInMultiSelect)
{
    ScrollList* list = makeList(20);
    clickLine(list, 2);
    clickLine(list, 5, Event::Ctrl);
    EXPECT_EQ(selection(list), Lines({ 5 }));
}

TEST_F(ScrollListTest, PlainClickTogglesWhenItDoesNotReplaceTheSelection)
{
    ScrollList* list = makeList(20);
    list->multiSelect(true, false);
    clickLine(list, 2);
    clickLine(list, 5);
    clickLine(list, 2);
    EXPECT_EQ(selection(list), Lines({ 5 }));
}

TEST_F(ScrollListTest, TwoClicksWithin400msChooseTheLineWithoutTogglingAgain)
{
    ScrollList* list = makeList(20);
    list->multiSelect(true, false);
    clickTwice(list, 3, 399);
    EXPECT_EQ(ui.owner().count(ScrollList::itemSelectedMsg), 1u);
    EXPECT_EQ(ui.owner().count(ScrollList::clickMsg), 1u);
    EXPECT_EQ(selection(list), Lines({ 3 }));
}

TEST_F(ScrollListTest, ClicksAt400msApartAreTwoSingleClicks)
{
    ScrollList* list = makeList(20);
    list->multiSelect(true, false);
    clickTwice(list, 3, 400);
    EXPECT_EQ(ui.owner().count(ScrollList::itemSelectedMsg), 0u);
    EXPECT_TRUE(selection(list).empty()); // toggled on, then off
}

TEST_F(ScrollListTest, QuickClickOnTheSameIndexInAnotherListIsADoubleClick)
{
    ScrollList* first = makeList(20, { 10, 10 });
    ScrollList* second = makeList(20, { 300, 10 });
    clickLine(first, 4);
    ui.advance(100);
    ui.press(second->getItemWidget(4));
    ui.release(second->getItemWidget(4));
    ASSERT_EQ(ui.owner().count(ScrollList::itemSelectedMsg), 1u);
    EXPECT_EQ(ui.owner().lastSender(), second);
    EXPECT_FALSE(second->itemSelected(4));
}

TEST_F(ScrollListTest, ModifiedSecondClickIsNotADoubleClick)
{
    ScrollList* list = makeList(20);
    list->multiSelect(true);
    clickLine(list, 3);
    ui.advance(50);
    ui.press(list->getItemWidget(3), std::nullopt, Event::LeftButton, Event::Ctrl);
    ui.release(list->getItemWidget(3), std::nullopt, Event::LeftButton, Event::Ctrl);
    EXPECT_EQ(ui.owner().count(ScrollList::itemSelectedMsg), 0u);
    EXPECT_TRUE(selection(list).empty());
}

TEST_F(ScrollListTest, DownOnTheLastLineKeepsTheSelectionAndStillTellsTheOwner)
{
    ScrollList* list = makeList(5);
    list->selectItem(4);
    ui.focus(list);
    ui.pressKey(Event::KeyDown);
    EXPECT_EQ(selection(list), Lines({ 4 }));
    EXPECT_EQ(ui.owner().count(ScrollList::keypressMsg), 1u);
    ui.pressKey(Event::KeyDown); // still asks for the place after the last line
    EXPECT_EQ(ui.owner().count(ScrollList::keypressMsg), 2u);
}

TEST_F(ScrollListTest, KeyThatMovesNothingSendsNoKeypress)
{
    ScrollList* list = makeList(5);
    list->selectItem(0);
    ui.focus(list);
    ui.pressKey(Event::KeyHome);
    ui.pressKey(Event::KeyUp);
    EXPECT_EQ(ui.owner().count(ScrollList::keypressMsg), 0u);
}

TEST_F(ScrollListTest, KeysMoveTheSelectionByTheirTable)
{
    ScrollList* list = makeList(40);
    ui.focus(list);
    const std::pair<int, int> steps[] = {
        { Event::KeyDown, 0 }, // nothing selected: -1 + 1
        { Event::KeyPageDown, linesInView },
        { Event::KeyDown, linesInView + 1 },
        { Event::KeyPageUp, 1 },
        { Event::KeyEnd, 39 },
        { Event::KeyUp, 38 },
        { Event::KeyHome, 0 },
    };
    for (const auto& [key, expected] : steps) {
        ui.pressKey(key);
        EXPECT_EQ(list->getSelectedItem(), expected) << "after key " << key;
    }
    EXPECT_EQ(ui.owner().count(ScrollList::keypressMsg), std::size(steps));
    EXPECT_EQ(ui.owner().count(ScrollList::clickMsg), 0u);
}

TEST_F(ScrollListTest, UpWithNothingSelectedSelectsTheFirstLine)
{
    ScrollList* list = makeList(5);
    ui.focus(list);
    ui.pressKey(Event::KeyUp);
    EXPECT_EQ(list->getSelectedItem(), 0);
}

TEST_F(ScrollListTest, ReturnChoosesTheSelectedLine)
{
    ScrollList* list = makeList(5);
    list->selectItem(2);
    ui.focus(list);
    ui.pressKey(Event::KeyReturn);
    EXPECT_EQ(ui.owner().count(ScrollList::itemSelectedMsg), 1u);
}

TEST_F(ScrollListTest, SelectingALineBelowTheViewBringsItToTheBottomEdge)
{
    ScrollList* list = makeList(100);
    list->selectItem(25);
    EXPECT_EQ(list->getScrollOffset(), (25u + 1 - linesInView) * lineHeight);
    EXPECT_TRUE(list->itemIsVisible(25));
    EXPECT_FALSE(list->itemIsVisible(25 - linesInView));
    EXPECT_NEAR(list->getScrollBar()->getThumbPos(), double(list->getScrollOffset()) / (100 * lineHeight), 1e-9);
}

TEST_F(ScrollListTest, SelectingALineAboveTheViewBringsItToTheTopEdge)
{
    ScrollList* list = makeList(100);
    list->selectItem(50);
    list->selectItem(30);
    EXPECT_EQ(list->getScrollOffset(), 30u * lineHeight);
}

TEST_F(ScrollListTest, SelectingALineInViewDoesNotScroll)
{
    ScrollList* list = makeList(100);
    list->selectItem(50);
    const uint32_t before = list->getScrollOffset();
    list->selectItem(45);
    EXPECT_EQ(list->getScrollOffset(), before);
}

TEST_F(ScrollListTest, SelectingFromCodeTellsTheOwnerOnlyWithTheNotifyFlag)
{
    ScrollList* list = makeList(10);
    list->selectItem(3);
    EXPECT_EQ(ui.owner().count(ScrollList::clickMsg), 0u);
    list->selectItem(4, ScrollList::RedrawFlag | ScrollList::NotifyFlag);
    EXPECT_EQ(ui.owner().count(ScrollList::clickMsg), 1u);
    list->selectItem(10, ScrollList::NotifyFlag);
    EXPECT_EQ(ui.owner().count(ScrollList::clickMsg), 1u);
}

TEST_F(ScrollListTest, NewStringsThatStillHoldTheSelectedTextKeepItSelected)
{
    ScrollList* list = makeList(10);
    list->selectItem(3);
    list->setStrings(std::vector<LightweightString<wchar_t>> { L"new", L"line 3", L"other" });
    EXPECT_EQ(selection(list), Lines({ 1 }));
    EXPECT_EQ(ui.owner().count(ScrollList::clickMsg), 0u);
}

TEST_F(ScrollListTest, NewStringsWithoutTheSelectedTextLeaveNothingSelected)
{
    ScrollList* list = makeList(10);
    list->selectItem(3);
    list->setStrings(numberedLines(10, L"other "));
    EXPECT_EQ(list->getSelectedItem(), -1);
}

TEST_F(ScrollListTest, OneLineAlwaysSelectedFallsBackToThePreferredLine)
{
    ScrollList* list = makeList(0);
    list->oneItemAlwaysSelected(true);
    list->setPreferredItem(2);
    list->setStrings(numberedLines(5));
    EXPECT_EQ(selection(list), Lines({ 2 }));
    list->setPreferredItem(9);
    list->setStrings(numberedLines(5, L"x"));
    EXPECT_EQ(list->getPreferredItem(), 0);
    EXPECT_EQ(selection(list), Lines({ 0 }));
}

TEST_F(ScrollListTest, MultiSelectSwitchesOffTheAlwaysSelectedRule)
{
    ScrollList* list = makeList(0);
    list->oneItemAlwaysSelected(true);
    list->multiSelect(true);
    list->setStrings(numberedLines(5));
    EXPECT_EQ(list->getSelectedItem(), -1);
}

TEST_F(ScrollListTest, RightClickSelectsTheLineAndTellsTheOwner)
{
    ScrollList* list = makeList(10);
    ui.click(list->getItemWidget(6), std::nullopt, Event::RightButton);
    EXPECT_EQ(selection(list), Lines({ 6 }));
    EXPECT_EQ(ui.owner().count(ScrollList::clickMsg), 1u);
}

TEST_F(ScrollListTest, RightClickOnADisabledLineSelectsNothing)
{
    ScrollList* list = makeList(10);
    list->getItemWidget(6)->setEnabled(false);
    ui.click(list->getItemWidget(6), std::nullopt, Event::RightButton);
    EXPECT_EQ(list->getSelectedItem(), -1);
}

TEST_F(ScrollListTest, ScrollBarArrowsMoveOneLineAndStopAtTheEnds)
{
    ScrollList* list = makeList(12);
    ScrollBar* bar = list->getScrollBar();
    ui.click(bar, bar->upButtonBox().centre());
    EXPECT_EQ(list->getScrollOffset(), 0u);
    for (int i = 0; i < 5; ++i)
        ui.click(bar, bar->downButtonBox().centre());
    EXPECT_EQ(list->getScrollOffset(), 2u * lineHeight); // clamped to total - visible
    EXPECT_TRUE(list->itemIsVisible(11));
}

TEST_F(ScrollListTest, DraggingTheThumbToTheMiddleShowsTheMiddleLines)
{
    ScrollList* list = makeList(100);
    ScrollBar* bar = list->getScrollBar();
    bar->setThumbPos(0.5);
    list->handleMessageEvent(ScrollBar::thumbMovedMsg, bar);
    EXPECT_EQ(list->getScrollOffset(), 50u * lineHeight);
    EXPECT_TRUE(list->itemIsVisible(50));
}

TEST_F(ScrollListTest, EmptyListIgnoresTheScrollBar)
{
    ScrollList* list = makeList(0);
    ScrollBar* bar = list->getScrollBar();
    ui.click(bar, bar->downButtonBox().centre());
    EXPECT_EQ(list->getScrollOffset(), 0u);
}

TEST_F(ScrollListTest, OnlyTheLinesInViewAreChildren)
{
    ScrollList* list = makeList(5000);
    list->selectItem(4000);
    const Glob* view = list->getItemWidget(4000)->parent();
    ASSERT_NE(view, nullptr);
    EXPECT_LE(view->numChildren(), size_t(linesInView + 2));
    EXPECT_EQ(list->getItemWidget(10)->parent(), nullptr);
    // The line in view is where the screen shows it: clicking it there selects it.
    clickLine(list, 3995);
    EXPECT_EQ(list->getSelectedItem(), 3995);
}

TEST_F(ScrollListTest, ShrinkingTheListClampsTheScrollOffset)
{
    ScrollList* list = makeList(100);
    list->selectItem(99);
    list->setStrings(numberedLines(12));
    EXPECT_EQ(list->getScrollOffset(), 2u * lineHeight);
}

TEST_F(ScrollListTest, WarnedLineIsDrawnInTheWarningColour)
{
    ScrollList* list = makeList(3);
    list->setItemWarn(1, true);
    EXPECT_EQ(list->getItemColour(1), list->getPalette().warning());
    EXPECT_EQ(list->getItemColour(0), list->getPalette().text());
    bool warningInk = false;
    const ScrollListItemWidget* line = list->getItemWidget(1);
    for (int x = 0; x < line->getWidth() && !warningInk; ++x)
        for (int y = 0; y < line->getHeight() && !warningInk; ++y)
            warningInk = ui.pixelAt(line, { x, y }).isCloseTo(list->getPalette().warning(), 0.08);
    EXPECT_TRUE(warningInk);
}

TEST_F(ScrollListTest, OwnerMayReplaceTheLinesWhileHearingAClick)
{
    ScrollList* list = makeList(10);
    ui.owner().onMessage = [&](const RecordingOwner::Received& m) {
        if (m.name == ScrollList::clickMsg)
            list->setStrings(numberedLines(3, L"fresh "));
    };
    clickLine(list, 2);
    ui.step();
    EXPECT_EQ(list->numItems(), 3);
    EXPECT_EQ(list->getItemW(0), LightweightString<wchar_t>(L"fresh 0"));
}

TEST_F(ScrollListTest, OwnerMayDestroyTheListWhileHearingAClick)
{
    ScrollList* list = makeList(10);
    GlobWatch watch(list);
    ui.owner().onMessage = [&](const RecordingOwner::Received& m) {
        if (m.name == ScrollList::clickMsg)
            Glob::destroy(list);
    };
    clickLine(list, 2);
    ui.step();
    EXPECT_EQ(ui.owner().count(ScrollList::clickMsg), 1u);
    EXPECT_FALSE(watch);
}

TEST_F(ScrollListTest, ItemsCarryTheirSelectionActivityAndColour)
{
    ScrollList* list = makeList(0);
    const Colour blue(0.1, 0.2, 0.9);
    list->setStrings(std::vector<ScrollListItem> {
        ScrollListItem(L"plain"),
        ScrollListItem(L"chosen", ScrollListItem::Selected),
        ScrollListItem(L"off", ScrollListItem::Inactive, {}, {}, blue),
    });
    EXPECT_EQ(selection(list), Lines({ 1 }));
    EXPECT_FALSE(list->getItemWidget(2)->isSelectable());
    EXPECT_TRUE(list->getItemWidget(2)->getPalette().text().isCloseTo(blue));
}

TEST_F(ScrollListTest, ACopyKeepsTheTextsAndModesInLinesOfItsOwn)
{
    ScrollList* list = makeList(30);
    list->multiSelect(true, false, true);
    list->setPreferredItem(4);
    auto* copy = new ScrollList(*list);
    ui.show(copy, { 300, 10 });
    ASSERT_EQ(copy->numItems(), 30);
    EXPECT_EQ(copy->getItemW(29), LightweightString<wchar_t>(L"line 29"));
    EXPECT_NE(copy->getItemWidget(0), list->getItemWidget(0));
    EXPECT_EQ(copy->getLineHeight(), list->getLineHeight());
    EXPECT_TRUE(copy->getOwnerFlag());
    EXPECT_EQ(copy->getPreferredItem(), 4);
    // Multi-select without "plain click replaces": plain clicks add to the selection.
    clickLine(copy, 1);
    clickLine(copy, 2);
    EXPECT_EQ(selection(copy), Lines({ 1, 2 }));
}
