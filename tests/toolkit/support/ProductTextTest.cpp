// Placeholders in texts shown to the user, and the folder look-up tables are read from.
#include "toolkit/support/ProductText.h"

#include "FileTestSupport.h"

#include "toolkit/support/FileUtils.h"

#include <gtest/gtest.h>

namespace {

using FileTestSupport::ScopedEnv;
using FileTestSupport::ScratchFolder;

TEST(ProductText, EveryOccurrenceOfThePlaceholderIsReplaced)
{
    EXPECT_EQ(replacePlaceholder(L"$KEY$ or $KEY$, then $KEYS$", L"$KEY$", L"F1"), L"F1 or F1, then $KEYS$");
}

TEST(ProductText, ValueHoldingThePlaceholderIsNotReplacedAgain)
{
    EXPECT_EQ(replacePlaceholder(L"a $X$ b", L"$X$", L"[$X$]"), L"a [$X$] b");
}

TEST(LutFolder, LiesInTheDataHomeAndIsMade)
{
    const ScratchFolder scratch("tessel-luts");
    const ScopedEnv dataHome("XDG_DATA_HOME", scratch.path().c_str());
    const LightweightString<wchar_t> own = getLUTDirectory(0);
    EXPECT_EQ(own, fromUTF8(scratch.path().string() + "/tessel/luts/"));
    EXPECT_TRUE(directoryExists(own));
    EXPECT_EQ(getLUTDirectory(2), fromUTF8(scratch.path().string() + "/tessel/luts/2/"));
}

} // namespace
