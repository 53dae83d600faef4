#include "toolkit/gfx/ImageConverter.h"

#include <gtest/gtest.h>

namespace {

int channel(uint32_t argb, int shift)
{
    return static_cast<int>((argb >> shift) & 0xFF);
}

} // namespace

TEST(ImageConverter, ShrinkingAveragesFineStripesInsteadOfAliasing)
{
    // One-pixel black and white columns: a sampler that picks pixels shows solid black or white here.
    Cv::Image::Surface stripes(100, 60);
    for (int y = 0; y < 60; ++y)
        for (int x = 0; x < 100; ++x)
            stripes.image().setPixel(x, y, x % 2 ? 0xFFFFFFFFu : 0xFF000000u);
    Cv::Image::Surface small(10, 6);
    ASSERT_TRUE(ImageConverter::resize(stripes, small));
    for (int y = 0; y < 6; ++y)
        for (int x = 0; x < 10; ++x) {
            const uint32_t p = small.image().pixel(x, y);
            EXPECT_NEAR(channel(p, 16), 128, 1) << x << "," << y;
            EXPECT_EQ(channel(p, 24), 255);
        }
}

TEST(ImageConverter, ShrinkingByAnUnevenFactorKeepsAFlatColourExact)
{
    Cv::Image::Surface flat(97, 53);
    flat.image().fill(0xFF3080C0u);
    Cv::Image::Surface small(30, 20);
    ASSERT_TRUE(ImageConverter::resize(flat, small));
    for (int y = 0; y < 20; ++y)
        for (int x = 0; x < 30; ++x)
            ASSERT_EQ(small.image().pixel(x, y), 0xFF3080C0u) << x << "," << y;
}

TEST(ImageConverter, EdgePixelsOfTheSourceReachTheEdgesOfTheResult)
{
    Cv::Image::Surface source(9, 9);
    source.image().fill(0xFF000000u);
    for (int y = 0; y < 9; ++y)
        for (int x = 6; x < 9; ++x)
            source.image().setPixel(x, y, 0xFFFFFFFFu); // the right third white
    Cv::Image::Surface small(3, 3);
    ASSERT_TRUE(ImageConverter::resize(source, small));
    EXPECT_EQ(small.image().pixel(2, 1), 0xFFFFFFFFu);
    EXPECT_EQ(small.image().pixel(1, 1), 0xFF000000u);
}
