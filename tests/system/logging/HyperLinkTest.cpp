#include "logging/LoggerBase.h"

#include <gtest/gtest.h>

using HyperLink = LoggerBase::HyperLink;

TEST(HyperLink, RoundTripsTargetsAndDescriptionHoldingTheFormsOwnCharacters)
{
    const HyperLink link({ L"/media/a;b%3B.mov", L"line\none\r", L"", L"link:e;x" }, L"50% done; see\nnotes", false);
    const LightweightString<wchar_t> text = link.toString();
    EXPECT_EQ(text.find(L'\n'), LightweightString<wchar_t>::npos);
    EXPECT_EQ(HyperLink::fromString(text), link);
}

TEST(HyperLink, RoundTripsInternalLinksAndEmptyDescriptions)
{
    const HyperLink link({ L"{\"type\":\"X\",\"params\":{\"a\":\"b;c\"}}" }, L"", true);
    const HyperLink back = HyperLink::fromString(link.toString());
    EXPECT_TRUE(back.isInternal());
    EXPECT_EQ(back, link);
}

TEST(HyperLink, TextNotInTheStringFormGivesALinkWithoutTargets)
{
    for (const wchar_t* text : { L"", L"/media/a.mov", L"link:", L"link:x;d;t", L"link:e;d;bad%zz" })
        EXPECT_TRUE(HyperLink::fromString(text).getTargets().empty()) << text;
}
