#include "toolkit/testing/UiHarness.h"
#include "toolkit/ui/MenuGlob.h"
#include "toolkit/ui/StandardPanel.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

struct MenuFixture : testing::Test {
    UiHarness ui;
    std::vector<std::string> chosen;
    StandardPanel* panel = nullptr;

    void SetUp() override
    {
        panel = ui.makeTopLevel<StandardPanel>(StandardPanel::InitArgs(L"Menu panel", 300, 200), {100, 300});
        MenuGlob* menu = panel->getMenu();
        menu->addMenuItem(MenuItem(L"Alpha", [this] { chosen.push_back("Alpha"); }));
        menu->addMenuItem(MenuItem(L"Group", {}, MenuItemGroupOpen));
        menu->addMenuItem(MenuItem(L"Beta", [this] { chosen.push_back("Beta"); }, MenuItemInGroup));
        menu->addMenuItem(MenuItem(L"Gamma", [this] { chosen.push_back("Gamma"); }).setEnabled(false));
        menu->addMenuItem(MenuItem(L"Delta", [this] { chosen.push_back("Delta"); }));
    }

    MenuGlob* openByButton()
    {
        ui.click(panel, panel->getStandardWidgetBox(StandardPanel::MenuButton).centre());
        return panel->getOpenMenu();
    }

    XY<int> rowCentre(MenuGlob* menu, int index)
    {
        // Rows are equal in height and fill the menu from its top, inside a thin frame.
        const int rowHeight = (menu->getHeight() - 4) / static_cast<int>(menu->numItems());
        return {menu->getWidth() / 2, menu->getHeight() - 2 - rowHeight * index - rowHeight / 2};
    }
};

} // namespace

TEST_F(MenuFixture, MenuButtonPopsTheMenuUpUnderItOnTop)
{
    MenuGlob* menu = openByButton();
    ASSERT_NE(menu, nullptr);
    EXPECT_TRUE(menu->isPopUp());
    EXPECT_EQ(ui.screen().getTopLevels().back(), menu);
    const GlobBox button = panel->getStandardWidgetBox(StandardPanel::MenuButton).translated(panel->getScreenPos());
    EXPECT_EQ(menu->getScreenBox().top(), button.bottom());
    EXPECT_EQ(menu->getScreenBox().left(), button.left());
    // Wide enough for its longest label; never narrower than a label needs.
    EXPECT_GE(menu->getWidth(), menu->calcSize().x);
}

TEST_F(MenuFixture, ClickingAnItemRunsItsCallbackAndClosesTheMenu)
{
    MenuGlob* menu = openByButton();
    ASSERT_NE(menu, nullptr);
    GlobWatch watch(menu);
    ui.click(menu, rowCentre(menu, 2));
    ui.step();
    EXPECT_EQ(chosen, std::vector<std::string>{"Beta"});
    EXPECT_FALSE(watch.alive());
    EXPECT_EQ(panel->getOpenMenu(), nullptr);
}

TEST_F(MenuFixture, HeadingsAndDisabledItemsAreNeverChosen)
{
    MenuGlob* menu = openByButton();
    ASSERT_NE(menu, nullptr);
    GlobWatch watch(menu);
    // The disabled item first: a click on the open heading folds its group and moves the rows below it.
    ui.click(menu, rowCentre(menu, 3));
    ui.click(menu, rowCentre(menu, 1));
    EXPECT_TRUE(chosen.empty());
    EXPECT_TRUE(watch.alive());
    EXPECT_FALSE(menu->setHighlighted(1));
    EXPECT_FALSE(menu->chooseItem(3));
    EXPECT_FALSE(menu->chooseItem(99));
}

TEST_F(MenuFixture, KeyboardSkipsUnchoosableItemsAndWraps)
{
    MenuGlob* menu = openByButton();
    ASSERT_NE(menu, nullptr);
    ui.pressKey(Event::KeyDown);
    EXPECT_EQ(menu->getHighlighted(), 0);
    ui.pressKey(Event::KeyDown);
    EXPECT_EQ(menu->getHighlighted(), 2); // over the heading
    ui.pressKey(Event::KeyDown);
    EXPECT_EQ(menu->getHighlighted(), 4); // over the disabled item
    ui.pressKey(Event::KeyDown);
    EXPECT_EQ(menu->getHighlighted(), 0); // round to the first
    ui.pressKey(Event::KeyUp);
    EXPECT_EQ(menu->getHighlighted(), 4);
    ui.pressKey(Event::KeyReturn);
    ui.step();
    EXPECT_EQ(chosen, std::vector<std::string>{"Delta"});
    EXPECT_EQ(panel->getOpenMenu(), nullptr);
}

