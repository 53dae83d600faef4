// Check box, drop-down and menu-launched choice rows of a form.
#include "FormTestSupport.h"

#include "toolkit/ui/GlobManager.h"
#include "toolkit/widgets/Checkbox.h"
#include "toolkit/widgets/DropDownMenuButton.h"
#include "toolkit/widgets/TitleButton.h"
#include "toolkit/widgets/TitledMenuButtonPlain.h"

using namespace formtest;

TEST_F(FormFixture, ClickingTheCheckBoxRelaysYesThenNo)
{
    Checkbox* check = row<fo_bool>(LoopRow)->getCheckbox();
    ui.click(check);
    EXPECT_EQ(lastRaw(), "FormUp 004 Yes");
    ui.click(check);
    EXPECT_EQ(lastRaw(), "FormUp 004 No");
    EXPECT_EQ(f->m_get_focus(), LoopRow);
    EXPECT_EQ(f->m_get_element_choice_state(LoopRow), 0);
}

TEST_F(FormFixture, CheckBoxEntryChecksOnlyForTheYesText)
{
    f->m_set_element_entry(LoopRow, L"Yes");
    EXPECT_TRUE(row<fo_bool>(LoopRow)->getCheckbox()->getValue());
    EXPECT_EQ(f->m_get_element_entry(LoopRow), L"Yes");
    f->m_set_element_entry(LoopRow, L"yes");
    EXPECT_FALSE(row<fo_bool>(LoopRow)->getCheckbox()->getValue());
}

TEST_F(FormFixture, ChoosingFromTheDropDownRelaysTheLabel)
{
    DropDownMenuButton* button = row<fo_cycle>(FormatRow)->getBtn()->getBtn();
    ui.click(button);
    chooseFromMenu(button->getOpenMenu(), 2);
    EXPECT_EQ(lastRaw(), "FormUp 005 HD");
    EXPECT_EQ(f->m_get_element_choice_state(FormatRow), 2);
    EXPECT_EQ(f->m_get_focus(), FormatRow);
}

TEST_F(FormFixture, DropDownEntrySelectsByLabelAndChoiceStateByIndex)
{
    auto* format = row<fo_cycle>(FormatRow);
    f->m_set_element_entry(FormatRow, L"NTSC");
    EXPECT_EQ(format->getBtn()->getSelectedItem(), 1);
    f->m_set_element_entry(FormatRow, L"SECAM");
    EXPECT_EQ(format->m_get_choice_state(), 1);
    f->m_set_element_choice_state(FormatRow, 2, true);
    EXPECT_EQ(format->getBtn()->getSelectedItemNameW(), L"HD");
    EXPECT_EQ(format->m_get_choice_state_label(), L"HD");
}

TEST_F(FormFixture, TheLaunchButtonHasTheFormPopUpTheMenuUnderIt)
{
    auto* quality = row<fo_gench>(QualityRow);
    ui.click(quality->getBtn()->getBtn());
    MenuGlob* menu = quality->m_get_menu();
    ASSERT_NE(menu, nullptr);
    EXPECT_EQ(GlobManager::find(form::menuName), menu);
    EXPECT_EQ(menu->numItems(), 3u);
    EXPECT_EQ(menu->getScreenBox().top(), quality->getBtn()->getBtn()->getScreenBox().bottom());
    EXPECT_EQ(f->m_get_focus(), QualityRow);
}

TEST_F(FormFixture, AChoiceFromTheLaunchedMenuIsRelayedAndTheMenuForgotten)
{
    auto* quality = row<fo_gench>(QualityRow);
    ui.click(quality->getBtn()->getBtn());
    chooseFromMenu(quality->m_get_menu(), 1);
    EXPECT_EQ(lastRaw(), "FormUp 006 Good");
    EXPECT_EQ(quality->m_get_choice_state(), 1);
    EXPECT_EQ(quality->getBtn()->getBtn()->getString().getString(), L"Good");
    EXPECT_EQ(quality->m_get_menu(), nullptr);
}

TEST_F(FormFixture, LaunchingWhileTheMenuIsOpenClosesIt)
{
    auto* quality = row<fo_gench>(QualityRow);
    ui.click(quality->getBtn()->getBtn());
    GlobWatch menu(quality->m_get_menu());
    ASSERT_TRUE(menu);
    quality->getBtn()->getBtn()->activate();
    ui.step();
    EXPECT_FALSE(menu.alive());
    EXPECT_EQ(quality->m_get_menu(), nullptr);
    EXPECT_TRUE(client->raw.empty());
}

TEST_F(FormFixture, DownMessageReplacesTheMenuWithTheTextAfterElevenCharacters)
{
    auto* quality = row<fo_gench>(QualityRow);
    f->sendMsg(quality, "FoElDn 006 Draft\nFinal");
    EXPECT_EQ(quality->m_get_menu_text(), "Draft\nFinal");
    ui.click(quality->getBtn()->getBtn());
    ASSERT_NE(quality->m_get_menu(), nullptr);
    EXPECT_EQ(quality->m_get_menu()->numItems(), 2u);
    f->sendMsg(quality, "FoElDn");
    EXPECT_EQ(quality->m_get_menu_text(), "");
}

TEST_F(FormFixture, MenuPootMakesTheElementForgetItsMenu)
{
    auto* quality = row<fo_gench>(QualityRow);
    ui.click(quality->getBtn()->getBtn());
    ASSERT_NE(quality->m_get_menu(), nullptr);
    f->sendMsg(quality, fo_gench::menuGoneMsg);
    EXPECT_EQ(quality->m_get_menu(), nullptr);
}

TEST_F(FormFixture, AMessageNamingALabelChoosesItAndOthersAreIgnored)
{
    auto* quality = row<fo_gench>(QualityRow);
    f->sendMsg(quality, "Best");
    EXPECT_EQ(quality->m_get_choice_state(), 2);
    EXPECT_EQ(lastRaw(), "FormUp 006 Best");
    f->sendMsg(quality, "Worst");
    EXPECT_EQ(quality->m_get_choice_state(), 2);
    EXPECT_EQ(client->raw.size(), 1u);
}

TEST(FormChoice, LabelsGivenAsResourceIdsMatchTheirText)
{
    fo_gench answer(300, 24, 0, L"Answer", {UIString(ResId(fo_bool::yesResource)), L"Later"});
    answer.m_set_entry(L"Yes");
    EXPECT_EQ(answer.m_get_choice_state(), 0);
    EXPECT_EQ(answer.m_get_menu_text(), "Yes\nLater");
}

TEST(TitledMenuButtonPlain, TheTitleColumnIsTheGivenShareOfTheWidth)
{
    TitledMenuButtonPlain plain(L"Format", {L"PAL", L"NTSC"}, 0.25, 200, 24);
    EXPECT_EQ(plain.getTitleWidth(), 50);
    EXPECT_EQ(plain.getBtn()->getX(), 50);
    EXPECT_EQ(TitledMenuButtonPlain::titleWidthFor(7.0, 200), 200);
    EXPECT_EQ(TitledMenuButtonPlain::titleWidthFor(-1.0, 200), 1);
}

TEST(TitleButton, ItsButtonsMessageReachesTheOwnerFromTheTitleButton)
{
    UiHarness ui;
    auto* titled = new TitleButton(L"Preset", L"Choose", 80, 240);
    ui.owner().addChild(titled, Glob::BottomLeft(10, 10));
    ui.click(titled->getBtn());
    EXPECT_EQ(ui.owner().last(), Button::clickMsg);
    EXPECT_EQ(ui.owner().lastSender(), titled);
}
