// DropDownMenuButton and TitleMenuButton, driven as a user drives them.
#include "toolkit/gfx/Font.h"
#include "toolkit/support/ValServer.h"
#include "toolkit/testing/UiHarness.h"
#include "toolkit/ui/MenuGlob.h"
#include "toolkit/ui/UifStd.h"
#include "toolkit/widgets/DropDownMenuButton.h"
#include "toolkit/widgets/TitleMenuButton.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

// A heading, then three entries under it: positions count the entries only.
std::vector<MenuItem> formatItems()
{
    return {MenuItem(L"Standard", {}, MenuItemGroupOpen), MenuItem(L"PAL||720x576", {}, MenuItemInGroup),
            MenuItem(L"NTSC||720x480", {}, MenuItemInGroup), MenuItem(L"HD||1920x1080", {}, MenuItemInGroup)};
}

struct DropDown : testing::Test {
    UiHarness ui;
    DropDownMenuButton* button = nullptr;

    void SetUp() override
    {
        button = ui.make<DropDownMenuButton>(DropDownMenuButton::InitArgs(formatItems(), MenuItemIndex(0)),
                                             Glob::BottomLeft(50, 400));
    }
    MenuGlob* openByClick()
    {
        ui.click(button);
        return button->getOpenMenu();
    }
};

} // namespace

TEST_F(DropDown, ClickingOpensUnderTheButtonAndAChoiceReachesTheOwner)
{
    MenuGlob* menu = openByClick();
    ASSERT_NE(menu, nullptr);
    EXPECT_EQ(menu->getScreenBox().top(), button->getScreenBox().bottom());
    EXPECT_GE(menu->getWidth(), button->getWidth());
    EXPECT_TRUE(button->isDown());
    EXPECT_EQ(menu->getHighlighted(), 1); // the selected entry, as an item index

    GlobWatch watch(menu);
    ui.click(menu, menu->getItemBox(3).centre());
    ui.step();
    EXPECT_FALSE(watch.alive());
    EXPECT_EQ(ui.owner().count(DropDownMenuButton::dropDownMenuButtonMsg), 1u);
    EXPECT_EQ(ui.owner().lastSender(), button);
    EXPECT_EQ(button->getSelectedItem(), 2);
    EXPECT_EQ(button->getSelectedItemNameW(), L"HD||1920x1080");
    EXPECT_EQ(button->getDisplayedText(), L"HD");
    EXPECT_FALSE(button->isDown());
    EXPECT_EQ(button->getOpenMenu(), nullptr);
}

TEST_F(DropDown, ClosingWithoutAChoiceChangesNothingAndSendsNothing)
{
    ASSERT_NE(openByClick(), nullptr);
    ui.pressKey(Event::KeyEscape);
    ui.step();
    EXPECT_EQ(button->getOpenMenu(), nullptr);
    EXPECT_FALSE(button->isDown());

    // A second press on the button itself closes the menu it opened.
    ASSERT_NE(openByClick(), nullptr);
    ui.click(button);
    ui.step();
    EXPECT_EQ(button->getOpenMenu(), nullptr);
    EXPECT_EQ(ui.owner().count(), 0u);
    EXPECT_EQ(button->getSelectedItem(), 0);
}

TEST_F(DropDown, SetMessageRenamesWhatAChoiceSends)
{
    button->setMessage("FormatPicked");
    MenuGlob* menu = openByClick();
    ASSERT_NE(menu, nullptr);
    ui.pressKey(Event::KeyDown);
    ui.pressKey(Event::KeyReturn);
    ui.step();
    EXPECT_EQ(ui.owner().count("FormatPicked"), 1u);
    EXPECT_FALSE(ui.owner().heard(DropDownMenuButton::dropDownMenuButtonMsg));
    EXPECT_EQ(button->getSelectedItem(), 1);
}

