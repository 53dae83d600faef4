// OutputFormatButton: the menu of allowed formats ordered by type, loose and strict matching, and the
// enabled state across frame-rate changes. Each test runs on a small table of its own.
#include "FormatsTestSupport.h"

#include "formats/OutputFormatButton.h"
#include "toolkit/media/CurrentProject.h"

using namespace formatstest;
using namespace OutputFormat;
using Cv::FrameRate;

namespace {

Details format(Type type, uint32_t width, FrameRate rate, ColourEncoding colour, const wchar_t* label,
    ScanMode scan = ScanMode::Progressive)
{
    return Details(22, type, { width, 1080 }, rate, { scan }, colour, label, LightweightString<wchar_t>(L"Display ") + label);
}

class KeepRec709 : public OutputFormatButton::iFormatFilter {
public:
    bool keep(const Details& d) override { return d.colourEncoding() == ColourEncoding::Rec709; }
};

} // namespace

class OutputFormatButtonTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        Cv::CurrentProject::resetToDefaults();
        Cv::CurrentProject::setFrameRate(FrameRate::Fps25);
    }
    void TearDown() override { Cv::CurrentProject::resetToDefaults(); }
    OutputFormatButton* make(OutputFormatButton::iFormatFilter* filter = nullptr, uint16_t width = 400)
    {
        return ui.make<OutputFormatButton>(OutputFormatButton::InitArgs(width, 0, Palette(), filter), Glob::BottomLeft(20, 600));
    }
    UiHarness ui;
    ScopedTable table { {
        format(Type::UHD2160p, 3840, FrameRate::Fps25, ColourEncoding::Rec2020, L"2160p 25"),
        format(Type::HD1080p, 1920, FrameRate::Fps25, ColourEncoding::Rec709, L"1080p 25"),
        format(Type::HD720p, 1280, FrameRate::Fps25, ColourEncoding::Rec709, L"720p 25"),
        format(Type::HD1080p, 1920, FrameRate::Fps25, ColourEncoding::Rec2020, L"1080p 25 wide"),
        format(Type::HD1080p, 1920, FrameRate::Fps50, ColourEncoding::Rec709, L"1080p 50"),
        format(Type::HD1080p, 1920, FrameRate::Fps25, ColourEncoding::DciP3, L"1080p 25 P3"),
        format(Type::DCI2K, 2048, FrameRate::Fps24, ColourEncoding::DciP3, L"2K 24"),
    } };
};

TEST_F(OutputFormatButtonTest, MenuIsOrderedByTypeWithAHeadingEach)
{
    auto* button = make();
    EXPECT_EQ(labels(button->getBtn()), (std::vector<std::wstring> { L"HD 720p", L"720p 25", L"HD 1080p", L"1080p 25",
                                            L"1080p 25 wide", L"1080p 25 P3", L"UHD 2160p", L"2160p 25" }));
    EXPECT_EQ(button->getNumFormats(), 5u);
}

TEST_F(OutputFormatButtonTest, AStrictMatchWinsAndOtherwiseTheLastLooseMatch)
{
    auto* button = make();
    EXPECT_TRUE(button->setSelectedFormat(format(Type::HD1080p, 1920, FrameRate::Fps25, ColourEncoding::Rec2020, L"x")));
    EXPECT_EQ(button->getSelectedFormat().label(), L"1080p 25 wide");
    EXPECT_TRUE(button->setSelectedFormat(format(Type::HD1080p, 1920, FrameRate::Fps25, ColourEncoding::Rec2100PQ, L"x")));
    EXPECT_EQ(button->getSelectedFormat().label(), L"1080p 25 P3");
}

TEST_F(OutputFormatButtonTest, AFormatMatchingNothingOrNotAllowedIsRefusedAndTheChoiceStays)
{
    auto* button = make();
    button->setSelectedFormat(format(Type::HD720p, 1280, FrameRate::Fps25, ColourEncoding::Rec709, L"x"));
    EXPECT_FALSE(button->setSelectedFormat(format(Type::HD1080i, 1920, FrameRate::Fps25, ColourEncoding::Rec709, L"x")));
    EXPECT_FALSE(button->setSelectedFormat(format(Type::HD1080p, 1920, FrameRate::Fps50, ColourEncoding::Rec709, L"x")));
    EXPECT_FALSE(button->setSelectedFormat(format(Type::HD1080p, 1920, FrameRate::Fps25, ColourEncoding::Rec709, L"x",
        ScanMode::InterlacedUpperFieldFirst)));
    EXPECT_EQ(button->getSelectedFormat().label(), L"720p 25");
}

TEST_F(OutputFormatButtonTest, PickingAFormatTellsTheOwnerAndShowsItsDisplayString)
{
    auto* button = make();
    pick(ui, button->getBtn(), L"2160p 25");
    EXPECT_EQ(button->getSelectedFormat().label(), L"2160p 25");
    EXPECT_EQ(ui.owner().count(OutputFormatButton::FormatChangedMsg), 1u);
    EXPECT_EQ(button->getBtn()->getDisplayedText(), L"Display 2160p 25");
}

TEST_F(OutputFormatButtonTest, OnlySelectableFormatsCountForEnabling)
{
    Cv::CurrentProject::setFrameRate(FrameRate::Fps24);
    auto* button = make();
    EXPECT_EQ(button->getBtn()->getItems().size(), 2u);
    EXPECT_FALSE(button->isActive());
}

TEST_F(OutputFormatButtonTest, AFilterKeepsOnlyWhatItAccepts)
{
    KeepRec709 filter;
    auto* button = make(&filter);
    EXPECT_EQ(labels(button->getBtn()), (std::vector<std::wstring> { L"HD 720p", L"720p 25", L"HD 1080p", L"1080p 25" }));
}

TEST_F(OutputFormatButtonTest, ARateChangeKeepsTheChoiceWhenStillAllowedAndTheEnabledStateAlways)
{
    auto* button = make();
    button->setSelectedFormat(format(Type::HD1080p, 1920, FrameRate::Fps25, ColourEncoding::Rec709, L"x"));
    button->setFrameRate(FrameRate::Fps25);
    EXPECT_EQ(button->getSelectedFormat().label(), L"1080p 25");

    button->setFrameRate(FrameRate::Fps50);
    EXPECT_EQ(button->getNumFormats(), 1u);
    EXPECT_EQ(button->getSelectedFormat().label(), L"1080p 50") << "the rate's first allowed format";
    EXPECT_TRUE(button->isActive()) << "one format, yet enabled as before";

    button->setEnabled(false);
    button->setFrameRate(FrameRate::Fps25);
    EXPECT_FALSE(button->isActive());
}

TEST_F(OutputFormatButtonTest, ARateWithNoFormatsSelectsNothing)
{
    auto* button = make();
    button->setFrameRate(FrameRate::Fps60);
    EXPECT_EQ(button->getNumFormats(), 0u);
    EXPECT_EQ(button->getSelectedItem(), -1);
    EXPECT_EQ(button->getSelectedFormat(), Details());
}

TEST_F(OutputFormatButtonTest, WithoutAWidthTheButtonFitsTheLongestDisplayString)
{
    auto* narrow = make(nullptr, 0);
    const int fitted = narrow->getWidth();
    ScopedTable longer({ format(Type::HD720p, 1280, FrameRate::Fps25, ColourEncoding::Rec709,
        L"720p 25 with a much longer display string than any other") });
    auto* wide = make(nullptr, 0);
    EXPECT_GT(wide->getWidth(), fitted);
}
