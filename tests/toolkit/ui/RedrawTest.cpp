// Painting: what is drawn reads back from the screen, redraw requests wait for the flush, the flush paints
// only what meets the dirty area, and the suppression switches hold requests back.

#include "UiTestWidgets.h"
#include "toolkit/testing/UiHarness.h"
#include "toolkit/ui/Drawable.h"
#include "toolkit/ui/Palette.h"
#include "toolkit/ui/UifStd.h"

#include <gtest/gtest.h>


namespace {

const Colour red = Colour::fromBytes(220, 30, 40);
const Colour green = Colour::fromBytes(30, 200, 60);

} // namespace

class Redraw : public ::testing::Test {
protected:
    UiHarness ui { 320, 240 };

    ColourGlob* colour(int x, int y, int w, int h, Colour c, Glob* parent = nullptr)
    {
        auto* made = new ColourGlob(ColourGlob::InitArgs(static_cast<uint16_t>(w), static_cast<uint16_t>(h), c));
        (parent ? parent : &ui.owner())->addChild(made, Glob::BottomLeft(x, y));
        return made;
    }
};

TEST_F(Redraw, ADrawnRectangleReadsBackInItsColourWhereItWasPlaced)
{
    ColourGlob* box = colour(40, 30, 20, 10, red);
    EXPECT_TRUE(ui.pixelAt(box, { 0, 0 }).isCloseTo(red));
    EXPECT_TRUE(ui.pixelAt(box, { 19, 9 }).isCloseTo(red));
    // One pixel outside on each side is the owner's background, so the box sits exactly where placed.
    const Colour background = ui.owner().getPalette().window();
    EXPECT_TRUE(ui.pixel({ 39, 30 }).isCloseTo(background));
    EXPECT_TRUE(ui.pixel({ 60, 30 }).isCloseTo(background));
    EXPECT_TRUE(ui.pixel({ 40, 29 }).isCloseTo(background));
    EXPECT_TRUE(ui.pixel({ 40, 40 }).isCloseTo(background));

    const Pictor::Image grabbed = pictor_getScreenRect(GlobBox(40, 30, 60, 40));
    ASSERT_FALSE(grabbed.isNull());
    EXPECT_EQ(grabbed.width(), 20);
    EXPECT_EQ(grabbed.height(), 10);
    EXPECT_TRUE(grabbed.colourAt(0, 0).isCloseTo(red));
    EXPECT_TRUE(pictor_getScreenRect(GlobBox(400, 400, 410, 410)).isNull()) << "off the screen";
}

TEST_F(Redraw, AskingForARedrawPaintsNothingUntilTheFlush)
{
    ColourGlob* box = colour(10, 10, 20, 20, red);
    ui.flush();
    const int paints = box->paints;
    box->colour = green;
    box->redraw();
    EXPECT_TRUE(ui.screen().needsPaint());
    EXPECT_EQ(box->paints, paints);
    EXPECT_TRUE(Pictor::Image::unpremultiplied(ui.screen().getImage().pixel(15, 240 - 1 - 15)).isCloseTo(red));
    ui.step();
    EXPECT_EQ(box->paints, paints + 1);
    EXPECT_FALSE(ui.screen().needsPaint());
    EXPECT_TRUE(ui.pixelAt(box, { 5, 5 }).isCloseTo(green));
}

TEST_F(Redraw, AFlushPaintsOnlyTheWidgetsThatMeetTheDirtyArea)
{
    ColourGlob* left = colour(10, 10, 20, 20, red);
    ColourGlob* right = colour(200, 10, 20, 20, red);
    ColourGlob* inRight = colour(5, 5, 5, 5, green, right);
    ui.flush();
    const int leftPaints = left->paints;
    const int rightPaints = right->paints;
    right->redraw(GlobBox(0, 0, 4, 4)); // a corner that misses its child
    ui.flush();
    EXPECT_EQ(left->paints, leftPaints);
    EXPECT_EQ(right->paints, rightPaints + 1);
    EXPECT_EQ(inRight->paints, 1) << "painted once at first, not again";
    EXPECT_EQ(ui.screen().getLastPaintCount(), 2u) << "the owner beneath and the right box";
}

