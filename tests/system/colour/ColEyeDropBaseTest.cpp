#include "colour/ColEyeDropBase.h"

#include "ColourTestTiles.h"

#include <gtest/gtest.h>

#include <functional>
#include <random>

namespace {

using Area = Cv::Box<double, Cv::BottomUpTraits>;

class OnePixelSampler : public ColEyeDropBase {
public:
    using ColEyeDropBase::grabPixelColour;
};

ColEyeDropBase::ColourRange allMinusOne()
{
    return {-1.0, -1.0, -1.0, -1.0, -1.0, -1.0};
}

} // namespace

class Sampling : public ::testing::Test {
protected:
    UiHarness ui{400, 300};
};

TEST_F(Sampling, TheAverageIsTruncatedNotRounded)
{
    showPicture(ui, columnsOf({Colour::fromBytes(10, 20, 30), Colour::fromBytes(10, 20, 30),
                               Colour::fromBytes(11, 22, 32)}),
                {100, 100});
    // 31/3, 62/3 and 92/3: 10.33, 20.67 and 30.67.
    EXPECT_EQ(ColEyeDropBase::getPixelColour(Area(100, 100, 103, 101)), RgbTriple(10, 20, 30));
}

TEST_F(Sampling, AreaCornersAreTruncatedToWholePixels)
{
    showPicture(ui, columnsOf({Colour::fromBytes(200, 0, 0), Colour::fromBytes(0, 0, 200)}), {100, 100});
    EXPECT_EQ(ColEyeDropBase::getPixelColour(Area(100.2, 100.9, 101.9, 101.5)), RgbTriple(200, 0, 0));
}

TEST_F(Sampling, AnAreaOffTheScreenGivesBlackAndAZeroRange)
{
    EXPECT_EQ(ColEyeDropBase::getPixelColour(Area(500, 500, 510, 510)), RgbTriple(0, 0, 0));
    EXPECT_EQ(ColEyeDropBase::getPixelRange(Area(500, 500, 510, 510)), ColEyeDropBase::ColourRange{});
}

TEST_F(Sampling, AnAreaOfPureGreyHasNoRange)
{
    showPicture(ui, columnsOf({Colour::fromBytes(128, 128, 128), Colour::fromBytes(0, 0, 0)}, 4, 4), {100, 100});
    EXPECT_EQ(ColEyeDropBase::getPixelRange(Area(100, 100, 108, 104)), allMinusOne());
}

TEST_F(Sampling, GreysAndBlackDoNotWidenTheRange)
{
    showPicture(ui,
                columnsOf({Colour::fromBytes(0, 0, 0), Colour::fromBytes(255, 0, 0), Colour::fromBytes(255, 255, 255),
                           Colour::fromBytes(102, 0, 0)}),
                {100, 100});
    const ColEyeDropBase::ColourRange range = ColEyeDropBase::getPixelRange(Area(100, 100, 104, 101));
    EXPECT_EQ(range.minHue, 0.0);
    EXPECT_EQ(range.maxHue, 0.0);
    EXPECT_EQ(range.minSaturation, 1.0);
    EXPECT_EQ(range.maxSaturation, 1.0);
    EXPECT_DOUBLE_EQ(range.minValue, 0.4);
    EXPECT_EQ(range.maxValue, 1.0);
}

TEST_F(Sampling, GrabbingAPixelWritesItsColourMessage)
{
    showPicture(ui, columnsOf({Colour::fromBytes(0, 255, 0), Colour::fromBytes(255, 0, 0)}), {100, 100});
    OnePixelSampler sampler;
    LightweightString<char> msg;
    sampler.grabPixelColour(101, 100, msg);
    EXPECT_EQ(msg, ColEyeDropBase::pixelToMsg(RgbTriple(255, 0, 0)));
}

TEST(ColourMessage, DividesOnlyTheValueBy255)
{
    const LightweightString<char> msg = ColEyeDropBase::pixelToMsg(RgbTriple(0, 255, 0));
    EXPECT_EQ(msg, LightweightString<char>("colour_eye_dropper HSV 120 1 0.00392156862745098"));
}

class ParsingAColourMessage : public ::testing::Test {
protected:
    // Parses and answers whether the outputs were written.
    bool parsed(const char* msg)
    {
        h = s = v = -7.0;
        EXPECT_EQ(ColEyeDropBase::parse(msg, h, s, v), 0);
        return !(h == -7.0 && s == -7.0 && v == -7.0);
    }
    double h = 0;
    double s = 0;
    double v = 0;
};

TEST_F(ParsingAColourMessage, AcceptsFiveWordsWhateverTheSecond)
{
    ASSERT_TRUE(parsed("colour_eye_dropper RGB 12.5 0.25 0.5"));
    EXPECT_EQ(h, 12.5);
    EXPECT_EQ(s, 0.25);
    EXPECT_EQ(v, 0.5);
}

TEST_F(ParsingAColourMessage, IgnoresFourOrSixWords)
{
    EXPECT_FALSE(parsed("colour_eye_dropper HSV 1 2"));
    EXPECT_FALSE(parsed("colour_eye_dropper HSV 1 2 3 4"));
    EXPECT_FALSE(parsed("colour_eye_dropper HSV 1 2 3 "));
    EXPECT_FALSE(parsed("colour_eye_dropper HSV "));
}

TEST_F(ParsingAColourMessage, IgnoresAnotherFirstWord)
{
    EXPECT_FALSE(parsed("colour_eye_droppers HSV 1 2 3"));
    EXPECT_FALSE(parsed(""));
    EXPECT_FALSE(parsed(nullptr));
}

