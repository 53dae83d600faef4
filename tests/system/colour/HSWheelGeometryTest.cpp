#include "colour/HSWheelGeometry.h"

#include <gtest/gtest.h>

using namespace HSWheelGeometry;

namespace {

constexpr double radius = 100.0;
constexpr double near = 1e-9;

} // namespace

TEST(HSWheelGeometry, HuesRunAnticlockwiseTurnedByFourteenDegrees)
{
    // Hue 346 points straight up, 256 right, 166 down, 76 left.
    const struct {
        double hue, x, y;
    } cases[] = {{346, 0, 100}, {256, 100, 0}, {166, 0, -100}, {76, -100, 0}};
    for (const auto& c : cases) {
        double x = 0;
        double y = 0;
        ASSERT_EQ(convertHStoXY(radius, c.hue, 1.0, x, y), 0);
        EXPECT_NEAR(x, c.x, near) << c.hue;
        EXPECT_NEAR(y, c.y, near) << c.hue;
    }
}

TEST(HSWheelGeometry, HueZeroLiesLeftOfTheTopAndComesBackAs360)
{
    EXPECT_DOUBLE_EQ(convertHueToDisplayAngle(0.0), 346.0);
    double x = 0;
    double y = 0;
    ASSERT_EQ(convertHStoXY(radius, 0.0, 0.5, x, y), 0);
    EXPECT_LT(x, 0.0);
    EXPECT_GT(y, 0.0);
    double hue = -1;
    double saturation = -1;
    ASSERT_EQ(convertXYtoHS(radius, x, y, hue, saturation), 0);
    EXPECT_NEAR(hue, 360.0, 1e-9);
    EXPECT_NEAR(saturation, 0.5, 1e-12);
}

TEST(HSWheelGeometry, HuesAbove346GiveNegativeDisplayAngles)
{
    EXPECT_DOUBLE_EQ(convertHueToDisplayAngle(350.0), -4.0);
    EXPECT_DOUBLE_EQ(convertDisplayToHueAngle(-4.0), 350.0);
}

TEST(HSWheelGeometry, TheCentreHasTheBottomsHueAndNoSaturation)
{
    double hue = -1;
    double saturation = -1;
    ASSERT_EQ(convertXYtoHS(radius, 0.0, 0.0, hue, saturation), 0);
    EXPECT_DOUBLE_EQ(hue, 166.0);
    EXPECT_DOUBLE_EQ(saturation, 0.0);
}

TEST(HSWheelGeometry, APointOnTheRimIsValidButNotConverted)
{
    EXPECT_TRUE(validColourPoint(radius, 0.0, 100.0));
    double hue = -1;
    double saturation = -1;
    EXPECT_EQ(convertXYtoHS(radius, 0.0, 100.0, hue, saturation), -1);
    EXPECT_EQ(hue, -1);
    EXPECT_EQ(saturation, -1);
}

TEST(HSWheelGeometry, TheRimTestCountsWholePixels)
{
    // 100.3 lies inside a rim of 100.7, but both truncate to 100.
    double hue = -1;
    double saturation = -1;
    EXPECT_TRUE(validColourPoint(100.7, 100.3, 0.0));
    EXPECT_EQ(convertXYtoHS(100.7, 100.3, 0.0, hue, saturation), -1);
    EXPECT_EQ(convertXYtoHS(100.7, 99.9, 0.0, hue, saturation), 0);
}

TEST(HSWheelGeometry, OutOfRangeHueOrSaturationFailsWithoutTouchingTheOutputs)
{
    for (const auto& [hue, saturation] : {std::pair{-0.5, 0.5}, {360.5, 0.5}, {10.0, -0.1}, {10.0, 1.1}}) {
        double x = 7;
        double y = 7;
        EXPECT_EQ(convertHStoXY(radius, hue, saturation, x, y), -1);
        EXPECT_EQ(x, 7);
        EXPECT_EQ(y, 7);
    }
    double x = 7;
    double y = 7;
    EXPECT_EQ(convertHStoXY(radius, 360.0, 1.0, x, y), 0);
}

TEST(HSWheelGeometry, SnappingMovesOutsidePointsOntoTheRimAlongTheirBearing)
{
    double x = 0;
    double y = -150;
    EXPECT_TRUE(snapPoint(radius, x, y));
    EXPECT_DOUBLE_EQ(x, 0.0);
    EXPECT_DOUBLE_EQ(y, -100.0);

    x = 0;
    y = 150;
    EXPECT_TRUE(snapPoint(radius, x, y));
    EXPECT_DOUBLE_EQ(y, 100.0);

    x = -300;
    y = -400;
    EXPECT_TRUE(snapPoint(radius, x, y));
    EXPECT_NEAR(x, -60.0, near);
    EXPECT_NEAR(y, -80.0, near);

    // A y of 0 comes out on the upper side.
    x = 150;
    y = 0;
    EXPECT_TRUE(snapPoint(radius, x, y));
    EXPECT_NEAR(x, 100.0, near);
    EXPECT_GE(y, 0.0);
}

