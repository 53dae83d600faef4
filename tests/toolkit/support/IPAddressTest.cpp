// IPAddress::fromString: strict reading of "a.b.c.d[:port]".
#include "toolkit/support/IPAddress.h"

#include <gtest/gtest.h>

TEST(IPAddress, ReadsFourOctetsAndAnOptionalPort)
{
    const std::optional<IPAddress> plain = IPAddress::fromString("192.168.0.255");
    ASSERT_TRUE(plain);
    EXPECT_EQ(plain->getPart(0), 192);
    EXPECT_EQ(plain->getPart(3), 255);
    EXPECT_FALSE(plain->hasPort());

    const std::optional<IPAddress> withPort = IPAddress::fromString(L"10.0.0.1:65535");
    ASSERT_TRUE(withPort);
    EXPECT_EQ(withPort->getPart(0), 10);
    EXPECT_EQ(withPort->getPort(), 65535);
}

TEST(IPAddress, WritesWhatItReadsBack)
{
    for (const char* text : {"0.0.0.0", "1.2.3.4:1", "255.255.255.255:8080"}) {
        const std::optional<IPAddress> address = IPAddress::fromString(text);
        ASSERT_TRUE(address) << text;
        EXPECT_EQ(toUTF8(address->toString().view()), text);
    }
}

TEST(IPAddress, RejectsAnOctetAbove255)
{
    EXPECT_FALSE(IPAddress::fromString("256.1.1.1"));
    EXPECT_FALSE(IPAddress::fromString("1.1.1.999"));
}

TEST(IPAddress, RejectsAPortOutside1To65535)
{
    EXPECT_FALSE(IPAddress::fromString("1.1.1.1:0"));
    EXPECT_FALSE(IPAddress::fromString("1.1.1.1:65536"));
    EXPECT_FALSE(IPAddress::fromString("1.1.1.1:"));
}

TEST(IPAddress, RejectsEveryOtherShapeWhole)
{
    const char* bad[] = {"",           "1.2.3",       "1.2.3.4.5", "1..2.3",    " 1.2.3.4", "1.2.3.4 ",
                         "+1.2.3.4",   "1.2.3.-4",    "01.2.3.4",  "1.2.3.4:08", "1.2.3.4x", "1.2.3.4:80x",
                         "1.2.3.4:80:1", "0x1.2.3.4", "1,2,3,4",   "1.2.3.4.", "١.2.3.4"};
    for (const char* text : bad)
        EXPECT_FALSE(IPAddress::fromString(text)) << '"' << text << '"';
    EXPECT_FALSE(IPAddress::fromString(std::string_view("1.2.3.4\0", 8)));
}

