// Widgets made by type name read their settings by the shared rules: the same text means the same thing to
// every widget.
#include "toolkit/widgets/Checkbox.h"
#include "toolkit/widgets/RadioSet.h"
#include "toolkit/widgets/TextLabel.h"
#include "toolkit/widgets/TitleMenuButton.h"

#include <gtest/gtest.h>

namespace {

GlobCreationInfo infoWith(const char* key, const char* value)
{
    GlobCreationInfo info(100, 20);
    info.config.set(key, value);
    return info;
}

} // namespace

TEST(TypeNameSettingsTest, TrueMeansOnForEveryBooleanSetting)
{
    EXPECT_TRUE(Checkbox::InitArgs(infoWith("value", "true")).value);
    EXPECT_TRUE(TextLabel::InitArgs(infoWith("wrap", "true")).wordWrap);
    EXPECT_TRUE(RadioSet::InitArgs(infoWith("row", "true")).row);
}

TEST(TypeNameSettingsTest, DoubledCommaMakesNoEmptyEntryInAnyList)
{
    EXPECT_EQ(RadioSet::InitArgs(infoWith("labels", "a,,b")).labels.size(), 2u);
    EXPECT_EQ(TitleMenuButton::InitArgs(infoWith("items", "a,,b")).items.size(), 2u);
}

TEST(TypeNameSettingsTest, UnreadableIndexKeepsTheDefault)
{
    RadioSet::InitArgs args(infoWith("selected", "second"));
    EXPECT_EQ(args.selected, RadioSet::InitArgs().selected);
}
