// The raster, output-format and compression catalogues checked as a whole: unique identities, distinct
// texts, and every entry reachable.
#include "toolkit/media/PictureRatio.h"
#include "toolkit/media/Compression.h"
#include "toolkit/media/CurrentProject.h"
#include "toolkit/media/CvExport.h"
#include "toolkit/media/DigitalVideoFormats.h"
#include "toolkit/media/FileWriterInfo.h"
#include "toolkit/media/OutputFormat.h"
#include "toolkit/media/VideoCompressionInfo.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>

namespace DVF = Cv::DigitalVideoFormats;

TEST(DigitalVideoFormats, UIDsAreUniqueAndFoundAgain)
{
    std::set<uint32_t> uids;
    for (const auto& info : DVF::getAllKnownFormats()) {
        EXPECT_NE(info.getUID(), 0u);
        EXPECT_TRUE(uids.insert(info.getUID()).second) << info.getUID();
        EXPECT_EQ(DVF::findByUID(info.getUID()), info);
        EXPECT_FALSE(info.getName().empty());
    }
    EXPECT_FALSE(DVF::findByUID(0).isValid());
    EXPECT_FALSE(DVF::findByUID(999).isValid());
}

TEST(DigitalVideoFormats, CustomRasterIsRegisteredOnceWithItsValuesBroughtIntoRange)
{
    DVF::ScopedCatalogue empty({});
    configb values;
    values.set("name", "Wall");
    values.set("width", "99999");
    values.set("height", "not a number");
    values.set("aspect", "2");
    const uint32_t uid = DVF::DigitalVideoFormatInfo::setParams(values);
    EXPECT_GE(uid, DVF::firstCustomUID);
    const auto info = DVF::findByUID(uid);
    EXPECT_EQ(info.getWidth(), 16384u);
    EXPECT_EQ(info.getHeight(), 1080u) << "unreadable text keeps the default";
    EXPECT_EQ(info.getGroup(), DVF::FormatGroups::Other);
    EXPECT_EQ(info.getPictureAspect(), (Cv::Image::PictureRatio { 16, 9 }));
    EXPECT_EQ(DVF::DigitalVideoFormatInfo::setParams(values), uid) << "the same raster twice";
    values.set("width", "1280");
    EXPECT_NE(DVF::DigitalVideoFormatInfo::setParams(values), uid);
}

TEST(DigitalVideoFormats, ScopedCatalogueRestoresTheBuiltInOne)
{
    const size_t count = DVF::getAllKnownFormats().size();
    {
        DVF::ScopedCatalogue one({ DVF::DigitalVideoFormatInfo(5000, DVF::FormatGroups::HD, 10, 10, 1, "x", {}, {}) });
        EXPECT_EQ(DVF::getAllKnownFormats().size(), 1u);
    }
    EXPECT_EQ(DVF::getAllKnownFormats().size(), count);
    EXPECT_TRUE(DVF::findByUID(DVF::UIDs::HD1080).isValid());
}

TEST(OutputFormat, EveryFormatIsAllowedForAProjectRateAndItsRasterExists)
{
    std::set<uint32_t> allowedSomewhere;
    for (Cv::FrameRate rate : Cv::getFrameRates(Cv::FrameRateGroup::All))
        for (uint32_t index : OutputFormat::getAllowedOutputFormatsForProjectFrameRate(rate))
            allowedSomewhere.insert(index);
    EXPECT_EQ(allowedSomewhere.size(), OutputFormat::getNumFormats());
    for (uint32_t i = 0; i < OutputFormat::getNumFormats(); ++i) {
        const auto& format = OutputFormat::getFormat(i);
        const auto raster = DVF::findByUID(format.getUID());
        ASSERT_TRUE(raster.isValid()) << i;
        EXPECT_EQ(format.imageSize().width, raster.getDisplayWidth());
        EXPECT_EQ(format.imageSize().height, raster.getDisplayHeight());
    }
}

