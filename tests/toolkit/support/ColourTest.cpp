#include "toolkit/support/Colour.h"

#include <cmath>
#include <gtest/gtest.h>

namespace {

void expectRGBNear(const NormalisedRGB& actual, const NormalisedRGB& expected, double tol = 1e-9)
{
    EXPECT_NEAR(actual.r, expected.r, tol);
    EXPECT_NEAR(actual.g, expected.g, tol);
    EXPECT_NEAR(actual.b, expected.b, tol);
}

} // namespace

TEST(HSV, PrimariesAndSecondariesSitAtTheirSectorBoundaries)
{
    struct Case {
        NormalisedRGB rgb;
        double hue;
    };
    const Case cases[] = {
        {{1, 0, 0}, 0},   {{1, 1, 0}, 60},  {{0, 1, 0}, 120},
        {{0, 1, 1}, 180}, {{0, 0, 1}, 240}, {{1, 0, 1}, 300},
    };
    for (const Case& c : cases) {
        const HSV hsv = RGBToHSV(c.rgb);
        EXPECT_DOUBLE_EQ(hsv.h, c.hue);
        EXPECT_DOUBLE_EQ(hsv.s, 1.0);
        EXPECT_DOUBLE_EQ(hsv.v, 1.0);
        expectRGBNear(HSVToRGB(hsv), c.rgb);
    }
}

TEST(HSV, HueOf360AndNegativeHuesWrap)
{
    expectRGBNear(HSVToRGB({360, 1, 1}), {1, 0, 0});
    expectRGBNear(HSVToRGB({720 + 120, 1, 1}), {0, 1, 0});
    expectRGBNear(HSVToRGB({-120, 1, 1}), {0, 0, 1});
    // Just below red on the magenta side: the hue comes back below 360, never equal to it.
    const HSV nearlyRed = RGBToHSV({1, 0, 1e-12});
    EXPECT_LT(nearlyRed.h, 360.0);
    EXPECT_GE(nearlyRed.h, 0.0);
}

TEST(HSV, GreysHaveNoHueOrSaturation)
{
    for (double level : {0.0, 0.25, 0.5, 1.0}) {
        const HSV hsv = RGBToHSV({level, level, level});
        EXPECT_EQ(hsv.h, 0.0);
        EXPECT_EQ(hsv.s, 0.0);
        EXPECT_DOUBLE_EQ(hsv.v, level);
    }
    // Zero saturation ignores the hue entirely.
    expectRGBNear(HSVToRGB({200, 0, 0.4}), {0.4, 0.4, 0.4});
}

TEST(HSV, EightBitColoursRoundTripOnACoarseGrid)
{
    for (int r = 0; r < 256; r += 17)
        for (int g = 0; g < 256; g += 15)
            for (int b = 0; b < 256; b += 51) {
                const Colour c = Colour::fromBytes(uint8_t(r), uint8_t(g), uint8_t(b));
                const Colour back = Colour::fromHSV(c.toHSV());
                ASSERT_EQ(back.toRgbTriple(), c.toRgbTriple()) << r << "," << g << "," << b;
            }
}

TEST(HSV, OutOfRangeInputIsClampedNotPropagated)
{
    const HSV hsv = RGBToHSV({2.0, -1.0, std::nan("")});
    EXPECT_EQ(hsv.h, 0.0);
    EXPECT_EQ(hsv.s, 1.0);
    EXPECT_EQ(hsv.v, 1.0);
    expectRGBNear(HSVToRGB({std::nan(""), 3.0, 2.0}), {1, 0, 0});
}

TEST(Colour, EightBitConversionRoundsAndRoundTrips)
{
    for (int i = 0; i < 256; ++i) {
        const Colour c = Colour::fromBytes(uint8_t(i), 0, uint8_t(255 - i), uint8_t(i));
        EXPECT_EQ(c.r8(), i);
        EXPECT_EQ(c.b8(), 255 - i);
        EXPECT_EQ(c.a8(), i);
    }
    // Halfway between two steps rounds up; values beyond the range saturate.
    EXPECT_EQ(Colour::toByte(127.5 / 255.0), 128);
    EXPECT_EQ(Colour::toByte(1.7), 255);
    EXPECT_EQ(Colour::toByte(-0.2), 0);
    EXPECT_EQ(Colour(RgbTriple(10, 20, 30)).toRgbTriple(), RgbTriple(10, 20, 30));
}

TEST(Colour, MixScaleAndTolerance)
{
    const Colour black(0, 0, 0);
    const Colour white(1, 1, 1, 0.5);
    EXPECT_EQ(black.mix(white, 0.0), black);
    EXPECT_EQ(black.mix(white, 1.0), white);
    EXPECT_TRUE(black.mix(white, 0.25).isCloseTo(Colour(0.25, 0.25, 0.25, 0.875), 1e-12));
    EXPECT_EQ(black.mix(white, 7.0), white); // the blend factor is clamped

    const Colour mid(0.4, 0.6, 0.8, 0.3);
    EXPECT_TRUE(mid.scale(0.5).isCloseTo(Colour(0.2, 0.3, 0.4, 0.3), 1e-12));
    EXPECT_EQ(mid.scale(10.0), Colour(1, 1, 1, 0.3)); // brightening saturates at white, alpha untouched

    EXPECT_TRUE(mid.isCloseTo(Colour(0.4 + 0.5 / 255.0, 0.6, 0.8, 0.3)));
    EXPECT_FALSE(mid.isCloseTo(Colour(0.4 + 2.0 / 255.0, 0.6, 0.8, 0.3)));
    EXPECT_NE(mid, mid.withAlpha(1.0));
}
