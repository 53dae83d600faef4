#include "toolkit/support/SettingsReader.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

class SettingsReaderTest : public ::testing::Test {
protected:
    configb config;
    SettingsReader reader{config};

    void put(const char* key, const char* value) { config.set(key, value); }
};

std::vector<LightweightString<wchar_t>> wide(std::initializer_list<const wchar_t*> items)
{
    std::vector<LightweightString<wchar_t>> out;
    for (const wchar_t* item : items)
        out.emplace_back(item);
    return out;
}

} // namespace

TEST_F(SettingsReaderTest, AbsentKeyAnswersNothingForEveryType)
{
    EXPECT_FALSE(reader.text("k"));
    EXPECT_FALSE(reader.integer("k"));
    EXPECT_FALSE(reader.number("k"));
    EXPECT_FALSE(reader.boolean("k"));
    EXPECT_FALSE(reader.list("k"));
}

TEST_F(SettingsReaderTest, BooleanWordsInAnyCaseAreRead)
{
    for (const char* yes : {"1", "true", "yes", "TRUE", " Yes "}) {
        put("b", yes);
        EXPECT_EQ(reader.boolean("b"), true) << yes;
    }
    for (const char* no : {"0", "false", "no", "False", "NO"}) {
        put("b", no);
        EXPECT_EQ(reader.boolean("b"), false) << no;
    }
}

TEST_F(SettingsReaderTest, BooleanOtherWordsKeepTheDefault)
{
    for (const char* other : {"2", "on", "y", "", "truely"}) {
        put("b", other);
        EXPECT_FALSE(reader.boolean("b")) << other;
    }
}

TEST_F(SettingsReaderTest, ListDropsEmptyItems)
{
    put("l", "a,,b");
    EXPECT_EQ(reader.list("l"), wide({L"a", L"b"}));
    put("l", ",a, ,b,");
    EXPECT_EQ(reader.list("l"), wide({L"a", L"b"}));
}

TEST_F(SettingsReaderTest, ListItemsAreTrimmed)
{
    put("l", " a ,\tb\t");
    EXPECT_EQ(reader.list("l"), wide({L"a", L"b"}));
}

TEST_F(SettingsReaderTest, ListKeepsTheOrderWritten)
{
    put("l", "Three,One,Two");
    EXPECT_EQ(reader.list("l"), wide({L"Three", L"One", L"Two"}));
}

TEST_F(SettingsReaderTest, ListItemsAreUtf8)
{
    put("l", "caf\xc3\xa9,x");
    EXPECT_EQ(reader.list("l"), wide({L"caf\u00e9", L"x"}));
}

TEST_F(SettingsReaderTest, EmptyListTextIsAnEmptyList)
{
    put("l", "");
    ASSERT_TRUE(reader.list("l"));
    EXPECT_TRUE(reader.list("l")->empty());
}

TEST_F(SettingsReaderTest, IntegerReadsASignedNumberBetweenBlanks)
{
    put("i", " -42 ");
    EXPECT_EQ(reader.integer("i"), -42);
}

TEST_F(SettingsReaderTest, NumberRejectsTextThatIsNotOneFiniteNumber)
{
    for (const char* bad : {"inf", "nan", "2.5s", "", "1e999"}) {
        put("n", bad);
        EXPECT_FALSE(reader.number("n")) << bad;
    }
}

TEST_F(SettingsReaderTest, NumberReadsAnExponent)
{
    put("n", "-1e3");
    EXPECT_EQ(reader.number("n"), -1000.0);
}