TEST_F(DropDown, SelectionByPositionAndByLabel)
{
    EXPECT_TRUE(button->setSelectedItem(MenuItemIndex(2)));
    EXPECT_EQ(button->getSelectedItemNameW(), L"HD||1920x1080");
    EXPECT_TRUE(button->setSelectedItem(MenuItemIndex(L"NTSC||720x480")));
    EXPECT_EQ(button->getSelectedItem(), 1);
    // A heading is not an entry, and a label that matches nothing leaves the selection alone.
    button->setSelectedItem(MenuItemIndex(L"Standard"));
    EXPECT_EQ(button->getSelectedItem(), 1);
    button->setSelectedItem(MenuItemIndex(L"Nothing like it"));
    EXPECT_EQ(button->getSelectedItem(), 1);
    // Past the end selects nothing, and says so.
    EXPECT_TRUE(button->setSelectedItem(MenuItemIndex(size_t(2))));
    EXPECT_FALSE(button->setSelectedItem(MenuItemIndex(size_t(1) << 33)));
    EXPECT_EQ(button->getSelectedItem(), -1);
    button->setSelectedItem(MenuItemIndex(0));
    EXPECT_FALSE(button->setSelectedItem(MenuItemIndex(uint16_t(3))));
    EXPECT_EQ(button->getSelectedItem(), -1);
    EXPECT_TRUE(button->getSelectedItemNameW().empty());
    EXPECT_TRUE(button->getDisplayedText().empty());
    EXPECT_EQ(ui.owner().count(), 0u);

    // Replacing the entries from code leaves the keyboard where it was.
    auto* other = ui.make<DropDownMenuButton>(DropDownMenuButton::InitArgs(formatItems()), Glob::BottomLeft(300, 400));
    ASSERT_TRUE(ui.focus(other));
    button->setStrings(std::vector<UIString>{L"One", L"Two"}, MenuItemIndex(L"Two"));
    EXPECT_TRUE(other->hasFocus());
    EXPECT_EQ(button->getSelectedItem(), 1);
    EXPECT_EQ(button->numEntries(), 2u);
    button->setStrings(std::vector<MenuItem>{}, MenuItemIndex(0));
    EXPECT_EQ(button->getSelectedItem(), -1);
    EXPECT_EQ(openByClick(), nullptr); // an empty menu does not open
}

TEST_F(DropDown, OwnTextReplacesTheSelectedLabelOnTheFace)
{
    button->setString(UIString(L"Own words"));
    EXPECT_EQ(button->getDisplayedText(), L"PAL");
    button->useSelectedForButtonDisplay(false);
    EXPECT_EQ(button->getDisplayedText(), L"Own words");
    button->setSelectedItem(MenuItemIndex(2));
    EXPECT_EQ(button->getDisplayedText(), L"Own words");
}

TEST_F(DropDown, KeysOpenTheMenuWhenFocusedAndADisabledButtonStaysShut)
{
    for (int key : {int(' '), int(Event::KeyReturn), int(Event::KeyDown)}) {
        ASSERT_TRUE(ui.focus(button));
        ui.pressKey(key);
        ASSERT_NE(button->getOpenMenu(), nullptr) << key;
        ui.pressKey(Event::KeyEscape);
        ui.step();
        EXPECT_EQ(button->getOpenMenu(), nullptr);
        EXPECT_TRUE(button->hasFocus()); // the keyboard comes back
    }
    button->setEnabled(false);
    EXPECT_EQ(openByClick(), nullptr);
}

TEST_F(DropDown, DestroyingTheButtonTakesItsOpenMenuAlong)
{
    MenuGlob* menu = openByClick();
    ASSERT_NE(menu, nullptr);
    GlobWatch watch(menu);
    Glob::destroy(button);
    ui.step();
    EXPECT_FALSE(watch.alive());
}

