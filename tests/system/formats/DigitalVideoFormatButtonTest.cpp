// DigitalVideoFormatButton: which rasters are offered, how they are grouped and folded, what the face shows.
#include "FormatsTestSupport.h"

#include "formats/DigitalVideoFormatButton.h"
#include "toolkit/media/CurrentProject.h"

#include <optional>

using namespace formatstest;
using namespace Cv::DigitalVideoFormats;
using Info = DigitalVideoFormatInfo;

namespace {

Info raster(uint32_t uid, uint32_t group, uint32_t width, uint32_t divisor = 1, std::vector<LightweightString<char>> lines = {})
{
    return Info(uid, static_cast<FormatGroups::FormatGroup>(group), width, 1080, divisor,
        LightweightString<char>("R" + std::to_string(uid)), std::move(lines), { 16, 9 });
}

} // namespace

class DigitalVideoFormatButtonTest : public ::testing::Test {
protected:
    void SetUp() override { Cv::CurrentProject::resetToDefaults(); }
    void TearDown() override { Cv::CurrentProject::resetToDefaults(); }
    DigitalVideoFormatButton* make(std::vector<Info> formats, bool showDimensions = true)
    {
        DigitalVideoFormatButton::Formats list;
        for (const Info& f : formats)
            list.push_back(f);
        // The face names a raster through the catalogue, so the catalogue holds the same rasters.
        catalogue.emplace(std::move(formats));
        return ui.make<DigitalVideoFormatButton>(DigitalVideoFormatButton::InitArgs(list, 90, showDimensions, 400),
            Glob::BottomLeft(20, 600));
    }
    UiHarness ui;
    std::optional<ScopedCatalogue> catalogue;
};

TEST_F(DigitalVideoFormatButtonTest, OnlyGroupsOneToSixWithAWidthAreOffered)
{
    auto* button = make({ raster(101, 0, 1920), raster(102, 3, 1920), raster(103, 7, 1920), raster(104, 9, 1920),
        raster(105, 3, 0), raster(106, 4, 3, 4), raster(107, 4, 1920, 0), raster(108, 6, 640) });
    EXPECT_EQ(labels(button->getBtn()), (std::vector<std::wstring> { L"HD", L"R102||1920x1080", L"Other", L"R108||640x1080" }));
}

TEST_F(DigitalVideoFormatButtonTest, OneGroupAloneHasNoHeadingAndPlainEntries)
{
    auto* button = make({ raster(101, 3, 1920), raster(102, 3, 1280) });
    EXPECT_EQ(types(button->getBtn()), (std::vector<int> { MenuItemNormal, MenuItemNormal }));
}

TEST_F(DigitalVideoFormatButtonTest, HeadingsPlacedAfterTenEntriesStartFolded)
{
    std::vector<Info> formats;
    for (uint32_t i = 0; i < 8; ++i)
        formats.push_back(raster(200 + i, 1, 720));
    formats.push_back(raster(300, 2, 720));
    formats.push_back(raster(400, 3, 1920));
    auto* button = make(formats);
    // Group 1: heading and eight entries (9), group 2: heading at 9 entries, open; group 3 after 11: folded.
    const std::vector<int> kinds = types(button->getBtn());
    ASSERT_EQ(kinds.size(), 13u);
    EXPECT_EQ(kinds[0], MenuItemGroupOpen);
    EXPECT_EQ(kinds[9], MenuItemGroupOpen);
    EXPECT_EQ(kinds[11], MenuItemGroupFolded);
    EXPECT_EQ(kinds[12], MenuItemInGroup);
}

TEST_F(DigitalVideoFormatButtonTest, TheProjectRasterIsPreselectedWithItsSize)
{
    auto* button = make({ raster(21, 3, 1280), raster(UIDs::HD1080, 3, 1920) });
    EXPECT_EQ(button->getSelectedFormatID(), UIDs::HD1080);
    EXPECT_EQ(button->getBtn()->getDisplayedText(), L"R22, 1920x1080");
}

TEST_F(DigitalVideoFormatButtonTest, AnAbsentWantedRasterSelectsTheFirstShownByItsBareName)
{
    auto* button = make({ raster(31, 5, 2048), raster(32, 5, 4096) });
    EXPECT_EQ(button->getSelectedFormatID(), 31u);
    EXPECT_EQ(button->getBtn()->getDisplayedText(), L"R31");
}

TEST_F(DigitalVideoFormatButtonTest, OneEntryDisablesTheButtonAndAHeadingCountsAsAnEntry)
{
    EXPECT_FALSE(make({ raster(41, 3, 1920) })->isActive());
    auto* twoGroups = make({ raster(41, 3, 1920), raster(42, 4, 3840) });
    EXPECT_TRUE(twoGroups->isActive());
    // With nothing to offer the rebuild stops before it decides, so the state stays as it was.
    auto* empty = make({});
    EXPECT_TRUE(empty->isActive());
    EXPECT_EQ(empty->getSelectedFormatID(), 0u);
}

TEST_F(DigitalVideoFormatButtonTest, PickingARasterTellsTheOwnerAndShowsItsSize)
{
    auto* button = make({ raster(51, 1, 720), raster(52, 3, 1920, 1, { "line one", "line two" }) });
    pick(ui, button->getBtn(), L"R52||1920x1080");
    EXPECT_EQ(button->getSelectedFormatID(), 52u);
    EXPECT_EQ(ui.owner().count(DigitalVideoFormatButton::FormatChangedMsg), 1u);
    EXPECT_EQ(button->getBtn()->getDisplayedText(), L"R52, 1920x1080");
    EXPECT_EQ(button->getBtn()->getContextTitle().getString(), L"R52||1920x1080");
    EXPECT_EQ(button->getBtn()->getItems()[3].getTooltip().getString(), L"line one\nline two");
}

TEST_F(DigitalVideoFormatButtonTest, WithoutDimensionsTheFaceShowsTheNameOnly)
{
    auto* button = make({ raster(61, 3, 1280), raster(62, 3, 1920) }, false);
    button->setFormatID(62);
    EXPECT_EQ(button->getBtn()->getDisplayedText(), L"R62");
    EXPECT_TRUE(ui.owner().getMessages().empty()) << "choosing from code is quiet";
}

TEST_F(DigitalVideoFormatButtonTest, AnUnofferedUidChangesNothingAndReinitKeepsTheChoice)
{
    auto* button = make({ raster(71, 3, 1280), raster(72, 3, 1920), raster(73, 3, 960) });
    button->setFormatID(73);
    button->setFormatID(999);
    EXPECT_EQ(button->getSelectedFormatID(), 73u);
    DigitalVideoFormatButton::Formats fewer;
    fewer.push_back(raster(73, 3, 960));
    fewer.push_back(raster(72, 3, 1920));
    button->reinit(fewer);
    EXPECT_EQ(button->getSelectedFormatID(), 73u);
}