TEST_F(Redraw, AWidgetThatSeveralDirtyAreasMeetIsPaintedOnceAndOnlyInsideThem)
{
    ColourGlob* box = colour(20, 20, 100, 60, red);
    ColourGlob* left = colour(5, 5, 20, 20, green, box);
    ColourGlob* right = colour(70, 5, 20, 20, green, box);
    ui.flush();
    const int paints = box->paints;
    box->colour = green;
    right->colour = red;
    left->redraw();
    right->redraw();
    box->redraw(GlobBox(40, 40, 50, 50));
    ui.flush();

    EXPECT_EQ(box->paints, paints + 1);
    EXPECT_EQ(left->paints, 2);
    EXPECT_EQ(right->paints, 2);
    EXPECT_TRUE(ui.pixelAt(box, {45, 45}).isCloseTo(green)) << "inside an area: repainted";
    EXPECT_TRUE(ui.pixelAt(right, {10, 10}).isCloseTo(red));
    EXPECT_TRUE(ui.pixelAt(box, {60, 30}).isCloseTo(red)) << "between the areas: left as it was";
}

TEST_F(Redraw, ChildrenAreClippedToTheirParentAndHiddenOnesAreNotPainted)
{
    ColourGlob* parent = colour(50, 50, 40, 40, red);
    ColourGlob* overhang = colour(30, 30, 40, 40, green, parent);
    EXPECT_TRUE(ui.pixel({ 85, 85 }).isCloseTo(green));
    EXPECT_TRUE(ui.pixel({ 95, 95 }).isCloseTo(ui.owner().getPalette().window())) << "clipped at the parent's edge";
    overhang->setVisible(false);
    EXPECT_TRUE(ui.pixel({ 85, 85 }).isCloseTo(red));
    const int paints = overhang->paints;
    parent->redraw();
    ui.flush();
    EXPECT_EQ(overhang->paints, paints);
}

TEST_F(Redraw, DisabledRedrawsAreHeldUntilEnabledUnlessCleared)
{
    ColourGlob* box = colour(10, 10, 20, 20, red);
    ui.flush();
    Drawable::disableRedraws();
    Drawable::disableRedraws(); // nests
    box->redraw();
    EXPECT_FALSE(ui.screen().needsPaint());
    Drawable::enableRedraws();
    EXPECT_FALSE(ui.screen().needsPaint()) << "still disabled once";
    Drawable::enableRedraws();
    EXPECT_TRUE(ui.screen().needsPaint());
    ui.flush();

    Drawable::disableRedraws();
    box->redraw();
    Drawable::clearPendingRedraws();
    Drawable::enableRedraws();
    EXPECT_FALSE(ui.screen().needsPaint());
    Drawable::enableRedraws(); // unbalanced: ignored, and must not swallow the next disable
    Drawable::disableRedraws();
    EXPECT_FALSE(Drawable::redrawsEnabled());
    Drawable::enableRedraws();
    EXPECT_TRUE(Drawable::redrawsEnabled());
}

TEST_F(Redraw, UpdateDeferrerPostponesPaintingToTheEndOfTheOutermostScope)
{
    ColourGlob* box = colour(10, 10, 20, 20, red);
    ui.flush();
    const int paints = box->paints;
    {
        Pictor::UpdateDeferrer outer;
        {
            Pictor::UpdateDeferrer inner;
            box->colour = green;
            box->redraw();
            ui.flush();
        }
        ui.flush();
        EXPECT_EQ(box->paints, paints);
    }
    EXPECT_EQ(box->paints, paints + 1);
    EXPECT_FALSE(ui.screen().needsPaint());
}

TEST(PaletteTest, ShadesRunFromDarkToLightAndChildPalettesOnlyLiftTheBackground)
{
    const Palette p = UifStd::getColourScheme();
    for (int shade = 1; shade < Palette::NumShades; ++shade)
        EXPECT_GT(p.window(shade).luma(), p.window(shade - 1).luma()) << "shade " << shade;
    EXPECT_EQ(p.window(-3), p.window(0));
    EXPECT_EQ(p.window(99), p.window(5));

    const Palette child = p.makeChildPalette();
    EXPECT_TRUE(child.window().isCloseTo(p.window(3)));
    EXPECT_EQ(child.text(), p.text());
    EXPECT_EQ(child.highlight(), p.highlight());

    // Built from two colours, secondary text falls between them, so it reads on any pair.
    const Palette light(Colour(0.9, 0.9, 0.9), Colour(0.1, 0.1, 0.1));
    EXPECT_GT(light.disabledText().luma(), light.text().luma());
    EXPECT_LT(light.disabledText().luma(), light.window().luma());
}
