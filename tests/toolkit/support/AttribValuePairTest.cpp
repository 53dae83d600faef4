#include "toolkit/support/AttribValuePair.h"

#include <gtest/gtest.h>

#include <tuple>

using Cv::AttribValuePair;

TEST(AttribValuePair, SplitsAtTheFirstSeparatorAndTrimsBlanksAroundNameAndValue)
{
    // Text, separator, name, value.
    const std::tuple<const char*, char, const char*, const char*> rows[] = {
        {"mode=2,3", '=', "mode", "2,3"}, // read as one pair, the comma belongs to the value
        {"a=b=c", '=', "a", "b=c"}, {"key: value", ':', "key", "value"},
        {" \tquality = high \t", '=', "quality", "high"}, {"long name=two words", '=', "long name", "two words"},
        {"mode=", '=', "mode", ""}};
    for (const auto& [text, separator, name, value] : rows) {
        const AttribValuePair pair(text, separator);
        EXPECT_TRUE(pair.valid()) << text;
        EXPECT_EQ(pair.name(), name) << text;
        EXPECT_EQ(pair.value(), value) << text;
    }
    // Without the separator or without a name there is no pair.
    for (const char* text : {"mode", "", "=5", "  =5"})
        EXPECT_FALSE(AttribValuePair(text, '=').valid()) << text;
    EXPECT_FALSE(AttribValuePair().valid());
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
    // A trailing separator adds nothing.
    EXPECT_EQ(AttribValuePair::vecFromString("a=1,", '=', ',').size(), 1u);
}
