// Placement: the pure geometry first, then the same rules through Glob's placement members.

#include "UiTestWidgets.h"
#include "toolkit/testing/UiHarness.h"
#include "toolkit/ui/WidgetPosition.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

const GlobBox area(10, 20, 210, 120); // a user area inset from a 220 x 130 parent

WidgetPosition at(WidgetPosition::Kind kind, int x, int y, WidgetAlignment alignment = {})
{
    return { kind, x, y, nullptr, alignment };
}

} // namespace

TEST(PlacementGeometry, UserAreaFormsMeasureFromTheirOwnCorner)
{
    const XY<int> size(30, 10);
    // Top-left offsets run downward: 5 down from the top edge at 120 leaves the child's top at 115.
    EXPECT_EQ(Placement::resolve(at(WidgetPosition::TopLeft, 4, 5), size, area, nullptr), XY<int>(14, 105));
    EXPECT_EQ(Placement::resolve(at(WidgetPosition::BottomLeft, 4, 5), size, area, nullptr), XY<int>(14, 25));
    EXPECT_EQ(Placement::resolve(at(WidgetPosition::Centre, 0, 0), size, area, nullptr), XY<int>(95, 65));
    EXPECT_EQ(Placement::resolve(at(WidgetPosition::Centre, 3, -2), size, area, nullptr), XY<int>(98, 63));
    // Right edge 12 inside the user area's right edge, centred vertically.
    EXPECT_EQ(Placement::resolve(at(WidgetPosition::RightCentre, 12, 0), size, area, nullptr), XY<int>(168, 65));
    // Absolute ignores the user area altogether.
    EXPECT_EQ(Placement::resolve(at(WidgetPosition::Absolute, -3, 7), size, area, nullptr), XY<int>(-3, 7));
}

TEST(PlacementGeometry, BelowLinesUpAcrossBySiblingOrUserArea)
{
    const GlobBox sibling(40, 80, 140, 100); // 100 wide
    const XY<int> size(20, 10);
    auto below = [&](WidgetAlignment a) {
        return Placement::resolve(at(WidgetPosition::Below, 0, 4, a), size, area, &sibling);
    };
    EXPECT_EQ(below({ WidgetAlignment::Start }), XY<int>(40, 66));
    EXPECT_EQ(below({ WidgetAlignment::Centre }), XY<int>(80, 66));
    EXPECT_EQ(below({ WidgetAlignment::End }), XY<int>(120, 66));
    EXPECT_EQ(below({ WidgetAlignment::Fraction, false, 0.25f }), XY<int>(60, 66));
    // Against the user area instead of the sibling: still below the sibling, but from the left margin.
    EXPECT_EQ(below({ WidgetAlignment::Start, true }), XY<int>(10, 66));
    // A nonsense fraction falls back to the start rather than placing the child anywhere.
    EXPECT_EQ(below({ WidgetAlignment::Fraction, false, std::numeric_limits<float>::quiet_NaN() }), XY<int>(40, 66));
    // With nothing to go below, the child starts at the top of the user area.
    EXPECT_EQ(Placement::resolve(at(WidgetPosition::Below, 0, 4), size, area, nullptr), XY<int>(10, 110));
}

TEST(PlacementGeometry, RightOfLinesUpTopsByDefaultAndBottomsAtEnd)
{
    const GlobBox sibling(40, 80, 140, 100);
    const XY<int> size(20, 10);
    EXPECT_EQ(Placement::resolve(at(WidgetPosition::RightOf, 6, 0), size, area, &sibling), XY<int>(146, 90));
    EXPECT_EQ(Placement::resolve(at(WidgetPosition::RightOf, 6, 0, { WidgetAlignment::End }), size, area, &sibling),
        XY<int>(146, 80));
    EXPECT_EQ(Placement::resolve(at(WidgetPosition::RightOf, 6, 0, { WidgetAlignment::Centre }), size, area, &sibling),
        XY<int>(146, 85));
}

TEST(PlacementGeometry, KeepInsideMovesTheLeastAndKeepsTopLeftOfOversizedBoxes)
{
    const GlobBox screen(0, 0, 100, 80);
    EXPECT_EQ(Placement::keepInside(GlobBox(90, 70, 120, 90), screen), GlobBox(70, 60, 100, 80));
    EXPECT_EQ(Placement::keepInside(GlobBox(-5, -5, 10, 10), screen), GlobBox(0, 0, 15, 15));
    EXPECT_EQ(Placement::keepInside(GlobBox(20, 20, 30, 30), screen), GlobBox(20, 20, 30, 30));
    // Larger than the screen: the left and top edges stay reachable.
    const GlobBox huge = Placement::keepInside(GlobBox(50, 50, 250, 250), screen);
    EXPECT_EQ(huge.left(), 0);
    EXPECT_EQ(huge.top(), 80);
    EXPECT_EQ(huge.size(), XY<int>(200, 200));
}