TEST_F(MenuFixture, EscapeAndAPressOutsideCloseWithoutChoosing)
{
    MenuGlob* menu = openByButton();
    ASSERT_NE(menu, nullptr);
    GlobWatch first(menu);
    ui.pressKey(Event::KeyEscape);
    ui.step();
    EXPECT_FALSE(first.alive());
    // The panel was not closed by the Escape the menu used.
    EXPECT_TRUE(is_good_glob_ptr(panel));

    menu = openByButton();
    ASSERT_NE(menu, nullptr);
    GlobWatch second(menu);
    const GlobBox userArea = panel->getUserArea();
    ui.click(panel, userArea.centre());
    ui.step();
    EXPECT_FALSE(second.alive());
    EXPECT_TRUE(chosen.empty());
}

TEST_F(MenuFixture, ACopyOfAPopUpHasItsItemsButIsClosedWithNothingHighlighted)
{
    MenuGlob* menu = openByButton();
    ASSERT_NE(menu, nullptr);
    ASSERT_TRUE(menu->setHighlighted(4));
    GlobWatch popUp(menu);
    {
        const MenuGlob copy(*menu);
        EXPECT_EQ(copy.numItems(), menu->numItems());
        EXPECT_EQ(copy.getHighlighted(), -1);
        EXPECT_FALSE(copy.isPopUp());
    }
    // The copy gave back nothing of the pop-up's when it went: a press outside still closes the pop-up.
    ui.click(panel, panel->getUserArea().centre());
    ui.step();
    EXPECT_FALSE(popUp.alive());
}

TEST_F(MenuFixture, PressingTheMenuButtonAgainClosesTheMenu)
{
    ASSERT_NE(openByButton(), nullptr);
    GlobWatch open(panel->getOpenMenu());
    ui.click(panel, panel->getStandardWidgetBox(StandardPanel::MenuButton).centre());
    ui.step();
    EXPECT_FALSE(open.alive());
}

TEST_F(MenuFixture, ACallbackMayDestroyThePanelThatOwnsTheMenu)
{
    GlobWatch panelWatch(panel);
    panel->getMenu()->addMenuItem(MenuItem(L"Close panel", [this] { Glob::destroy(panel); }));
    MenuGlob* menu = openByButton();
    ASSERT_NE(menu, nullptr);
    ui.click(menu, rowCentre(menu, 5));
    ui.step();
    EXPECT_FALSE(panelWatch.alive());
}

TEST_F(MenuFixture, DestroyingThePanelTakesItsOpenMenuWithIt)
{
    MenuGlob* menu = openByButton();
    ASSERT_NE(menu, nullptr);
    GlobWatch watch(menu);
    Glob::destroy(panel);
    ui.step();
    EXPECT_FALSE(watch.alive());
    // A click where the menu was reaches nothing stale.
    ui.clickAt({110, 250});
    EXPECT_TRUE(chosen.empty());
}

TEST(MenuGlob, EmptyMenuDoesNotPopUp)
{
    UiHarness ui;
    MenuGlob menu{MenuGlob::InitArgs()};
    EXPECT_EQ(menu.popUp({10, 10}, nullptr), nullptr);
}

TEST(MenuGlob, PopUpNearTheScreenEdgeIsMovedOnScreen)
{
    UiHarness ui(400, 300);
    MenuGlob menu{MenuGlob::InitArgs({MenuItem(L"One"), MenuItem(L"Two"), MenuItem(L"Three")})};
    MenuGlob* shown = menu.popUp({390, 20}, nullptr);
    ASSERT_NE(shown, nullptr);
    EXPECT_TRUE(ui.screen().getArea().contains(shown->getScreenBox()));
}
