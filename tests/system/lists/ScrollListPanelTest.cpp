// The list panel's do-it button follows the selection, and a chosen line commits the panel like it.
#include "lists/ScrollListPanel.h"
#include "ListTestSupport.h"
#include "toolkit/testing/UiHarness.h"

#include <gtest/gtest.h>

namespace {

class ScrollListPanelTest : public ::testing::Test {
protected:
    ScrollListPanelTest()
    {
        moveClockPastEarlierTests(ui);
        ScrollListPanel::InitArgs args(UIString(L"Pick"), { L"alpha", L"beta", L"gamma" }, 240, 200);
        panel = ui.make<ScrollListPanel>(args, Glob::BottomLeft(20, 20));
    }
    void clickLine(int index) { ui.click(panel->getList()->getItemWidget(index)); }

    UiHarness ui;
    ScrollListPanel* panel = nullptr;
};

} // namespace

TEST_F(ScrollListPanelTest, DoItIsEnabledOnlyWhileALineIsSelected)
{
    EXPECT_FALSE(panel->isStandardWidgetEnabled(StandardPanel::DoItButton));
    clickLine(1);
    EXPECT_TRUE(panel->isStandardWidgetEnabled(StandardPanel::DoItButton));
    panel->multiSelect(true, false);
    clickLine(1);
    EXPECT_FALSE(panel->isStandardWidgetEnabled(StandardPanel::DoItButton));
}

TEST_F(ScrollListPanelTest, DisabledDoItIgnoresPressesAndReturn)
{
    ui.click(panel, panel->getStandardWidgetBox(StandardPanel::DoItButton).centre());
    ui.focus(panel);
    ui.pressKey(Event::KeyReturn);
    EXPECT_EQ(ui.owner().count(StandardPanel::doItMsg), 0u);
}

TEST_F(ScrollListPanelTest, DoItTellsTheOwnerOnceALineIsSelected)
{
    clickLine(2);
    ui.click(panel, panel->getStandardWidgetBox(StandardPanel::DoItButton).centre());
    EXPECT_EQ(ui.owner().count(StandardPanel::doItMsg), 1u);
    EXPECT_EQ(panel->getSelectedItemStringW(), LightweightString<wchar_t>(L"gamma"));
}

TEST_F(ScrollListPanelTest, DoubleClickedLineActsAsTheDoItButton)
{
    ui.doubleClick(panel->getList()->getItemWidget(0));
    EXPECT_EQ(ui.owner().count(StandardPanel::doItMsg), 1u);
}
