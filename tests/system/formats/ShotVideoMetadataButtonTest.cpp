// ShotVideoMetadataButton: headings built from raster, scan and shape, rates under them, and the
// experimental customise entry.
#include "FormatsTestSupport.h"

#include "formats/ShotVideoMetadataButton.h"
#include "frame/StartupSettings.h"
#include "toolkit/media/CurrentProject.h"
#include "toolkit/media/DigitalVideoFormats.h"
#include "toolkit/support/Resources.h"

using namespace formatstest;
using Cv::FrameRate;
namespace UIDs = Cv::DigitalVideoFormats::UIDs;

namespace {

ShotVideoMetadata source(uint32_t uid, FrameRate rate, bool progressive, Cv::Image::PictureRatio aspect = { 16, 9 })
{
    return ShotVideoMetadata(uid, rate, progressive, aspect);
}

StartupSettings::Values withExperimental(bool on)
{
    StartupSettings::Values values = StartupSettings::current();
    values.showExperimental = on;
    return values;
}

} // namespace

class ShotVideoMetadataButtonTest : public ::testing::Test {
protected:
    void SetUp() override { Cv::CurrentProject::resetToDefaults(); }
    ShotVideoMetadataButton* make(const std::set<ShotVideoMetadata>& formats)
    {
        auto* button = ui.make<ShotVideoMetadataButton>(ShotVideoMetadataButton::InitArgs(300, 0), Glob::BottomLeft(20, 600));
        button->setFormats(formats);
        return button;
    }
    UiHarness ui;
    StartupSettings::ScopedOverride experimentalOff { withExperimental(false) };
};

TEST_F(ShotVideoMetadataButtonTest, FormatsDifferingOnlyInRateShareAHeading)
{
    auto* button = make({ source(UIDs::HD1080, FrameRate::Fps25, false), source(UIDs::HD1080, FrameRate::Fps29_97, false),
        source(UIDs::HD1080, FrameRate::Fps25, true) });
    EXPECT_EQ(labels(button), (std::vector<std::wstring> { L"1080i", L"25 fps", L"29.97 fps", L"1080p", L"25 fps" }));
    EXPECT_EQ(types(button), (std::vector<int> { MenuItemGroupOpen, MenuItemInGroup, MenuItemInGroup, MenuItemGroupOpen, MenuItemInGroup }));
}

TEST_F(ShotVideoMetadataButtonTest, NtscHeadingsEndWithDVAt480LinesAndD1Otherwise)
{
    auto* button = make({ source(UIDs::NTSC_DV, FrameRate::Fps29_97, false, { 4, 3 }),
        source(UIDs::NTSC_D1, FrameRate::Fps29_97, false, { 4, 3 }), source(UIDs::PAL, FrameRate::Fps25, false, { 4, 3 }) });
    EXPECT_EQ(labels(button), (std::vector<std::wstring> { L"576i (PAL 4:3)", L"25 fps", L"486i (NTSC 4:3, D1)", L"29.97 fps",
                                  L"480i (NTSC 4:3, DV)", L"29.97 fps" }));
}

TEST_F(ShotVideoMetadataButtonTest, OnlyThreeReducedHDRastersNameTheirSize)
{
    auto* button = make({ source(UIDs::HDV1080, FrameRate::Fps25, false), source(UIDs::DVCProHD1080_60, FrameRate::Fps29_97, false),
        source(UIDs::DVCProHD720, FrameRate::Fps50, true), source(UIDs::DVCProHD1080_50, FrameRate::Fps25, false) });
    std::vector<std::wstring> headings;
    for (const MenuItem& item : button->getItems())
        if (item.isHeading())
            headings.push_back(item.getLabel().getString().str());
    EXPECT_EQ(headings, (std::vector<std::wstring> { L"1080i (1440x1080)", L"1080i (1280x1080)", L"720p", L"1080i (1440x1080)" }));
}

