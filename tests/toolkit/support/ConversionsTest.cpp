// DataConvert (forgiving reads of user text), StringFromInteger/StringFromFloat and their strict reverses.
#include "toolkit/support/DataConvert.h"
#include "toolkit/support/StringConversions.h"

#include <gtest/gtest.h>

#include <cfloat>
#include <climits>
#include <cmath>
#include <cstdint>

TEST(DataConvert, UnsignedUsesTheLongestNumericPrefix)
{
    struct Case {
        const wchar_t* text;
        unsigned value;
        bool found;
    };
    const Case cases[] = {
        {L"42", 42, true},
        {L" \t\n12abc", 12, true},
        {L"+7", 7, true},
        {L"2.7", 2, true},
        {L"0x1A", 0, true},
        {L"-3", 0, true},
        {L"4294967295", UINT_MAX, true},
        {L"4294967296", UINT_MAX, true},
        {L"99999999999999999999999", UINT_MAX, true},
        {L"", 0, false},
        {L"abc", 0, false},
        {L"+", 0, false},
        {L"- 3", 0, false},
        {L"\u0663", 0, false}, // a digit of another script is not a number here
    };
    for (const auto& c : cases) {
        unsigned out = 12345;
        EXPECT_EQ(DataConvert::convert(std::wstring_view(c.text), out), c.found) << "text index " << (&c - cases);
        EXPECT_EQ(out, c.value) << "text index " << (&c - cases);
    }
}

TEST(DataConvert, DoubleUsesTheLongestNumericPrefix)
{
    struct Case {
        const char* text;
        double value;
        bool found;
    };
    const Case cases[] = {
        {"2.5", 2.5, true},
        {"  -2.5e+2x", -250.0, true},
        {".5", 0.5, true},
        {"5.", 5.0, true},
        {"1e", 1.0, true},
        {"1e+", 1.0, true},
        {"1,5", 1.0, true},
        {"0x10", 0.0, true},
        {"1e400", DBL_MAX, true},
        {"-1e400", -DBL_MAX, true},
        {"1000e306", DBL_MAX, true},
        {"1e-400", 0.0, true},
        {"100000e-330", 0.0, true},
        {"0.00001e312", 1e307, true},
        {"1e99999999999999999999", DBL_MAX, true},
        {"-", 0.0, false},
        {".", 0.0, false},
        {"inf", 0.0, false},
        {"nan", 0.0, false},
        {"e5", 0.0, false},
        {"", 0.0, false},
    };
    for (const auto& c : cases) {
        double out = 12345;
        EXPECT_EQ(DataConvert::convert(std::string_view(c.text), out), c.found) << c.text;
        EXPECT_DOUBLE_EQ(out, c.value) << c.text;
    }
}

TEST(StringFromInteger, WritesEveryRangeInPlainDigits)
{
    EXPECT_EQ(StringFromInteger(0), "0");
    EXPECT_EQ(StringFromInteger(-12), "-12");
    EXPECT_EQ(StringFromInteger(INT64_MIN), "-9223372036854775808");
    EXPECT_EQ(StringFromInteger(UINT64_MAX), "18446744073709551615");
    EXPECT_EQ(StringFromInteger(static_cast<unsigned char>(200)), "200");
    EXPECT_EQ(StringFromInteger(static_cast<signed char>(-100)), "-100");
}

TEST(StringFromFloat, ShortestFormReadsBackExactly)
{
    for (const double value : {0.1, 1.0 / 3.0, -2.5, 1e300, 5e-324, 123456789.125, DBL_MAX}) {
        const auto text = StringFromFloat(value);
        double back = 0;
        ASSERT_TRUE(FloatFromString(text.view(), back)) << text.c_str();
        EXPECT_EQ(back, value) << text.c_str();
        EXPECT_EQ(text.find(','), LightweightString<char>::npos);
    }
    EXPECT_EQ(StringFromFloat(0.1), "0.1");
}

TEST(StringFromFloat, FixedDecimalsAndSpecialValues)
{
    EXPECT_EQ(StringFromFloat(1.0, 2), "1.00");
    EXPECT_EQ(StringFromFloat(0.125, 2), "0.12"); // exactly half: to even
    EXPECT_EQ(StringFromFloat(2.675, 2), "2.67"); // 2.675 is stored just below the half
    EXPECT_EQ(StringFromFloat(1.5, 0), "2");
    EXPECT_EQ(StringFromFloat(-0.001, 2), "0.00");
    EXPECT_EQ(StringFromFloat(-0.0), "0");
    EXPECT_EQ(StringFromFloat(-0.5, 2), "-0.50");
    EXPECT_EQ(StringFromFloat(1.0, 500).size(), 32u); // decimals are capped at 30
    EXPECT_EQ(StringFromFloat(NAN), "nan");
    EXPECT_EQ(StringFromFloat(-INFINITY, 3), "-inf");

    // Whatever it writes for special values reads back through the strict reader.
    double back = 0;
    ASSERT_TRUE(FloatFromString(StringFromFloat(INFINITY).view(), back));
    EXPECT_TRUE(std::isinf(back));
    ASSERT_TRUE(FloatFromString(StringFromFloat(NAN).view(), back));
    EXPECT_TRUE(std::isnan(back));
}

TEST(IntegerFromString, AcceptsOnlyAWholeNumberThatFits)
{
    int out = 99;
    EXPECT_TRUE(IntegerFromString(" -3\t", out));
    EXPECT_EQ(out, -3);
    EXPECT_TRUE(IntegerFromString("+4", out));
    EXPECT_EQ(out, 4);
    EXPECT_TRUE(IntegerFromString("2147483647", out));
    EXPECT_EQ(out, INT_MAX);

    out = 99;
    for (const char* bad : {"", " ", "12px", "0x10", "+-5", "--5", "1.0", "2147483648", "+", "1 2"})
        EXPECT_FALSE(IntegerFromString(bad, out)) << bad;
    EXPECT_EQ(out, 99);
}