TEST(DropDownWidth, CalcWidthFitsTheWidestMainColumnAndTheArrow)
{
    UiHarness ui;
    const Pictor::FontDesc font = UifStd::getDefaultFont();
    const uint16_t narrow = DropDownMenuButton::calcWidth(std::vector<UIString>{L"ab", L"abc"}, font);
    const uint16_t wide = DropDownMenuButton::calcWidth(std::vector<UIString>{L"ab", L"a much longer label"}, font);
    const int longest = Pictor::loadFont(font)->pixelWidth(std::wstring_view(L"a much longer label"));
    EXPECT_GT(wide, narrow);
    EXPECT_GE(wide, longest + UifStd::getButtonHeight());
    // The right-hand column is not on the face, so it takes no width there.
    EXPECT_EQ(DropDownMenuButton::calcWidth(std::vector<UIString>{L"abc||a long right column"}, font), narrow);
    // A bigger font needs more room.
    EXPECT_GT(DropDownMenuButton::calcWidth(std::vector<UIString>{L"abc"}, font.withSize(font.size * 2)), narrow);
}

TEST(TitleMenu, TitleBesideTheButtonAndChoicesForwardedAndPublished)
{
    UiHarness ui;
    auto* titled = ui.make<TitleMenuButton>(
        TitleMenuButton::InitArgs(UIString(L"Rate"), {L"24", L"25", L"30"}, 0, 0, 0), Glob::BottomLeft(20, 300));
    DropDownMenuButton* btn = titled->getBtn();
    ASSERT_NE(btn, nullptr);
    EXPECT_EQ(titled->getHeight(), UifStd::getButtonHeight());
    EXPECT_GT(btn->getX(), 0); // room for the title on the left
    EXPECT_EQ(btn->getX() + btn->getWidth(), titled->getWidth());
    EXPECT_EQ(titled->getSelectedItem(), 0);

    EXPECT_TRUE(titled->setSelectedItem(MenuItemIndex(L"30")));
    EXPECT_EQ(titled->getSelectedItemNameW(), L"30");

    auto value = Cv::make<ValServer<int>>(1);
    titled->setDataAdaptor(Cv::make<ServerValAdaptor<int>>(value));
    EXPECT_EQ(titled->getSelectedItem(), 1); // shows the bound value at once

    ui.click(btn);
    MenuGlob* menu = btn->getOpenMenu();
    ASSERT_NE(menu, nullptr);
    ui.click(menu, menu->getItemBox(2).centre());
    ui.step();
    EXPECT_EQ(value->getValue(), 2);
    EXPECT_EQ(ui.owner().count(DropDownMenuButton::dropDownMenuButtonMsg), 1u);
    EXPECT_EQ(ui.owner().lastSender(), titled);

    value->setValue(0);
    EXPECT_EQ(titled->getSelectedItemNameW(), L"24");
}

TEST(TitleMenu, FixedSizesAreKeptAndACopyHasItsOwnButton)
{
    UiHarness ui;
    auto* titled = ui.make<TitleMenuButton>(
        TitleMenuButton::InitArgs(UIString(L"Format"), {L"A", L"B"}, 80, 240, 30), Glob::BottomLeft(20, 300));
    EXPECT_EQ(titled->getWidth(), 240);
    EXPECT_EQ(titled->getHeight(), 30);
    EXPECT_EQ(titled->getBtn()->getX(), 80);
    EXPECT_EQ(titled->getBtn()->getWidth(), 160);

    titled->setSelectedItem(MenuItemIndex(1));
    TitleMenuButton copy(*titled);
    ASSERT_NE(copy.getBtn(), nullptr);
    EXPECT_NE(copy.getBtn(), titled->getBtn());
    EXPECT_EQ(copy.getSelectedItemNameW(), L"B");
    copy.setSelectedItem(MenuItemIndex(0));
    EXPECT_EQ(titled->getSelectedItem(), 1);
}

TEST(TitleMenu, ATallRowCentresAButtonOfItsOwnHeight)
{
    UiHarness ui;
    TitleMenuButton titled(UIString(L"Rate"), {L"24", L"25"}, Palette(), 200, 40, 20, nullptr, false);
    DropDownMenuButton* btn = titled.getBtn();
    EXPECT_EQ(btn->getHeight(), 20);
    EXPECT_EQ(btn->getY(), 10);
    EXPECT_EQ(btn->getX() + btn->getWidth(), 200);
    titled.resize(260, 40);
    EXPECT_EQ(btn->getX() + btn->getWidth(), 260);
}