TEST_F(ShotVideoMetadataButtonTest, GroupsOutsideTheProjectsFamilyStartFolded)
{
    auto* button = make({ source(UIDs::PAL, FrameRate::Fps25, false, { 4, 3 }), source(UIDs::UHD1, FrameRate::Fps50, true) });
    EXPECT_EQ(types(button)[0], MenuItemGroupFolded);
    EXPECT_EQ(labels(button)[2], L"UHD-1");
    EXPECT_EQ(types(button)[2], MenuItemGroupFolded);
    Cv::CurrentProject::setOutputImageFormat(OutputFormat::Details(UIDs::PAL, OutputFormat::Type::SD625, { 720, 576 },
        FrameRate::Fps25, {}, OutputFormat::ColourEncoding::Rec601, L"", L""));
    button->setFormats({ source(UIDs::PAL, FrameRate::Fps25, false, { 4, 3 }) });
    EXPECT_EQ(types(button)[0], MenuItemGroupOpen);
    Cv::CurrentProject::resetToDefaults();
}

TEST_F(ShotVideoMetadataButtonTest, SelectingAFormatNotOfferedFailsAndChangesNothing)
{
    auto* button = make({ source(UIDs::HD1080, FrameRate::Fps25, false), source(UIDs::HD1080, FrameRate::Fps50, true) });
    EXPECT_TRUE(button->setSelectedFormat(source(UIDs::HD1080, FrameRate::Fps50, true)));
    EXPECT_FALSE(button->setSelectedFormat(source(UIDs::HD1080, FrameRate::Fps50, false)));
    EXPECT_EQ(button->getSelectedFormat(), source(UIDs::HD1080, FrameRate::Fps50, true));
}

TEST_F(ShotVideoMetadataButtonTest, PickingARateShowsItsHeadingAndRate)
{
    auto* button = make({ source(UIDs::HD1080, FrameRate::Fps25, false), source(UIDs::HD1080, FrameRate::Fps29_97, false) });
    pick(ui, button, L"29.97 fps");
    EXPECT_EQ(button->getSelectedFormat().getFrameRate(), FrameRate::Fps29_97);
    EXPECT_EQ(button->getDisplayedText(), L"1080i, 29.97 fps");
}

TEST_F(ShotVideoMetadataButtonTest, TheCustomiseEntryNeedsExperimentalFormatsSwitchedOn)
{
    auto* plain = make({ source(UIDs::HD1080, FrameRate::Fps25, false) });
    EXPECT_EQ(plain->getItems().size(), 2u);

    StartupSettings::ScopedOverride experimentalOn(withExperimental(true));
    auto* button = make({ source(UIDs::HD1080, FrameRate::Fps25, false) });
    ASSERT_EQ(button->getItems().size(), 3u);
    EXPECT_EQ(button->getItems().back().getDisplayText(), resourceStrW(ShotVideoMetadataButton::customiseResource, resFmtEllipsis));
}

TEST_F(ShotVideoMetadataButtonTest, CustomisingReplacesTheOpenPanelAndItsAnswerIsTakenQuietly)
{
    StartupSettings::ScopedOverride experimentalOn(withExperimental(true));
    auto* button = make({ source(UIDs::HD1080, FrameRate::Fps25, false) });
    pick(ui, button, labels(button).back());
    CustomFormatPanel* first = button->getCustomFormatPanel();
    ASSERT_NE(first, nullptr);
    const IdStamp firstStamp = first->getIdStamp();
    button->customiseFormat(NotifyMsg());
    ui.step();
    EXPECT_FALSE(is_good_glob_ptr(first, firstStamp));
    ASSERT_NE(button->getCustomFormatPanel(), nullptr);
    EXPECT_TRUE(button->handleMessageEvent(CustomFormatPanel::useCustomFormatMsg, button->getCustomFormatPanel()));
    Glob::destroy(button->getCustomFormatPanel());
}