TEST(OutputFormat, EveryTypeHasFormatsAndDisplayStringsAreDistinct)
{
    std::set<std::wstring> displays;
    std::map<uint32_t, std::set<std::wstring>> labelsByType;
    for (uint32_t i = 0; i < OutputFormat::getNumFormats(); ++i) {
        const auto& format = OutputFormat::getFormat(i);
        EXPECT_TRUE(displays.insert(format.getDisplayString().str()).second) << i;
        EXPECT_TRUE(labelsByType[static_cast<uint32_t>(format.type())].insert(format.label().str()).second) << i;
    }
    for (uint32_t type = 0; type < OutputFormat::numTypes; ++type) {
        EXPECT_FALSE(OutputFormat::getDisplayString(type).empty());
        EXPECT_FALSE(labelsByType[type].empty()) << "type " << type << " has no formats";
    }
    EXPECT_TRUE(OutputFormat::getDisplayString(16).empty());
}

TEST(OutputFormat, InterlacedLabelsGiveTheFieldRate)
{
    const auto allowed = OutputFormat::getAllowedOutputFormatsForProjectFrameRate(Cv::FrameRate::Fps25);
    const bool has1080i50 = std::any_of(allowed.begin(), allowed.end(),
        [](uint32_t i) { return OutputFormat::getFormat(i).label() == L"1080i 50"; });
    EXPECT_TRUE(has1080i50);
    for (uint32_t i : allowed)
        EXPECT_EQ(OutputFormat::getFormat(i).frameRate(), Cv::FrameRate::Fps25);
}

TEST(OutputFormat, TheProjectDefaultIsATableFormat)
{
    const auto defaults = Cv::CurrentProject::defaultOutputImageFormat();
    bool found = false;
    for (uint32_t i = 0; i < OutputFormat::getNumFormats(); ++i)
        found = found || OutputFormat::getFormat(i) == defaults;
    EXPECT_TRUE(found);
}

TEST(OutputFormat, ValidatingAfterARateChangeKeepsTheTypeOfTheOutputFormat)
{
    Cv::CurrentProject::resetToDefaults();
    Cv::CurrentProject::setFrameRate(Cv::FrameRate::Fps29_97);
    EXPECT_TRUE(OutputFormat::validateProjectSettings());
    const auto chosen = Cv::CurrentProject::getOutputImageFormat(0);
    EXPECT_EQ(chosen.type(), OutputFormat::Type::HD1080i);
    EXPECT_EQ(chosen.label(), L"1080i 59.94");
    EXPECT_FALSE(OutputFormat::validateProjectSettings()) << "already consistent";
    Cv::CurrentProject::setFrameRate(Cv::FrameRate::Fps12);
    EXPECT_FALSE(OutputFormat::validateProjectSettings()) << "no format exists at 12 fps";
    Cv::CurrentProject::resetToDefaults();
}

TEST(Compression, StandardDefinitionCodecsAreOfferedUpTo720PixelsOnly)
{
    VectorExt<uint32_t> dv;
    VectorExt<Cv::Image::Format> codes;
    Compression::getValidFormats("mxf_op1a", ShotVideoMetadata(DVF::UIDs::PAL, Cv::FrameRate::Fps25, false, { 4, 3 }), dv, codes);
    EXPECT_TRUE(codes.contains(Compression::Codes::mpeg2D10));
    EXPECT_FALSE(codes.contains(Compression::Codes::mpeg2LongGop422));
    EXPECT_EQ(dv.size(), 1u);
    Compression::getValidFormats("mxf_op1a", ShotVideoMetadata(DVF::UIDs::HD1080, Cv::FrameRate::Fps25, false, { 16, 9 }), dv, codes);
    EXPECT_FALSE(codes.contains(Compression::Codes::mpeg2D10));
    EXPECT_TRUE(codes.contains(Compression::Codes::mpeg2LongGop422));
    EXPECT_TRUE(codes.contains(Compression::Codes::h264Intra422));
}

TEST(Compression, UnknownFileTypesAndImageSequencesHoldNoVideoCompression)
{
    VectorExt<uint32_t> dv { 7 };
    VectorExt<Cv::Image::Format> codes { 1 };
    const ShotVideoMetadata hd(DVF::UIDs::HD1080, Cv::FrameRate::Fps25, true, { 16, 9 });
    for (const char* type : { "dpx", "nonsense", "" }) {
        Compression::getValidFormats(type, hd, dv, codes);
        EXPECT_TRUE(codes.empty()) << type;
        EXPECT_TRUE(dv.empty()) << type;
    }
}