TEST(PlacementGeometry, InsetNeverTurnsInsideOut)
{
    EXPECT_EQ(Placement::inset(GlobBox(0, 0, 100, 50), 3, 3, 3, 22), GlobBox(3, 3, 97, 28));
    const GlobBox squashed = Placement::inset(GlobBox(0, 0, 10, 10), 8, 8, 8, 8);
    EXPECT_TRUE(squashed.empty());
    EXPECT_LE(squashed.left(), squashed.right());
    EXPECT_LE(squashed.bottom(), squashed.top());
}

// ---------------------------------------------------------------------------------------------------------

class GlobPlacement : public ::testing::Test {
protected:
    UiHarness ui { 400, 300 };
    ProbeGlob* panel = nullptr;

    void SetUp() override
    {
        panel = ui.make<ProbeGlob>(ProbeGlob::InitArgs(200, 150), Glob::BottomLeft(50, 50));
        // Border 3 all round and a 20-pixel title bar on top.
        panel->setUserAreaInsets(3, 3, 3, 23);
    }
    ProbeGlob* row(int w = 100, int h = 20)
    {
        return new ProbeGlob(static_cast<uint16_t>(w), static_cast<uint16_t>(h));
    }
};

TEST_F(GlobPlacement, RowsStackBelowThePreviousChildInsideTheUserArea)
{
    Glob* a = panel->addChild(row(), Glob::UserTopLeft(0, 0));
    Glob* b = panel->addChild(row(), Glob::Below(4));
    Glob* c = panel->addChild(row(80), Glob::Below(4));
    EXPECT_EQ(a->getPosition(), XY<int>(3, 150 - 23 - 20));
    EXPECT_EQ(b->getPosition(), XY<int>(3, a->getY() - 4 - 20));
    EXPECT_EQ(c->getPosition(), XY<int>(3, b->getY() - 4 - 20));
}

TEST_F(GlobPlacement, ReanchoringLetsTwoRowsShareOnePlaceAndLaterRowsFollow)
{
    // Alternatives b and c: c is re-anchored below a, so it takes b's place; d was below c and moves up.
    Glob* a = panel->addChild(row(), Glob::UserTopLeft(0, 0));
    Glob* b = panel->addChild(row(), Glob::Below(4));
    Glob* c = panel->addChild(row(), Glob::Below(4));
    Glob* d = panel->addChild(row(), Glob::Below(4));
    const int dBefore = d->getY();

    WidgetDetails details = panel->getWidget(c);
    details.position.sibling = a;
    ASSERT_TRUE(panel->setWidgetDetails(details));

    EXPECT_EQ(c->getPosition(), b->getPosition());
    EXPECT_EQ(d->getY(), dBefore + 24) << "one row's height plus the gap saved";
    EXPECT_EQ(panel->getWidget(c).position.sibling, a);
}

TEST_F(GlobPlacement, ResizingTheParentKeepsTopAnchoredRowsAtTheTop)
{
    Glob* a = panel->addChild(row(), Glob::UserTopLeft(0, 0));
    Glob* b = panel->addChild(row(), Glob::Below(4));
    Glob* corner = panel->addChild(row(10, 10), Glob::BottomLeft(0, 0));
    panel->resize(200, 250);
    EXPECT_EQ(a->getY() + a->getHeight(), 250 - 23);
    EXPECT_EQ(b->getY(), a->getY() - 24);
    EXPECT_EQ(corner->getPosition(), XY<int>(3, 3));
}

TEST_F(GlobPlacement, AddWidgetMakesTheChildAndRelativeFormsUseTheSibling)
{
    auto* anchor = panel->addWidget<ProbeGlob>(ProbeGlob::InitArgs(60, 40), Glob::BottomLeft(10, 10));
    auto* inside = panel->addWidgetRelative<ProbeGlob>(ProbeGlob::InitArgs(20, 10), anchor, Glob::Centre(0, 0));
    ASSERT_EQ(inside->parent(), panel);
    EXPECT_EQ(inside->getPosition(), XY<int>(13 + 20, 13 + 15));
}

TEST_F(GlobPlacement, RemovingASiblingLeavesRowsPlacedAgainstItWhereTheyAre)
{
    panel->addChild(row(), Glob::UserTopLeft(0, 0));
    Glob* b = panel->addChild(row(), Glob::Below(4));
    Glob* c = panel->addChild(row(), Glob::Below(4));
    const XY<int> where = c->getPosition();
    panel->removeChild(b);
    EXPECT_EQ(c->getPosition(), where);
    EXPECT_EQ(panel->getWidget(c).position.kind, WidgetPosition::Absolute);
    panel->layoutChildren();
    EXPECT_EQ(c->getPosition(), where);
}

TEST_F(GlobPlacement, RootPositionsResolveAgainstTheScreen)
{
    auto* top = new ProbeGlob(100, 60);
    top->setupRootPos(Glob::Centre(0, 0));
    EXPECT_EQ(top->getPosition(), XY<int>(150, 120));
    top->setupRootPos(Glob::BottomLeft(7, 9));
    EXPECT_EQ(top->getPosition(), XY<int>(7, 9));
    delete top;
}
