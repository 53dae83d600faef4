#include "toolkit/support/LightweightString.h"

#include <gtest/gtest.h>

TEST(LightweightString, CopiesShareUntilOneIsChanged)
{
    LightweightString<char> a("frame rate");
    LightweightString<char> b = a;
    EXPECT_EQ(a.c_str(), b.c_str());
    b += " (fps)";
    EXPECT_EQ(a, "frame rate");
    EXPECT_EQ(b, "frame rate (fps)");
    EXPECT_NE(a.c_str(), b.c_str());
}

TEST(LightweightString, EmptyAndNullAreTheSame)
{
    LightweightString<wchar_t> nothing;
    LightweightString<wchar_t> fromNull(static_cast<const wchar_t*>(nullptr));
    EXPECT_TRUE(nothing.empty());
    EXPECT_EQ(nothing, fromNull);
    EXPECT_STREQ(nothing.c_str(), L"");
    EXPECT_EQ(nothing.substr(5), L"");
}

TEST(Utf8, RoundTripsEveryPlane)
{
    const std::wstring text = L"a\u00e9\u20ac\U0001F600z";
    const auto narrow = toUTF8(text);
    EXPECT_EQ(narrow.size(), 1u + 2 + 3 + 4 + 1);
    EXPECT_EQ(fromUTF8(narrow), text);
}

TEST(Utf8, MalformedInputBecomesReplacementCharacters)
{
    // Truncated three-byte sequence, stray continuation byte, overlong encoding, encoded surrogate.
    EXPECT_EQ(fromUTF8(std::string_view("\xE2\x82", 2)), L"\uFFFD");
    EXPECT_EQ(fromUTF8(std::string_view("a\x80z")), L"a\uFFFDz");
    EXPECT_EQ(fromUTF8(std::string_view("\xC0\xAF")), L"\uFFFD\uFFFD");
    EXPECT_EQ(fromUTF8(std::string_view("\xED\xA0\x80")), L"\uFFFD\uFFFD\uFFFD");
    // A broken sequence does not swallow the valid character after it.
    EXPECT_EQ(fromUTF8(std::string_view("\xE2\x82" "A")), L"\uFFFDA");
    EXPECT_EQ(fromUTF8(std::string_view("\xF4\x90\x80\x80")), L"\uFFFD\uFFFD\uFFFD\uFFFD");
}

TEST(Utf8, InvalidWideValuesEncodeAsReplacement)
{
    const wchar_t bad[] = {static_cast<wchar_t>(0xD800), static_cast<wchar_t>(0x110000), 0};
    EXPECT_EQ(toUTF8(bad), "\xEF\xBF\xBD\xEF\xBF\xBD");
}