TEST_F(ParsingAColourMessage, SplitsAtEverySingleSpace)
{
    // Two spaces make an empty word, so this is six words.
    EXPECT_FALSE(parsed("colour_eye_dropper  HSV 1 2 3"));
    // And this five, the second of them empty.
    EXPECT_TRUE(parsed("colour_eye_dropper  1 2 3"));
}

TEST_F(ParsingAColourMessage, ReadsAWordThatIsNotANumberAsZero)
{
    ASSERT_TRUE(parsed("colour_eye_dropper HSV x 0.5abc -"));
    EXPECT_EQ(h, 0.0);
    EXPECT_EQ(s, 0.5);
    EXPECT_EQ(v, 0.0);
}

TEST_F(Sampling, TheRangeOfOnePixelIsThatPixelsHueSaturationAndValue)
{
    // Colours from every corner of the cube, greys excepted, in steps that meet each hue sector's edges.
    std::vector<Colour> colours;
    for (int r = 0; r < 256; r += 51)
        for (int g = 0; g < 256; g += 51)
            for (int b = 0; b < 256; b += 17)
                if (!(r == g && g == b))
                    colours.push_back(Colour::fromBytes(uint8_t(r), uint8_t(g), uint8_t(b)));
    showPicture(ui, columnsOf(std::vector<Colour>(colours.begin(), colours.begin() + 300)), {0, 100});
    showPicture(ui, columnsOf(std::vector<Colour>(colours.begin() + 300, colours.end())), {0, 120});
    for (size_t i = 0; i < colours.size(); ++i) {
        const double x = static_cast<double>(i < 300 ? i : i - 300);
        const double y = i < 300 ? 100 : 120;
        const HSV hsv = RGBToHSV(colours[i].toNormalisedRGB());
        const ColEyeDropBase::ColourRange one{hsv.h, hsv.h, hsv.s, hsv.s, hsv.v, hsv.v};
        EXPECT_EQ(ColEyeDropBase::getPixelRange(Area(x, y, x + 1, y + 1)), one) << i;
    }
}

TEST_F(Sampling, TheRangeOfManyPixelsIsTheExtremesOfTheirColours)
{
    // A narrow band of orange-reds (green never below blue, so no hue wraps past 0): most pixels lie inside the
    // bounds found before them, a few just outside.
    std::vector<Colour> colours;
    uint32_t state = 7;
    for (int i = 0; i < 390; ++i) {
        state = state * 1664525u + 1013904223u;
        colours.push_back(Colour::fromBytes(uint8_t(200 + (state >> 8) % 56), uint8_t(20 + (state >> 16) % 21),
                                            uint8_t((state >> 24) % 21)));
    }
    showPicture(ui, columnsOf(colours), {0, 100});
    ColEyeDropBase::ColourRange expected{1e9, -1e9, 1e9, -1e9, 1e9, -1e9};
    for (const Colour& c : colours) {
        const HSV hsv = RGBToHSV(c.toNormalisedRGB());
        expected = {std::min(expected.minHue, hsv.h), std::max(expected.maxHue, hsv.h),
                    std::min(expected.minSaturation, hsv.s), std::max(expected.maxSaturation, hsv.s),
                    std::min(expected.minValue, hsv.v), std::max(expected.maxValue, hsv.v)};
    }
    EXPECT_EQ(ColEyeDropBase::getPixelRange(Area(0, 100, 390, 101)), expected);
}

TEST_F(Sampling, TheRangeOfRandomPicturesIsTheRangeOfEveryPixelConverted)
{
    // Pictures that put many pixels on or next to the bounds: noise; reds whose hue crosses 0/360; one hue at
    // many brightnesses (equal fractions of the bytes that convert one rounding step apart), each jittered by a
    // step; pale and dark colours among greys. The widths leave a few pixels over at the end of every row.
    std::mt19937 random(2024);
    const auto below = [&random](int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); };
    const auto bytes = [](int r, int g, int b) {
        return Colour::fromBytes(static_cast<uint8_t>(r), static_cast<uint8_t>(g), static_cast<uint8_t>(b));
    };
    const std::vector<std::function<Colour()>> pictures{
        [&] { return bytes(below(256), below(256), below(256)); },
        [&] { return bytes(200 + below(56), below(12), below(12)); },
        [&] {
            const int m = 1 + below(51);
            return bytes(5 * m, 3 * m + below(2), m);
        },
        [&] {
            const int largest = below(256);
            return bytes(largest, largest - below(std::min(largest, 3) + 1), largest - below(std::min(largest, 2) + 1));
        },
    };
    for (size_t i = 0; i < pictures.size(); ++i) {
        Pictor::Image picture(397, 70);
        ColEyeDropBase::ColourRange expected{1e9, -1e9, 1e9, -1e9, 1e9, -1e9};
        for (int row = 0; row < picture.height(); ++row)
            for (int col = 0; col < picture.width(); ++col) {
                const Colour colour = pictures[i]();
                picture.setPixel(col, row, Pictor::Image::premultiplied(colour));
                const HSV hsv = RGBToHSV(colour.toNormalisedRGB());
                if (hsv.s == 0.0)
                    continue;
                expected = {std::min(expected.minHue, hsv.h), std::max(expected.maxHue, hsv.h),
                            std::min(expected.minSaturation, hsv.s), std::max(expected.maxSaturation, hsv.s),
                            std::min(expected.minValue, hsv.v), std::max(expected.maxValue, hsv.v)};
            }
        const int bottom = 75 * static_cast<int>(i);
        showPicture(ui, std::move(picture), {0, bottom});
        EXPECT_EQ(ColEyeDropBase::getPixelRange(Area(0, bottom, 397, bottom + 70)), expected) << "picture " << i;
    }
}
