// The open menu: folding groups, keyboard movement, scrolling a menu taller than the screen, the right-hand
// column, coloured items and per-item tooltips.
#include "toolkit/testing/UiHarness.h"
#include "toolkit/ui/MenuGlob.h"
#include "toolkit/ui/UifStd.h"

#include <gtest/gtest.h>

#include <cmath>

#include <string>
#include <vector>

namespace {

double colourDistance(const Colour& a, const Colour& b)
{
    return std::abs(a.r() - b.r()) + std::abs(a.g() - b.g()) + std::abs(a.b() - b.b());
}

// Alpha, [Fruit: Apple, Avocado], [Tools (folded): Hammer, Saw], Zebra (disabled), Zed
std::vector<MenuItem> groupedItems(std::vector<std::string>* chosen)
{
    auto note = [chosen](const char* name) {
        return [chosen, name] { chosen->push_back(name); };
    };
    return {
        MenuItem(L"Alpha", note("Alpha")),
        MenuItem(L"Fruit", {}, MenuItemGroupOpen),
        MenuItem(L"Apple", note("Apple"), MenuItemInGroup),
        MenuItem(L"Avocado", note("Avocado"), MenuItemInGroup),
        MenuItem(L"Tools", {}, MenuItemGroupFolded),
        MenuItem(L"Hammer", note("Hammer"), MenuItemInGroup),
        MenuItem(L"Saw", note("Saw"), MenuItemInGroup),
        MenuItem(L"Zebra", note("Zebra")).setEnabled(false),
        MenuItem(L"Zed", note("Zed")),
    };
}

struct OpenMenu : testing::Test {
    UiHarness ui;
    std::vector<std::string> chosen;
    MenuGlob* menu = nullptr;

    void SetUp() override
    {
        menu = MenuGlob::popUp(MenuGlob::InitArgs(groupedItems(&chosen)), {100, 700}, &ui.owner());
        ASSERT_NE(menu, nullptr);
    }
    XY<int> centreOf(size_t index) { return menu->getItemBox(index).centre(); }
};

} // namespace

TEST_F(OpenMenu, FoldedGroupsStartHiddenAndAHeadingClickTogglesThem)
{
    EXPECT_TRUE(menu->isItemShown(2));
    EXPECT_FALSE(menu->isItemShown(5));
    EXPECT_FALSE(menu->isItemShown(6));
    EXPECT_EQ(menu->numShownRows(), 7u);
    const int top = menu->getScreenBox().top();
    const int height = menu->getHeight();

    ui.click(menu, centreOf(4));
    EXPECT_TRUE(menu->isItemShown(5));
    EXPECT_TRUE(menu->isItemShown(6));
    // Two rows more, hanging from the same top edge.
    EXPECT_EQ(menu->getHeight(), height + 2 * UifStd::getButtonHeight());
    EXPECT_EQ(menu->getScreenBox().top(), top);

    ui.click(menu, centreOf(1));
    EXPECT_FALSE(menu->isItemShown(2));
    EXPECT_FALSE(menu->isItemShown(3));
    EXPECT_TRUE(menu->isItemShown(7)); // an ungrouped item after a group stays
    EXPECT_EQ(menu->getScreenBox().top(), top);
    EXPECT_TRUE(chosen.empty());
    EXPECT_FALSE(ui.owner().heard(MenuGlob::chosenMsg));

    // The rows follow the fold: a click where Zed now is chooses Zed.
    ui.click(menu, centreOf(8));
    ui.step();
    EXPECT_EQ(chosen, std::vector<std::string>{"Zed"});
    EXPECT_TRUE(ui.owner().heard(MenuGlob::chosenMsg));
}

TEST_F(OpenMenu, KeyboardStopsOnFoldedHeadingsOnlyAndOpensAndFoldsGroups)
{
    std::vector<int> visited;
    for (int i = 0; i < 5; ++i) {
        ui.pressKey(Event::KeyDown);
        visited.push_back(menu->getHighlighted());
    }
    // Open heading and disabled item skipped, folded heading visited, hidden items never, wrap to the top.
    EXPECT_EQ(visited, (std::vector<int>{0, 2, 3, 4, 8}));
    ui.pressKey(Event::KeyDown);
    EXPECT_EQ(menu->getHighlighted(), 0);

    EXPECT_FALSE(menu->setHighlighted(4)); // owners point at entries, not headings
    ui.typeText(L"t");
    ASSERT_EQ(menu->getHighlighted(), 4);
    ui.pressKey(Event::KeyRight);
    EXPECT_TRUE(menu->isItemShown(5));
    EXPECT_EQ(menu->getHighlighted(), 5);
    ui.pressKey(Event::KeyUp); // an open heading is not a stop
    EXPECT_EQ(menu->getHighlighted(), 3);
    ui.pressKey(Event::KeyDown);

    ui.pressKey(Event::KeyDown);
    EXPECT_EQ(menu->getHighlighted(), 6);
    ui.pressKey(Event::KeyLeft);
    EXPECT_FALSE(menu->isItemShown(6));
    EXPECT_EQ(menu->getHighlighted(), 4);

    // Return on a folded heading opens it rather than closing the menu.
    GlobWatch watch(menu);
    ui.pressKey(Event::KeyReturn);
    EXPECT_TRUE(watch.alive());
    EXPECT_TRUE(menu->isItemShown(5));
    ui.pressKey(Event::KeyReturn);
    ui.step();
    EXPECT_FALSE(watch.alive());
    EXPECT_EQ(chosen, std::vector<std::string>{"Hammer"});
}

