#include "colour/MagnifyTool.h"

#include "ColourTestTiles.h"
#include "toolkit/support/CommandRegistry.h"
#include "toolkit/ui/Screen.h"
#include "toolkit/ui/UifStd.h"

#include <gtest/gtest.h>

namespace {

const Colour red = Colour::fromBytes(255, 0, 0);
const Colour blue = Colour::fromBytes(0, 0, 255);

} // namespace

// A magnifier enlarging 8 times at (500, 100), and a picture at (300, 300) whose column 300 is red and
// column 301 blue.
class Magnifier : public ::testing::Test {
protected:
    UiHarness ui{800, 600};
    PictureTile* picture = showPicture(ui, columnsOf({red, blue}, 1, 10), {300, 300});
    MagnifyTool* magnifier = ui.makeTopLevel<MagnifyTool>(MagnifyTool::InitArgs(1, 130, 130, 8), {500, 100});
};

TEST_F(Magnifier, ShowsThePixelsAroundThePointerEnlarged)
{
    ui.screen().mouseMove({300, 305});
    const XY<double> centre = magnifier->screenToView({300, 305});
    // The pointer's pixel fills the centre square; its neighbour on the right fills the next one.
    const XY<int> inside(static_cast<int>(centre.x) + 4, static_cast<int>(centre.y) + 4);
    EXPECT_TRUE(ui.pixelAt(magnifier, inside).isCloseTo(red));
    EXPECT_TRUE(ui.pixelAt(magnifier, inside + XY<int>(8, 0)).isCloseTo(blue));
    EXPECT_TRUE(ui.pixelAt(magnifier, inside + XY<int>(8, 0) + XY<int>(3, 3)).isCloseTo(blue));
}

TEST_F(Magnifier, OutlinesTheAreaItIsGiven)
{
    ui.screen().mouseMove({300, 305});
    magnifier->setAreaToOutline(Cv::Box<double>(298, 303, 302, 307));
    const XY<double> corner = magnifier->screenToView({298, 303});
    EXPECT_TRUE(ui.pixelAt(magnifier, {static_cast<int>(corner.x), static_cast<int>(corner.y) + 10})
                    .isCloseTo(magnifier->getPalette().highlight(), 0.02));
    magnifier->clearAreaToOutline();
    EXPECT_FALSE(ui.pixelAt(magnifier, {static_cast<int>(corner.x), static_cast<int>(corner.y) + 10})
                     .isCloseTo(magnifier->getPalette().highlight(), 0.02));
}

TEST(ShowMagnifierCommand, OpensAMagnifierAtTheBottomLeftThatAClickCloses)
{
    UiHarness ui{800, 600};
    const std::optional<CommandInfo> info = CommandRegistry::instance().find("Show Magnifier");
    ASSERT_TRUE(info);
    EXPECT_EQ(info->scope, cmdScopeTools);
    ASSERT_TRUE(CommandRegistry::instance().run("Show Magnifier"));
    auto* magnifier = dynamic_cast<MagnifyTool*>(ui.screen().getTopLevels().back());
    ASSERT_NE(magnifier, nullptr);
    const int margin = UifStd::getWindowArrangement().screenMargin;
    EXPECT_EQ(magnifier->getScreenPos(), XY<int>(margin, margin));
    EXPECT_EQ(magnifier->getSize(), XY<int>(130, 130));
    GlobWatch watch(magnifier);
    ui.click(magnifier);
    EXPECT_FALSE(watch.alive());
}