TEST(Compression, NamedCodesAreTheirFourCharactersLittleEndian)
{
    EXPECT_EQ(Compression::Codes::h264Intra422, 0x3130374Du);
    EXPECT_EQ(Compression::Codes::mpeg2LongGop422, 0x3230314Du);
    EXPECT_EQ(Compression::Codes::mpeg2D10, 0x53454D4Du);
    EXPECT_EQ(Compression::Codes::mpeg2Sd420, 0x3130314Du);
}

TEST(VideoCompressionInfo, DisplayStringShowsRasterAndRateOnlyWhenAsked)
{
    VideoCompressionInfo info(ShotVideoMetadata(DVF::UIDs::HD1080, Cv::FrameRate::Fps25, true, { 16, 9 }),
        CompressionFormat(Compression::Codes::h264Intra422, 250.0));
    EXPECT_EQ(info.getDisplayString(0), L"H.264 Intra 4:2:2 10-bit");
    EXPECT_EQ(info.getDisplayString(VideoCompressionInfo::showRaster), L"H.264 Intra 4:2:2 10-bit (1920x1080)");
    EXPECT_EQ(info.getDisplayString(VideoCompressionInfo::showBitRate), L"H.264 Intra 4:2:2 10-bit, 250 Mb/s");
    info.setCompression(CompressionFormat(Cv::Image::fourCC("zz\x01z"), 0.0));
    EXPECT_EQ(info.getDisplayString(VideoCompressionInfo::showBitRate), L"\"zz?z\"");
    EXPECT_EQ(VideoCompressionInfo().getDisplayString(3), L"None");
}

TEST(FileTypes, EveryWritableTypeHasAnExtensionThatLeadsBack)
{
    std::set<std::wstring> extensions;
    for (auto usage : { Compression::VideoExport, Compression::Capture, Compression::StillExport, Compression::AudioExport }) {
        const auto types = Cv::FileWriterInfo::getSupportedFormatTypes(usage);
        EXPECT_FALSE(types.empty());
        for (const auto& id : types) {
            const auto extension = CvExport::getExtensionForFormatID(id);
            ASSERT_FALSE(extension.empty()) << id.str();
            EXPECT_EQ(CvExport::getFormatIDForExtension(extension), id);
            extensions.insert(extension.str());
        }
    }
    EXPECT_TRUE(extensions.count(L"AVI"));
}

TEST(FileTypes, ExtensionLookupIgnoresCaseAndALeadingDotButNothingElse)
{
    EXPECT_EQ(CvExport::getFormatIDForExtension(L"mov"), "quicktime");
    EXPECT_EQ(CvExport::getFormatIDForExtension(L".Mov"), "quicktime");
    for (const wchar_t* text : { L"", L".", L"..mov", L"mov ", L"mo", L"movx" })
        EXPECT_TRUE(CvExport::getFormatIDForExtension(text).empty()) << text;
    EXPECT_TRUE(CvExport::getExtensionForFormatID("QUICKTIME").empty());
}

TEST(PictureRatio, TelevisionShapesAreFractionsAndCinemaShapesDecimals)
{
    using Cv::Image::aspectRatioAsDisplayString;
    EXPECT_EQ(aspectRatioAsDisplayString({ 16, 9 }), L"16:9");
    EXPECT_EQ(aspectRatioAsDisplayString({ 32, 18 }), L"16:9");
    EXPECT_EQ(aspectRatioAsDisplayString({ 1080, 1920 }), L"9:16");
    EXPECT_EQ(aspectRatioAsDisplayString({ 1998, 1080 }), L"1.85:1");
    EXPECT_EQ(aspectRatioAsDisplayString({ 2048, 858 }), L"2.39:1");
    EXPECT_EQ(aspectRatioAsDisplayString({ 256, 135 }), L"1.90:1");
    EXPECT_TRUE(aspectRatioAsDisplayString({ 0, 9 }).empty());
}
