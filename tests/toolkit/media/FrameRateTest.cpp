// Frame rates: display strings that round-trip, exact fractions for the 1000/1001 family.
#include "toolkit/media/FrameRate.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numeric>
#include <set>

using Cv::FrameRate;

TEST(FrameRate, EveryRateRoundTripsThroughItsDistinctDisplayString)
{
    std::set<std::wstring> seen;
    for (FrameRate rate : Cv::getFrameRates(Cv::FrameRateGroup::All)) {
        const auto text = Cv::getDisplayString(rate);
        EXPECT_FALSE(text.empty());
        EXPECT_TRUE(seen.insert(text.str()).second) << "two rates share " << text.str().size();
        EXPECT_EQ(Cv::getFrameRateFromDisplayString(text), rate);
    }
}

TEST(FrameRate, TextThatIsNotExactlyADisplayStringIsUnknown)
{
    for (const wchar_t* text : { L"", L"25", L" 25 fps", L"25 FPS", L"25 fps ", L"29.970 fps", L"xyz" })
        EXPECT_EQ(Cv::getFrameRateFromDisplayString(text), FrameRate::Unknown) << text;
    EXPECT_TRUE(Cv::getDisplayString(FrameRate::Unknown).empty());
    EXPECT_TRUE(Cv::getDisplayString(static_cast<FrameRate>(999)).empty());
}

TEST(FrameRate, NtscFamilyIsAThousandTimesTheNominalRateOverAThousandAndOne)
{
    for (FrameRate rate : Cv::getFrameRates(Cv::FrameRateGroup::All)) {
        const Cv::FrameRateRational value = Cv::getRational(rate);
        EXPECT_EQ(std::gcd(value.numerator, value.denominator), 1u) << "not in lowest terms";
        if (!Cv::isNtscFamily(rate))
            continue;
        EXPECT_EQ(value.denominator, 1001u);
        const uint32_t nominal = static_cast<uint32_t>(std::lround(Cv::getFramesPerSecond(rate)));
        EXPECT_EQ(value.numerator, nominal * 1000u);
    }
    EXPECT_EQ(Cv::getRational(FrameRate::Fps29_97), (Cv::FrameRateRational { 30000, 1001 }));
}

TEST(FrameRate, EqualFractionsFindTheSameRate)
{
    EXPECT_EQ(Cv::getFrameRateFromRational({ 60000, 2002 }), FrameRate::Fps29_97);
    EXPECT_EQ(Cv::getFrameRateFromRational({ 50, 2 }), FrameRate::Fps25);
    EXPECT_EQ(Cv::getFrameRateFromRational({ 2997, 100 }), FrameRate::Unknown) << "a rounded decimal is not 30000/1001";
    EXPECT_EQ(Cv::getFrameRateFromRational({ 25, 0 }), FrameRate::Unknown);
}

TEST(FrameRate, DoublingGivesTheFieldRateOrUnknownBeyondTheCatalogue)
{
    EXPECT_EQ(Cv::getDoubledRate(FrameRate::Fps25), FrameRate::Fps50);
    EXPECT_EQ(Cv::getDoubledRate(FrameRate::Fps29_97), FrameRate::Fps59_94);
    EXPECT_EQ(Cv::getDoubledRate(FrameRate::Fps59_94), FrameRate::Fps119_88);
    EXPECT_EQ(Cv::getDoubledRate(FrameRate::Fps120), FrameRate::Unknown);
    EXPECT_EQ(Cv::getDoubledRate(FrameRate::Unknown), FrameRate::Unknown);
}

TEST(FrameRate, ProjectGroupHoldsNoHighOrLowRates)
{
    for (FrameRate rate : Cv::getFrameRates(Cv::FrameRateGroup::ProjectRates)) {
        const double fps = Cv::getFramesPerSecond(rate);
        EXPECT_GE(fps, 23.0);
        EXPECT_LE(fps, 60.0);
    }
    EXPECT_TRUE(Cv::getFrameRates(7).empty());
}
