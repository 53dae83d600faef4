// Keyboard focus: tab order, skipping what cannot take the focus, hosts listed by their parts, and the focus
// events themselves.

#include "UiTestWidgets.h"
#include "toolkit/testing/UiHarness.h"
#include "toolkit/ui/TabOrderManager.h"

#include <gtest/gtest.h>

namespace {

// A host of several focusable parts, listed in its own order (right to left here, to prove the order is the
// host's and not the children's).
class PartsHost : public ProbeGlob, public TabOrderableHost {
public:
    PartsHost()
        : ProbeGlob(200, 30)
    {
        for (int i = 0; i < 3; ++i)
            parts.push_back(
                static_cast<FocusProbe*>(addChild(new FocusProbe(40, 20), Glob::BottomLeft(5 + 50 * i, 5))));
    }
    void getTabOrderables(std::vector<TabOrderable*>& out) override
    {
        for (auto it = parts.rbegin(); it != parts.rend(); ++it)
            out.push_back(*it);
    }
    std::vector<FocusProbe*> parts;
};

} // namespace

class Focus : public ::testing::Test {
protected:
    UiHarness ui { 400, 300 };
    std::vector<FocusProbe*> fields;

    void SetUp() override
    {
        for (int i = 0; i < 4; ++i) {
            auto* f = new FocusProbe(60, 20);
            ui.owner().addChild(f, Glob::BottomLeft(10, 200 - 30 * i));
            ASSERT_TRUE(TabOrderManager::addTabStop(f));
            fields.push_back(f);
        }
    }
    Glob* focused() { return ui.screen().getFocus(); }
};

TEST_F(Focus, TabWalksTheStopsInOrderAndWrapsBothWays)
{
    ui.focus(fields[0]);
    ui.pressKey(Event::KeyTab);
    EXPECT_EQ(focused(), fields[1]);
    ui.pressKey(Event::KeyTab);
    ui.pressKey(Event::KeyTab);
    ui.pressKey(Event::KeyTab);
    EXPECT_EQ(focused(), fields[0]) << "wrapped round";
    ui.pressKey(Event::KeyBackTab);
    EXPECT_EQ(focused(), fields[3]);
    ui.pressKey(Event::KeyTab, Event::Shift);
    EXPECT_EQ(focused(), fields[2]) << "shift+tab is back-tab";
}

TEST_F(Focus, HiddenDisabledAndUnwillingWidgetsAreSkipped)
{
    fields[1]->setVisible(false);
    fields[2]->setActive(false, NoRedraw);
    ui.focus(fields[0]);
    ui.pressKey(Event::KeyTab);
    EXPECT_EQ(focused(), fields[3]);

    fields[2]->setActive(true, NoRedraw);
    fields[2]->wantsFocus = false;
    ui.pressKey(Event::KeyBackTab);
    EXPECT_EQ(focused(), fields[0]);

    // A stop inside a hidden parent is as hidden as the parent.
    auto* box = new ProbeGlob(100, 40);
    ui.owner().addChild(box, Glob::BottomLeft(200, 10));
    auto* inner = new FocusProbe(30, 20);
    box->addChild(inner, Glob::BottomLeft(2, 2));
    TabOrderManager::addTabStop(inner, 1);
    box->setVisible(false);
    EXPECT_EQ(TabOrderManager::incrementTabStop(fields[0]), fields[3]);
}

TEST_F(Focus, TheFocusedWidgetHearsGainAndLossAndLosesFocusWhenHidden)
{
    ui.focus(fields[0]);
    EXPECT_EQ(fields[0]->countOf(Event::FocusGained), 1u);
    ui.click(fields[1]);
    EXPECT_EQ(focused(), fields[1]) << "a press on a focusable widget focuses it";
    EXPECT_EQ(fields[0]->countOf(Event::FocusLost), 1u);

    fields[1]->setVisible(false);
    EXPECT_EQ(focused(), nullptr);
    EXPECT_EQ(fields[1]->countOf(Event::FocusLost), 1u);
    EXPECT_FALSE(ui.focus(fields[1])) << "a hidden widget cannot take the focus";

    Glob::destroy(fields[2]);
    fields[2] = nullptr;
    ui.focus(fields[0]);
    ui.pressKey(Event::KeyTab);
    ui.pressKey(Event::KeyTab);
    EXPECT_EQ(focused(), fields[0]) << "dead and hidden stops are passed over";
}

TEST_F(Focus, StopsCanBeInsertedAndHostsAddTheirPartsInTheirOwnOrder)
{
    auto* host = new PartsHost;
    ui.owner().addChild(host, Glob::BottomLeft(100, 20));
    EXPECT_EQ(TabOrderManager::addTabStopsFrom(host, 1), 3u);
    std::vector<Glob*> expected { fields[0], host->parts[2], host->parts[1], host->parts[0], fields[1], fields[2],
        fields[3] };
    EXPECT_EQ(TabOrderManager::getTabStops(fields[0]), expected);

    // Moving on from the host as a whole starts after its last part (or before its first).
    EXPECT_EQ(TabOrderManager::incrementTabStop(host), fields[1]);
    EXPECT_EQ(TabOrderManager::decrementTabStop(host), fields[0]);

    EXPECT_FALSE(TabOrderManager::addTabStop(host)) << "the host itself does not take the focus";
    EXPECT_TRUE(TabOrderManager::addTabStop(fields[3], 0));
    EXPECT_EQ(TabOrderManager::getTabStops(fields[0]).front(), fields[3]) << "moved, not duplicated";
    EXPECT_EQ(TabOrderManager::getTabStops(fields[0]).size(), 7u);
}

TEST_F(Focus, TabWithNothingFocusedStartsAtTheFirstStop)
{
    ASSERT_EQ(focused(), nullptr);
    ui.pressKey(Event::KeyTab);
    EXPECT_EQ(focused(), fields[0]);
}
