#include "toolkit/support/AttribValuePair.h"

#include <gtest/gtest.h>

using Cv::AttribValuePair;

TEST(AttribValuePair, SplitsAtTheFirstSeparatorOnly)
{
    const AttribValuePair pair("mode=2,3", '=');
    ASSERT_TRUE(pair.valid());
    EXPECT_EQ(pair.name(), "mode");
    EXPECT_EQ(pair.value(), "2,3"); // read as one pair, the comma belongs to the value

    const AttribValuePair nested("a=b=c", '=');
    EXPECT_EQ(nested.name(), "a");
    EXPECT_EQ(nested.value(), "b=c");

    const AttribValuePair colon("key: value", ':');
    EXPECT_EQ(colon.name(), "key");
    EXPECT_EQ(colon.value(), "value");
}

TEST(AttribValuePair, ValidityNeedsTheSeparatorAndAName)
{
    EXPECT_FALSE(AttribValuePair("mode", '=').valid());
    EXPECT_FALSE(AttribValuePair("", '=').valid());
    EXPECT_FALSE(AttribValuePair("=5", '=').valid());
    EXPECT_FALSE(AttribValuePair("  =5", '=').valid());
    EXPECT_FALSE(AttribValuePair().valid());

    const AttribValuePair emptyValue("mode=", '=');
    EXPECT_TRUE(emptyValue.valid());
    EXPECT_TRUE(emptyValue.value().empty());
}

TEST(AttribValuePair, BlanksAroundNameAndValueDoNotCount)
{
    const AttribValuePair pair(" \tquality = high \t", '=');
    EXPECT_EQ(pair.name(), "quality");
    EXPECT_EQ(pair.value(), "high");
    // Blanks inside stay.
    EXPECT_EQ(AttribValuePair("long name=two words", '=').value(), "two words");
}

TEST(AttribValuePair, ListsSplitAtTheListSeparatorFirst)
{
    const auto pairs = AttribValuePair::vecFromString("a=1,b=true", '=', ',');
    ASSERT_EQ(pairs.size(), 2u);
    EXPECT_EQ(pairs[0], AttribValuePair("a", "1"));
    EXPECT_EQ(pairs[1], AttribValuePair("b", "true"));

    // In a list the comma always separates, so "mode=2,3" gives one pair and a stray item that is dropped.
    const auto split = AttribValuePair::vecFromString("mode=2,3", '=', ',');
    ASSERT_EQ(split.size(), 1u);
    EXPECT_EQ(split[0].value(), "2");

    const auto messy = AttribValuePair::vecFromString(" a = 1 ,, =x, b,c=", '=', ',');
    ASSERT_EQ(messy.size(), 2u);
    EXPECT_EQ(messy[0], AttribValuePair("a", "1"));
    EXPECT_EQ(messy[1], AttribValuePair("c", ""));

    EXPECT_TRUE(AttribValuePair::vecFromString("", '=', ',').empty());
    EXPECT_TRUE(AttribValuePair::vecFromString(",,,", '=', ',').empty());
    // A trailing separator adds nothing; the last item is read too.
    EXPECT_EQ(AttribValuePair::vecFromString("a=1,", '=', ',').size(), 1u);
    EXPECT_EQ(AttribValuePair::vecFromString("a=1,b=2", '=', ',').back().value(), "2");
}
