// The screen's background and opaque widgets: beneath a widget that paints every pixel of its area the screen
// paints nothing, and around it the background as ever.

#include "UiTestWidgets.h"
#include "toolkit/ui/GlobManager.h"
#include "toolkit/ui/Screen.h"
#include "toolkit/ui/UifStd.h"

#include <gtest/gtest.h>

namespace {

const Colour red = Colour::fromBytes(220, 30, 40);

// Claims to cover its area but draws nothing, so whatever the screen leaves beneath it shows through.
class PretendOpaque : public Glob {
public:
    using Glob::Glob;
    bool isOpaque() const override { return true; }
    void draw() override {}
};

class OpaqueWidget : public ::testing::Test {
protected:
    Screen screen{200, 120};
    ColourGlob* below = new ColourGlob(ColourGlob::InitArgs(100, 60, red));
    PretendOpaque* above = new PretendOpaque(40, 20);

    void SetUp() override
    {
        below->setPos(20, 20);
        GlobManager::realize(below);
        screen.flush(); // the red widget is on the screen
        above->setPos(50, 40);
        GlobManager::realize(above);
        below->setVisible(false);
        screen.invalidateAll();
        screen.flush();
    }
    void TearDown() override
    {
        Glob::destroy(above);
        Glob::destroy(below);
    }

    Colour at(int x, int y) const { return screen.grab(GlobBox(x, y, x + 1, y + 1)).colourAt(0, 0); }
};

} // namespace

TEST_F(OpaqueWidget, TheScreenPaintsNoBackgroundBeneathIt)
{
    EXPECT_TRUE(at(50, 40).isCloseTo(red));
    EXPECT_TRUE(at(89, 59).isCloseTo(red));
}

TEST_F(OpaqueWidget, TheScreenPaintsItsBackgroundAllAroundIt)
{
    const Colour background = UifStd::getScreenBackground();
    EXPECT_TRUE(at(49, 45).isCloseTo(background)) << "left";
    EXPECT_TRUE(at(90, 45).isCloseTo(background)) << "right";
    EXPECT_TRUE(at(60, 39).isCloseTo(background)) << "below";
    EXPECT_TRUE(at(60, 60).isCloseTo(background)) << "above";
    EXPECT_TRUE(at(20, 20).isCloseTo(background)) << "where the hidden widget was";
}
