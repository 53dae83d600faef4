#include "toolkit/support/Box.h"

#include <cstdint>
#include <gtest/gtest.h>

using BoxI = Cv::Box<int>;

TEST(XY, ArithmeticStaysInTheElementType)
{
    const XY<int> a(3, -4);
    EXPECT_EQ(a + XY<int>(1, 1), XY<int>(4, -3));
    EXPECT_EQ(a - XY<int>(5, 5), XY<int>(-2, -9));
    EXPECT_EQ(-a, XY<int>(-3, 4));
    EXPECT_EQ(a * 2, XY<int>(6, -8));
    EXPECT_EQ(XY<double>(1, 3) / 2.0, XY<double>(0.5, 1.5));

    // A 16-bit size wraps like the 16-bit number it is, rather than being widened silently.
    XY<uint16_t> size(65535, 10);
    size += XY<uint16_t>(1, 1);
    EXPECT_EQ(size, XY<uint16_t>(0, 11));
    EXPECT_EQ(XY<int>(XY<double>(2.9, -2.9)), XY<int>(2, -2));
}

TEST(Box, CornersInAnyOrderGiveTheSameBottomUpBox)
{
    const BoxI a(10, 20, 40, 80);
    const BoxI b(40, 80, 10, 20);
    EXPECT_EQ(a, b);
    EXPECT_EQ(a.left(), 10);
    EXPECT_EQ(a.right(), 40);
    EXPECT_EQ(a.bottom(), 20); // y grows upward: bottom is the smaller y
    EXPECT_EQ(a.top(), 80);
    EXPECT_EQ(a.size(), XY<int>(30, 60));
    EXPECT_EQ(BoxI::fromOriginAndSize({10, 20}, {30, 60}), a);

    const Cv::Box<int, Cv::TopDownTraits> rows(0, 0, 5, 8);
    EXPECT_EQ(rows.top(), 0);
    EXPECT_EQ(rows.bottom(), 8);
}

TEST(Box, ContainsIsHalfOpen)
{
    const BoxI b(0, 0, 10, 10);
    EXPECT_TRUE(b.contains(0, 0));
    EXPECT_TRUE(b.contains(9, 9));
    EXPECT_FALSE(b.contains(10, 5));
    EXPECT_FALSE(b.contains(5, 10));
    EXPECT_FALSE(b.contains(-1, 5));
    EXPECT_FALSE(BoxI(3, 3, 3, 9).contains(3, 4)); // zero width holds nothing
    EXPECT_TRUE(b.contains(BoxI(2, 2, 10, 10)));
    EXPECT_FALSE(b.contains(BoxI(2, 2, 11, 10)));
}

TEST(Box, IntersectionAndUnion)
{
    const BoxI a(0, 0, 10, 10);
    const BoxI b(5, -5, 20, 5);
    EXPECT_EQ(a.intersection(b), BoxI(5, 0, 10, 5));
    EXPECT_EQ(b.intersection(a), a.intersection(b));
    EXPECT_EQ(a.unionWith(b), BoxI(0, -5, 20, 10));

    // Touching boxes share an edge but no area.
    const BoxI right(10, 0, 20, 10);
    EXPECT_TRUE(a.intersection(right).empty());
    EXPECT_FALSE(a.intersects(right));
    EXPECT_TRUE(a.intersection(BoxI(50, 50, 60, 60)).empty());

    // An empty box does not stretch a union, even when it lies far away.
    EXPECT_EQ(a.unionWith(BoxI(100, 100, 100, 200)), a);
    EXPECT_EQ(BoxI().unionWith(b), b);
}

TEST(Box, SubPixelAreas)
{
    const Cv::Box<double> area(0.25, 0.25, 1.75, 0.75);
    EXPECT_DOUBLE_EQ(area.width(), 1.5);
    EXPECT_DOUBLE_EQ(area.height(), 0.5);
    EXPECT_TRUE(area.contains(1.7, 0.5));
    EXPECT_EQ(area.centre(), XY<double>(1.0, 0.5));
    EXPECT_EQ(area.intersection(Cv::Box<double>(1.0, 0.0, 3.0, 0.5)), Cv::Box<double>(1.0, 0.25, 1.75, 0.5));
}

TEST(Box, SlicingNeverTurnsABoxInsideOut)
{
    BoxI area(0, 0, 100, 50);
    const BoxI title = area.removeFromTop(20);
    EXPECT_EQ(title, BoxI(0, 30, 100, 50)); // the top of a bottom-up box is its high y
    EXPECT_EQ(area, BoxI(0, 0, 100, 30));
    const BoxI strip = area.removeFromLeft(500);
    EXPECT_EQ(strip, BoxI(0, 0, 100, 30));
    EXPECT_TRUE(area.empty());
    EXPECT_EQ(area.width(), 0);

    Cv::Box<uint16_t> size(0, 0, 10, 10);
    EXPECT_EQ(size.removeFromBottom(4), Cv::Box<uint16_t>(0, 0, 10, 4));
    EXPECT_EQ(size.height(), 6);

    EXPECT_EQ(BoxI(0, 0, 10, 10).expanded(2), BoxI(-2, -2, 12, 12));
    EXPECT_EQ(BoxI(0, 0, 10, 4).expanded(-3), BoxI(5, 2, 5, 2));
    EXPECT_EQ(BoxI(0, 0, 10, 4).translated(1, -1), BoxI(1, -1, 11, 3));
}
