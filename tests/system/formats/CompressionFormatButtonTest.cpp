// CompressionFormatButton: which compressions it offers for a file type and source, and the default it
// falls back on when the remembered one is not offered.
#include "FormatsTestSupport.h"

#include "formats/CompressionFormatButton.h"
#include "toolkit/media/DigitalVideoFormats.h"

using namespace formatstest;
namespace Codes = Compression::Codes;
namespace UIDs = Cv::DigitalVideoFormats::UIDs;

namespace {

const ShotVideoMetadata hd(UIDs::HD1080, Cv::FrameRate::Fps25, false, { 16, 9 });
const ShotVideoMetadata pal(UIDs::PAL, Cv::FrameRate::Fps25, false, { 4, 3 });

} // namespace

class CompressionFormatButtonTest : public ::testing::Test {
protected:
    CompressionFormatButton* make()
    {
        return ui.make<CompressionFormatButton>(
            CompressionFormatButton::InitArgs(UIString(L"Compression"), {}, 100, 420, 0), Glob::BottomLeft(20, 600));
    }
    // Chooses a code from code, as a host restoring a saved choice does.
    static void choose(CompressionFormatButton* button, const ShotVideoMetadata& source, Cv::Image::Format code)
    {
        button->setCompressionFormat(VideoCompressionInfo(source, CompressionFormat(code, 0.0)));
    }
    UiHarness ui;
};

TEST_F(CompressionFormatButtonTest, AFileTypeWithNoCompressionEmptiesAndDisablesTheButton)
{
    auto* button = make();
    button->setOutputFormat("quicktime", hd);
    button->setOutputFormat("dpx", hd);
    EXPECT_TRUE(button->getBtn()->getItems().empty());
    EXPECT_FALSE(button->isActive());
    EXPECT_EQ(button->getCompressionFormat(), CompressionFormat());
}

TEST_F(CompressionFormatButtonTest, WithoutAutoActivationTheEnabledStateIsLeftAlone)
{
    auto* button = make();
    button->setAutoActive(false);
    button->setOutputFormat("dpx", hd);
    EXPECT_TRUE(button->isActive());
}

TEST_F(CompressionFormatButtonTest, ASingleCompressionLeavesTheButtonEnabled)
{
    auto* button = make();
    VectorExt<Cv::Image::Format> one { Codes::dv25 };
    button->setCompressionFormat(VideoCompressionInfo(pal, CompressionFormat()), one);
    EXPECT_TRUE(button->isActive());
}

TEST_F(CompressionFormatButtonTest, ARememberedCompressionStillOfferedIsKept)
{
    auto* button = make();
    button->setOutputFormat("quicktime", hd);
    choose(button, hd, Codes::hevc);
    button->setOutputFormat("mp4", hd);
    EXPECT_EQ(button->getCompressionFormat().getFormat(), Codes::hevc);
}

TEST_F(CompressionFormatButtonTest, WidePicturesFallBackToTheIntraFormat)
{
    auto* button = make();
    button->setOutputFormat("mp4", hd);
    choose(button, hd, Codes::av1);
    button->setOutputFormat("mxf_op1a", hd);
    EXPECT_EQ(button->getCompressionFormat().getFormat(), Codes::h264Intra422);
}

TEST_F(CompressionFormatButtonTest, WidePicturesWithoutTheIntraFormatTakeLongGop)
{
    auto* button = make();
    button->setOutputFormat("mp4", hd);
    choose(button, hd, Codes::av1);
    button->setOutputFormat("mpeg_ps", hd);
    EXPECT_EQ(button->getCompressionFormat().getFormat(), Codes::mpeg2LongGop422);
}

TEST_F(CompressionFormatButtonTest, A720PixelPictureCountsAsSmall)
{
    auto* button = make();
    button->setOutputFormat("mp4", pal);
    choose(button, pal, Codes::av1);
    button->setOutputFormat("mxf_op1a", pal);
    EXPECT_EQ(button->getCompressionFormat().getFormat(), Codes::mpeg2D10);
    button->setOutputFormat("mp4", pal);
    choose(button, pal, Codes::av1);
    button->setOutputFormat("mpeg_ps", pal);
    EXPECT_EQ(button->getCompressionFormat().getFormat(), Codes::mpeg2Sd420);
}

TEST_F(CompressionFormatButtonTest, WithNeitherDefaultOfferedTheFirstIsTaken)
{
    auto* button = make();
    button->setOutputFormat("mp4", pal);
    choose(button, pal, Codes::av1);
    button->setOutputFormat("avi", pal);
    EXPECT_EQ(button->getCompressionFormat().getFormat(), Codes::dv25);
}

TEST_F(CompressionFormatButtonTest, ABitRateShownInTheTextMustMatchAnEntryToBeSelected)
{
    auto* button = make();
    button->setDisplayFlags(VideoCompressionInfo::showBitRate);
    button->setOutputFormat("mp4", pal);
    choose(button, pal, Codes::av1);
    button->setOutputFormat("mxf_op1a", pal);
    // The D-10 default carries 50 Mb/s, which no entry's text shows, so the first entry stays selected.
    EXPECT_EQ(button->getCompressionFormat().getFormat(), Codes::h264Intra422);
}

TEST_F(CompressionFormatButtonTest, PickingACompressionTellsTheOwner)
{
    auto* button = make();
    button->setOutputFormat("mp4", hd);
    pick(ui, button->getBtn(), L"H.265 Long GOP (1920x1080)");
    EXPECT_EQ(button->getCompressionFormat().getFormat(), Codes::hevc);
    EXPECT_EQ(ui.owner().count(CompressionFormatButton::CompressionFormatChangedMsg), 1u);
}
