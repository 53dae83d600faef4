#include "frame/ToolPanels.h"

#include "toolkit/testing/UiHarness.h"
#include "toolkit/ui/Drawable.h"
#include "toolkit/ui/StandardPanel.h"
#include "toolkit/ui/UifStd.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

constexpr int screenWidth = 800;
constexpr int screenHeight = 600;

StandardPanel* newPanel(int width, int height)
{
    return new StandardPanel(StandardPanel::InitArgs(UIString(L"Tool"), static_cast<uint16_t>(width),
                                                     static_cast<uint16_t>(height)));
}

bool isTopLevel(UiHarness& ui, const Glob* panel)
{
    const auto& tops = ui.screen().getTopLevels();
    return std::find(tops.begin(), tops.end(), panel) != tops.end();
}

} // namespace

class OpenToolPanel : public ::testing::Test {
protected:
    UiHarness ui { screenWidth, screenHeight };
    const int margin = UifStd::getWindowArrangement().screenMargin;
    const GlobBox safeArea = GlobBox(margin, margin, screenWidth - margin, screenHeight - margin);
};

TEST_F(OpenToolPanel, ACentredPanelIsShownInTheMiddleOfTheScreen)
{
    StandardPanel* panel = newPanel(200, 100);
    ASSERT_EQ(openToolPanel(panel, ToolPlacement::Centred), panel);
    EXPECT_TRUE(isTopLevel(ui, panel));
    EXPECT_TRUE(panel->isShowing());
    EXPECT_EQ(panel->getScreenPos(), XY<int>(300, 250));
    EXPECT_TRUE(Drawable::redrawsEnabled());
    // Painted where it lies, once redraws are back on: beside the close button only the title bar shows.
    const GlobBox close = panel->getStandardWidgetBox(StandardPanel::CloseButton);
    EXPECT_TRUE(ui.pixelAt(panel, { close.left() - 4, panel->getTitleBarBox().bottom() + 3 })
                    .isCloseTo(panel->getPalette().titleBar(), 0.02));
}

TEST_F(OpenToolPanel, ABottomLeftPanelSitsInTheCornerInsideTheScreenMargin)
{
    StandardPanel* panel = newPanel(200, 100);
    ASSERT_EQ(openToolPanel(panel, ToolPlacement::BottomLeft), panel);
    EXPECT_EQ(panel->getScreenPos(), XY<int>(margin, margin));
}

TEST_F(OpenToolPanel, APanelLargerThanTheScreenKeepsItsTopLeftVisible)
{
    for (ToolPlacement placement : { ToolPlacement::Centred, ToolPlacement::BottomLeft, ToolPlacement::AtPointer }) {
        StandardPanel* panel = newPanel(1200, 900);
        ASSERT_EQ(openToolPanel(panel, placement), panel);
        const GlobBox box = panel->getScreenBox();
        EXPECT_EQ(box.left(), safeArea.left()) << static_cast<int>(placement);
        EXPECT_EQ(box.top(), safeArea.top()) << static_cast<int>(placement);
        Glob::destroy(panel);
    }
}

TEST_F(OpenToolPanel, APanelAtThePointerNearAnEdgeIsMovedWhollyOnScreen)
{
    ui.screen().mouseMove({ screenWidth - 5, 5 });
    StandardPanel* panel = newPanel(300, 200);
    ASSERT_EQ(openToolPanel(panel, ToolPlacement::AtPointer), panel);
    const GlobBox box = panel->getScreenBox();
    EXPECT_EQ(box.right(), safeArea.right());
    EXPECT_EQ(box.bottom(), safeArea.bottom());

    // Away from the edges the panel is centred on the pointer.
    ui.screen().mouseMove({ 400, 300 });
    StandardPanel* second = newPanel(300, 200);
    ASSERT_EQ(openToolPanel(second, ToolPlacement::AtPointer), second);
    EXPECT_EQ(second->getScreenPos(), XY<int>(250, 200));
}

TEST_F(OpenToolPanel, RefusesAPanelThatAlreadyHasAParentAndLeavesItThere)
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