TEST_F(OpenMenu, TypingALetterJumpsToTheNextMatchAndWraps)
{
    ui.typeText(L"a");
    EXPECT_EQ(menu->getHighlighted(), 0);
    ui.typeText(L"A");
    EXPECT_EQ(menu->getHighlighted(), 2);
    ui.typeText(L"a");
    EXPECT_EQ(menu->getHighlighted(), 3);
    ui.typeText(L"a");
    EXPECT_EQ(menu->getHighlighted(), 0);
    // Hidden and disabled items are not matched; a letter matching nothing leaves the highlight.
    ui.typeText(L"h");
    EXPECT_EQ(menu->getHighlighted(), 0);
    ui.typeText(L"z");
    EXPECT_EQ(menu->getHighlighted(), 8);
    ui.typeText(L"t");
    EXPECT_EQ(menu->getHighlighted(), 4);
}

TEST_F(OpenMenu, TooltipOfTheItemUnderThePointerShowsAfterARest)
{
    Glob::destroy(menu);
    std::vector<MenuItem> items{MenuItem(L"Plain"), MenuItem(L"Helpful")};
    items[1].tooltip(UIString(L"Explains itself"));
    menu = MenuGlob::popUp(MenuGlob::InitArgs(items), {100, 700}, &ui.owner());
    ASSERT_NE(menu, nullptr);

    ui.moveTo(menu, centreOf(1));
    ui.advance(Screen::getTooltipDelay() + 50);
    ASSERT_NE(ui.screen().getTooltip(), nullptr);

    ui.moveTo(menu, centreOf(0));
    ui.advance(Screen::getTooltipDelay() + 50);
    EXPECT_EQ(ui.screen().getTooltip(), nullptr);
}

TEST(MenuLook, RightColumnIsDrawnAtTheRightEdgeAndColouredItemsKeepTheirColours)
{
    UiHarness ui;
    const Colour back(0.9, 0.2, 0.2);
    const Colour text(1.0, 1.0, 1.0);
    std::vector<MenuItem> items{MenuItem(L"Wide format name"), MenuItem(L"HD||1920x1080"),
                                MenuItem(L"Red", {}, back, text)};
    MenuGlob* menu = MenuGlob::popUp(MenuGlob::InitArgs(items), {100, 700}, &ui.owner());
    ASSERT_NE(menu, nullptr);

    // The column adds to the width only what it needs beside the widest main text.
    const XY<int> withColumn = menu->calcSize();
    MenuGlob plain{MenuGlob::InitArgs({MenuItem(L"Wide format name"), MenuItem(L"HD")})};
    EXPECT_GT(withColumn.x, plain.calcSize().x);

    // Some ink in the right quarter of the column row, none in the right quarter of a plain row.
    auto inkInRightQuarter = [&](size_t index) {
        const GlobBox box = menu->getItemBox(index);
        const Colour bg = ui.pixelAt(menu, {box.right() - 2, box.bottom() + 2});
        for (int x = box.right() - box.width() / 4; x < box.right() - 2; ++x)
            for (int y = box.bottom() + 3; y < box.top() - 3; ++y)
                if (colourDistance(ui.pixelAt(menu, {x, y}), bg) > 0.3)
                    return true;
        return false;
    };
    EXPECT_TRUE(inkInRightQuarter(1));
    EXPECT_FALSE(inkInRightQuarter(0));

    const GlobBox red = menu->getItemBox(2);
    EXPECT_LT(colourDistance(ui.pixelAt(menu, {red.right() - 3, red.bottom() + 2}), back), 0.05);
}

TEST(MenuScrolling, AMenuTallerThanTheScreenScrollsAndKeepsTheHighlightInView)
{
    UiHarness ui(800, 400);
    std::vector<MenuItem> items;
    int picked = -1;
    for (int i = 0; i < 500; ++i)
        items.emplace_back(UIString(LightweightString<wchar_t>(L"Item " + std::to_wstring(i))),
                           [&picked, i] { picked = i; });
    MenuGlob* menu = MenuGlob::popUp(MenuGlob::InitArgs(items), {10, 390}, &ui.owner());
    ASSERT_NE(menu, nullptr);
    EXPECT_LE(menu->getHeight(), 400);
    EXPECT_TRUE(ui.screen().getArea().contains(menu->getScreenBox()));
    ASSERT_TRUE(menu->isScrollable());
    const size_t view = menu->rowsInView();
    ASSERT_GT(view, 2u);

    // The clamps at both ends.
    menu->scrollBy(-5);
    EXPECT_EQ(menu->getFirstRow(), 0u);
    menu->scrollBy(100000);
    EXPECT_EQ(menu->getFirstRow(), 500u - view);

    ui.pressKey(Event::KeyHome);
    EXPECT_EQ(menu->getHighlighted(), 0);
    EXPECT_EQ(menu->getFirstRow(), 0u);
    ui.pressKey(Event::KeyUp); // wraps to the last item, which must come into view
    EXPECT_EQ(menu->getHighlighted(), 499);
    EXPECT_FALSE(menu->getItemBox(499).empty());
    ui.pressKey(Event::KeyPageUp);
    EXPECT_FALSE(menu->getItemBox(size_t(menu->getHighlighted())).empty());
    EXPECT_LT(menu->getHighlighted(), 499);

    ui.pressKey(Event::KeyHome);
    ui.wheel(menu, -2);
    EXPECT_EQ(menu->getFirstRow(), 6u);
    // A click lands on the row drawn under the pointer, not the row that would be there unscrolled.
    const GlobBox row = menu->getItemBox(10);
    ASSERT_FALSE(row.empty());
    ui.click(menu, row.centre());
    ui.step();
    EXPECT_EQ(picked, 10);
}
