// The two parameter test panels, as a person uses them: typing a description and pressing Build, and
// pressing Reset on the panel made in code.
#include "parampanels/UIBuilderTest2Panel.h"
#include "parampanels/UIBuilderTestPanel.h"
#include "toolkit/support/CommandRegistry.h"
#include "toolkit/support/params/NumericParams.h"
#include "toolkit/testing/UiHarness.h"
#include "toolkit/ui/Screen.h"
#include "toolkit/ui/VerticalScrollingBase.h"
#include "toolkit/widgets/Button.h"
#include "toolkit/widgets/TitleTextBox.h"

#include <gtest/gtest.h>

namespace {

Button* findButton(Glob* parent, const wchar_t* label)
{
    for (size_t i = 0; i < parent->numChildren(); ++i) {
        if (auto* button = dynamic_cast<Button*>(parent->child(i)); button && button->getString().getString() == label)
            return button;
        if (Button* inner = findButton(parent->child(i), label))
            return inner;
    }
    return nullptr;
}

void typeDescription(UiHarness& ui, UIBuilderTestPanel* panel, std::wstring_view text)
{
    ASSERT_TRUE(ui.focus(panel->getDescriptionBox()));
    ui.pressKey('a', Event::Ctrl);
    ui.typeText(text);
    ui.click(findButton(panel, L"Build"));
    ui.step();
}

} // namespace

TEST(UIBuilderTestPanel, BuildsWhatIsTypedAndSaysWhyABadDescriptionBuildsNothing)
{
    UiHarness ui(1200, 900);
    auto* panel = new UIBuilderTestPanel();
    ui.show(panel, { 20, 20 });
    EXPECT_FALSE(panel->getParams()->empty()); // the sample it opens with

    typeDescription(ui, panel, L"{\"p\": [{\"type\": \"bool\", \"name\": \"on\"}, {\"type\": \"text\", \"name\": \"t\"}]}");
    ASSERT_TRUE(panel->getParams());
    EXPECT_EQ(panel->getParams()->getParams().size(), 2u);
    EXPECT_EQ(panel->getResultPanel()->getScrollArea()->numChildren(), 2u);
    EXPECT_EQ(panel->getStatus(), LightweightString<wchar_t>(L"Built 2 rows, 2 parameters."));

    typeDescription(ui, panel, L"{\"p\": [{\"type\": \"bool\",");
    EXPECT_EQ(panel->getResultPanel()->getScrollArea()->numChildren(), 0u);
    EXPECT_EQ(panel->getStatus(), LightweightString<wchar_t>(L"Not valid JSON: nothing was built."));

    typeDescription(ui, panel, L"{\"p\": 3}");
    EXPECT_EQ(panel->getStatus(),
              LightweightString<wchar_t>(L"No entries: give an object whose first member is a list of entries."));

    // Return in the description builds too.
    ASSERT_TRUE(ui.focus(panel->getDescriptionBox()));
    ui.pressKey('a', Event::Ctrl);
    ui.typeText(L"{\"p\": [{\"type\": \"int\", \"name\": \"n\", \"min\": 0, \"max\": 9}]}");
    ui.pressKey(Event::KeyReturn);
    ui.step();
    ASSERT_TRUE(panel->getParams()->findParam("n"));
}

TEST(UIBuilderTestPanel, ResetOnTheCodedPanelIsHeardOnce)
{
    UiHarness ui(1200, 900);
    auto* panel = new UIBuilderTest2Panel();
    ui.show(panel, { 20, 20 });
    const Cv::Ptr<UIBuilder::Params>& params = panel->getParams();
    params->findParam("intParam")->setValueFromString(L"9");
    params->findParam("choiceParam")->setValueFromString(L"3");
    ASSERT_EQ(panel->getNumHeard(), 2);

    ui.click(findButton(panel, L"Reset"));
    EXPECT_EQ(panel->getNumHeard(), 3);
    EXPECT_EQ(params->findParam("intParam")->getValueAsString(), LightweightString<wchar_t>(L"5"));
    EXPECT_EQ(params->findParam("choiceParam")->getValueAsString(), LightweightString<wchar_t>(L"1"));
}

TEST(UIBuilderTestPanel, CommandsOpenBothPanels)
{
    UiHarness ui(1200, 900);
    for (const char* command : { "makeUIBuilderTestPanel", "UIBuilderTest2" }) {
        const size_t before = ui.screen().getTopLevels().size();
        ASSERT_TRUE(CommandRegistry::instance().run(command)) << command;
        EXPECT_EQ(ui.screen().getTopLevels().size(), before + 1) << command;
    }
}
