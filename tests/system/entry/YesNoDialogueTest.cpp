// The two-answer question panel.
#include "entry/YesNoDialogue.h"
#include "toolkit/testing/UiHarness.h"
#include "toolkit/widgets/Button.h"

#include <gtest/gtest.h>

namespace {

struct Question : testing::Test {
    UiHarness ui;
    YesNoDialogue* panel = nullptr;
    GlobWatch watch;

    void SetUp() override
    {
        panel = makeYesNoDialogue(&ui.owner(), L"Replace file", L"A file with this name already exists. Replace it?",
                                  L"Replace", L"Keep both");
        ASSERT_NE(panel, nullptr);
        watch = GlobWatch(panel);
        ui.step();
    }
};

} // namespace

TEST_F(Question, TheFirstButtonAnswersYesAndClosesThePanel)
{
    ui.click(panel->getYesButton());
    ui.step();
    EXPECT_EQ(ui.owner().count(YesNoDialogue::yesMsg), 1u);
    EXPECT_EQ(ui.owner().count(YesNoDialogue::noMsg), 0u);
    EXPECT_FALSE(watch.alive());
}

TEST_F(Question, TheSecondButtonAnswersNo)
{
    ui.click(panel->getNoButton());
    ui.step();
    EXPECT_EQ(ui.owner().count(YesNoDialogue::noMsg), 1u);
    EXPECT_FALSE(watch.alive());
}

TEST_F(Question, ReturnAnswersYesAndEscapeNo)
{
    ui.pressKey(Event::KeyReturn);
    ui.step();
    EXPECT_EQ(ui.owner().names(), std::vector<std::string>{YesNoDialogue::yesMsg});

    YesNoDialogue* second = makeYesNoDialogue(&ui.owner(), L"Quit", L"Quit now?", L"Quit", L"Stay");
    ASSERT_NE(second, nullptr);
    ui.pressKey(Event::KeyEscape);
    ui.step();
    EXPECT_EQ(ui.owner().count(YesNoDialogue::noMsg), 1u);
}

TEST_F(Question, AnAnswerGivenWhileTheFirstIsBeingReportedIsIgnored)
{
    ui.owner().onMessage = [this](const RecordingOwner::Received&) {
        if (watch)
            panel->answer(false);
    };
    ui.click(panel->getYesButton());
    ui.step();
    EXPECT_EQ(ui.owner().names(), std::vector<std::string>{YesNoDialogue::yesMsg});
    EXPECT_FALSE(watch.alive());
}

TEST_F(Question, TheButtonsCarryTheCallersWordsAndEverythingFitsInside)
{
    EXPECT_EQ(panel->getYesButton()->getString().getString(), L"Replace");
    EXPECT_EQ(panel->getNoButton()->getString().getString(), L"Keep both");
    EXPECT_EQ(panel->getTitle().getString(), L"Replace file");
    const GlobBox user = panel->getUserArea();
    EXPECT_LE(panel->getYesButton()->getBox().right(), user.right());
    EXPECT_GE(panel->getNoButton()->getBox().left(), user.left());
    EXPECT_LT(panel->getNoButton()->getBox().right(), panel->getYesButton()->getBox().left());
}

TEST_F(Question, ACopyOffersTheSameAnswersOnButtonsOfItsOwn)
{
    auto* copy = new YesNoDialogue(*panel);
    ui.show(copy, { 10, 10 });
    ASSERT_NE(copy->getYesButton(), panel->getYesButton());
    EXPECT_EQ(copy->getYesButton()->getString().getString(), LightweightString<wchar_t>(L"Replace"));
    EXPECT_EQ(copy->getNoButton()->getString().getString(), LightweightString<wchar_t>(L"Keep both"));
}
