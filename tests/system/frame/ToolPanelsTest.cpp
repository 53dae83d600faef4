#include "frame/ToolPanels.h"
#include "frame/Version.h"
#include "toolkit/support/CommandRegistry.h"

#include "toolkit/testing/UiHarness.h"
#include "toolkit/ui/Drawable.h"
#include "toolkit/ui/StandardPanel.h"
#include "toolkit/ui/UifStd.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

namespace {

StandardPanel* newPanel(int width, int height)
{
    return new StandardPanel(StandardPanel::InitArgs(UIString(L"Tool"), static_cast<uint16_t>(width), static_cast<uint16_t>(height)));
}

} // namespace

class OpenToolPanel : public ::testing::Test {
protected:
    UiHarness ui { 800, 600 };
    const int margin = UifStd::getWindowArrangement().screenMargin;
    const GlobBox safeArea = GlobBox(margin, margin, 800 - margin, 600 - margin);
};

TEST_F(OpenToolPanel, CentredOrBottomLeftPanelsAreShownAndPainted)
{
    StandardPanel* centred = newPanel(200, 100);
    ASSERT_EQ(openToolPanel(centred, ToolPlacement::Centred), centred);
    EXPECT_EQ(ui.screen().getTopLevels().back(), centred);
    EXPECT_EQ(centred->getScreenPos(), XY<int>(300, 250));
    EXPECT_TRUE(Drawable::redrawsEnabled());
    // Painted where it lies: beside the close button only the title bar shows.
    const GlobBox close = centred->getStandardWidgetBox(StandardPanel::CloseButton);
    EXPECT_TRUE(ui.pixelAt(centred, { close.left() - 4, centred->getTitleBarBox().bottom() + 3 })
                    .isCloseTo(centred->getPalette().titleBar(), 0.02));

    StandardPanel* cornered = newPanel(200, 100);
    ASSERT_EQ(openToolPanel(cornered, ToolPlacement::BottomLeft), cornered);
    EXPECT_EQ(cornered->getScreenPos(), XY<int>(margin, margin));
}

TEST_F(OpenToolPanel, APanelLargerThanTheScreenKeepsItsTopLeftVisible)
{
    for (ToolPlacement placement : { ToolPlacement::Centred, ToolPlacement::BottomLeft, ToolPlacement::AtPointer }) {
        StandardPanel* panel = newPanel(1200, 900);
        ASSERT_EQ(openToolPanel(panel, placement), panel);
        EXPECT_EQ(panel->getScreenBox().left(), safeArea.left()) << static_cast<int>(placement);
        EXPECT_EQ(panel->getScreenBox().top(), safeArea.top()) << static_cast<int>(placement);
        Glob::destroy(panel);
    }
}

TEST_F(OpenToolPanel, APanelAtThePointerIsCentredOnItButKeptWhollyOnScreen)
{
    ui.screen().mouseMove({ 400, 300 });
    StandardPanel* centred = newPanel(300, 200);
    ASSERT_EQ(openToolPanel(centred, ToolPlacement::AtPointer), centred);
    EXPECT_EQ(centred->getScreenPos(), XY<int>(250, 200));

    ui.screen().mouseMove({ 795, 5 });
    StandardPanel* nearEdge = newPanel(300, 200);
    ASSERT_EQ(openToolPanel(nearEdge, ToolPlacement::AtPointer), nearEdge);
    EXPECT_EQ(nearEdge->getScreenBox().right(), safeArea.right());
    EXPECT_EQ(nearEdge->getScreenBox().bottom(), safeArea.bottom());
}

TEST_F(OpenToolPanel, RefusesNullAndAPanelThatAlreadyHasAParent)
{
    auto* child = ui.make<StandardPanel>(StandardPanel::InitArgs(UIString(), 100, 50), Glob::BottomLeft(10, 10));
    EXPECT_EQ(openToolPanel(child, ToolPlacement::Centred), nullptr);
    EXPECT_EQ(child->parent(), &ui.owner());
    EXPECT_EQ(openToolPanel(nullptr, ToolPlacement::Centred), nullptr);
    EXPECT_TRUE(Drawable::redrawsEnabled());
}

TEST(OpenToolPanelWithoutScreen, DestroysThePanelAndAnswersNull)
{
    StandardPanel* panel = newPanel(200, 100);
    const GlobWatch watch(panel);
    EXPECT_EQ(openToolPanel(panel, ToolPlacement::Centred), nullptr);
    EXPECT_FALSE(watch.alive());
    EXPECT_TRUE(Drawable::redrawsEnabled());
}

TEST(LibraryStartup, CommandsAreRegisteredInTableOrder)
{
    const std::vector<LightweightString<char>> names = CommandRegistry::instance().getNames();
    const auto first = std::find(names.begin(), names.end(), LightweightString<char>("makeUIBuilderTestPanel"));
    const auto second = std::find(names.begin(), names.end(), LightweightString<char>("UIBuilderTest2"));
    ASSERT_NE(first, names.end());
    ASSERT_NE(second, names.end());
    EXPECT_EQ(second - first, 1);
}

TEST(LibraryStartup, VersionIsFourDottedNumbers)
{
    const std::string version = tesselPlusDllVersionStr();
    int parts[4] = {-1, -1, -1, -1};
    char end = 0;
    EXPECT_EQ(std::sscanf(version.c_str(), "%d.%d.%d.%d%c", &parts[0], &parts[1], &parts[2], &parts[3], &end), 4)
        << version;
}
