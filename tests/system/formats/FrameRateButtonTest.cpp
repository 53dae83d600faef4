// FrameRateButton: the menu holds the given rates in order, and the menu text is the value.
#include "FormatsTestSupport.h"

#include "formats/FrameRateButton.h"

using namespace formatstest;
using Cv::FrameRate;

class FrameRateButtonTest : public ::testing::Test {
protected:
    FrameRateButton* make(const std::vector<FrameRate>& rates)
    {
        return ui.make<FrameRateButton>(FrameRateButton::InitArgs(rates, 80, 240), Glob::BottomLeft(20, 600));
    }
    UiHarness ui;
};

TEST_F(FrameRateButtonTest, MenuKeepsTheGivenOrderAndStartsOnTheFirstRate)
{
    auto* button = make({ FrameRate::Fps60, FrameRate::Fps23_976, FrameRate::Fps25 });
    EXPECT_EQ(labels(button->getBtn()), (std::vector<std::wstring> { L"60 fps", L"23.976 fps", L"25 fps" }));
    EXPECT_EQ(button->getSelectedFrameRate(), FrameRate::Fps60);
}

TEST_F(FrameRateButtonTest, PickingAnEntryGivesBackItsExactRate)
{
    auto* button = make({ FrameRate::Fps25, FrameRate::Fps29_97, FrameRate::Fps30 });
    pick(ui, button->getBtn(), L"29.97 fps");
    EXPECT_EQ(button->getSelectedFrameRate(), FrameRate::Fps29_97);
    EXPECT_TRUE(ui.owner().heard(DropDownMenuButton::dropDownMenuButtonMsg));
}

TEST_F(FrameRateButtonTest, SettingARateSelectsItByNameAndAnAbsentRateChangesNothing)
{
    auto* button = make({ FrameRate::Fps24, FrameRate::Fps48 });
    button->setFrameRate(FrameRate::Fps48);
    EXPECT_EQ(button->getSelectedFrameRate(), FrameRate::Fps48);
    button->setFrameRate(FrameRate::Fps50);
    EXPECT_EQ(button->getSelectedFrameRate(), FrameRate::Fps48);
}

TEST_F(FrameRateButtonTest, AnEmptyListGivesAnEmptyMenuAndAnUnknownRate)
{
    auto* button = make({});
    EXPECT_TRUE(button->getBtn()->getItems().empty());
    EXPECT_EQ(button->getSelectedFrameRate(), FrameRate::Unknown);
}

TEST_F(FrameRateButtonTest, TheListlessButtonOffersTheProjectRates)
{
    auto* button = new FrameRateButton(300, 0);
    ui.owner().addChild(button, Glob::BottomLeft(20, 500));
    EXPECT_EQ(button->getBtn()->numEntries(), Cv::getFrameRates(Cv::FrameRateGroup::ProjectRates).size());
}
