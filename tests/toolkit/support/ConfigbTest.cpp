#include "toolkit/support/Configb.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

std::vector<std::string> keysOf(const configb& record)
{
    std::vector<std::string> keys;
    for (const auto& entry : record)
        keys.push_back(entry.key.str());
    return keys;
}

} // namespace

TEST(Configb, KeepsFirstInsertionOrderAndReplacesInPlace)
{
    configb record;
    record.set("width", "720");
    record.set("codec", "M101");
    record.set("bitrate", "50");
    record.set("width", "1920");

    EXPECT_EQ(keysOf(record), (std::vector<std::string>{"width", "codec", "bitrate"}));
    LightweightString<char> value;
    EXPECT_EQ(record.in("width", value), 0);
    EXPECT_EQ(value, "1920");
}

TEST(Configb, MissingKeyAnswersNonZeroAndLeavesOutputAlone)
{
    configb record;
    record.set("present", "");
    LightweightString<char> value("untouched");
    EXPECT_NE(record.in("absent", value), 0);
    EXPECT_EQ(value, "untouched");

    // An empty value is still a value.
    EXPECT_EQ(record.in("present", value), 0);
    EXPECT_TRUE(value.empty());
    std::string asStd = "x";
    EXPECT_EQ(record.in("present", asStd), 0);
    EXPECT_EQ(asStd, "");
}

TEST(Configb, RemoveKeepsTheOthersFindable)
{
    configb record;
    for (const char* key : {"a", "b", "c", "d"})
        record.set(key, key);
    EXPECT_TRUE(record.remove("b"));
    EXPECT_FALSE(record.remove("b"));

    // Positions after the removed entry moved down; lookups and replacements must follow them.
    record.set("d", "D");
    record.set("b", "again");
    EXPECT_EQ(keysOf(record), (std::vector<std::string>{"a", "c", "d", "b"}));
    LightweightString<char> value;
    ASSERT_EQ(record.in("d", value), 0);
    EXPECT_EQ(value, "D");
    ASSERT_EQ(record.in("c", value), 0);
    EXPECT_EQ(value, "c");

    record.clear();
    EXPECT_TRUE(record.empty());
    EXPECT_NE(record.in("a", value), 0);
}

TEST(Configb, CopiesAreIndependentAndCompareByOrder)
{
    configb a;
    a.set("x", "1");
    a.set("y", "2");
    configb b = a;
    b.set("x", "changed");
    LightweightString<char> value;
    ASSERT_EQ(a.in("x", value), 0);
    EXPECT_EQ(value, "1");

    configb reordered;
    reordered.set("y", "2");
    reordered.set("x", "1");
    EXPECT_FALSE(a == reordered);
    b.set("x", "1");
    EXPECT_TRUE(a == b);
}
