// Gallery page: a small live project on which the format buttons act together. The frame rate decides the
// allowed output formats; the output format and the file type decide the compressions; the source button
// offers a custom format (with "showExperimental" on); the disk button lists this machine's drives.
#include "formats/CompressionFormatButton.h"
#include "formats/DigitalVideoFormatButton.h"
#include "formats/DiskButton.h"
#include "formats/FileFormatButton.h"
#include "formats/FrameRateButton.h"
#include "formats/OutputFormatButton.h"
#include "formats/ShotVideoMetadataButton.h"
#include "toolkit/media/CurrentProject.h"
#include "toolkit/media/DigitalVideoFormats.h"
#include "toolkit/ui/MenuGlob.h"
#include "toolkit/ui/StandardPanel.h"
#include "toolkit/ui/UifStd.h"
#include "toolkit/widgets/TextLabel.h"
#include "workbench/Gallery.h"
#include "workbench/GalleryWidgets.h"

#include <set>

namespace {

constexpr int pageWidth = 860;
constexpr int pageHeight = 600;
constexpr int margin = 16;
constexpr int column = 400;
constexpr int titleWidth = 110;

namespace UIDs = Cv::DigitalVideoFormats::UIDs;

// The sources a capture card of the project might offer.
std::set<ShotVideoMetadata> captureSources()
{
    using Cv::FrameRate;
    return { { UIDs::PAL, FrameRate::Fps25, false, { 4, 3 } }, { UIDs::PAL16x9, FrameRate::Fps25, false, { 16, 9 } },
        { UIDs::NTSC_DV, FrameRate::Fps29_97, false, { 4, 3 } }, { UIDs::NTSC_D1, FrameRate::Fps29_97, false, { 4, 3 } },
        { UIDs::HD720, FrameRate::Fps50, true, { 16, 9 } }, { UIDs::HD720, FrameRate::Fps59_94, true, { 16, 9 } },
        { UIDs::HD1080, FrameRate::Fps25, false, { 16, 9 } }, { UIDs::HD1080, FrameRate::Fps29_97, false, { 16, 9 } },
        { UIDs::HD1080, FrameRate::Fps25, true, { 16, 9 } }, { UIDs::HD1080, FrameRate::Fps23_976, true, { 16, 9 } },
        { UIDs::HDV1080, FrameRate::Fps25, false, { 16, 9 } }, { UIDs::DVCProHD720, FrameRate::Fps50, true, { 16, 9 } },
        { UIDs::UHD1, FrameRate::Fps50, true, { 16, 9 } } };
}

// The project panel: it hears the buttons and keeps them and the project in step.
class FormatsPage : public StandardPanel {
public:
    explicit FormatsPage(const InitArgs& args)
        : StandardPanel(args)
    {
        const Palette& pal = getPalette();
        const int row = UifStd::getButtonHeight() + UifStd::getRowGap() + 10;
        int y = margin;
        addLabel(this, L"Project", margin, y, column);
        y += 20;
        m_rate = addWidget<FrameRateButton>(FrameRateButton::InitArgs(Cv::getFrameRates(Cv::FrameRateGroup::ProjectRates), titleWidth, 300),
            UserTopLeft(margin, y));
        m_rate->setFrameRate(Cv::CurrentProject::getFrameRate(0));
        y += row;
        m_output = addWidget<OutputFormatButton>(OutputFormatButton::InitArgs(340, 0, pal), UserTopLeft(margin, y));
        m_output->setName("formats-output");

        y += row + 10;
        addLabel(this, L"Export", margin, y, column);
        y += 20;
        m_fileType = addWidget<TitledFileFormatButton>(TitledFileFormatButton::TitledFileFormatButtonInitArgs(UIString(L"File type"),
                                                           FileFormatButton::InitArgs(Compression::VideoExport, "", 120, 0, pal), titleWidth),
            UserTopLeft(margin, y));
        y += row;
        m_compression = addWidget<CompressionFormatButton>(
            CompressionFormatButton::InitArgs(UIString(L"Compression"), {}, titleWidth, 400, 0, pal), UserTopLeft(margin, y));
        m_compression->setDisplayFlags(VideoCompressionInfo::showRaster | VideoCompressionInfo::showBitRate);
        y += row;
        m_disk = addWidget<TitledDiskButton>(TitledDiskButton::InitArgs(UIString(L"Media drive"),
                                                 DiskButton::InitArgs(true, true, 0, 0, pal), titleWidth),
            UserTopLeft(margin, y));
        m_disk->setName("formats-disk");

        int x = margin + column + 30;
        y = margin;
        addLabel(this, L"Capture source", x, y, column);
        m_source = addWidget<ShotVideoMetadataButton>(ShotVideoMetadataButton::InitArgs(300, 0, pal), UserTopLeft(x, y + 20));
        m_source->setFormats(captureSources());
        m_source->setSelectedFormat({ UIDs::HD1080, Cv::FrameRate::Fps25, false, { 16, 9 } });
        m_source->setName("formats-source");
        m_status = addWidget<TextLabel>(TextLabel::InitArgs(UIString(), column, UifStd::getButtonHeight(), pal), UserTopLeft(x, y + 60));
        addLabel(this, L"Raster of the output", x, y + 110, column);
        m_raster = addWidget<DigitalVideoFormatButton>(
            DigitalVideoFormatButton::InitArgs(Cv::DigitalVideoFormats::getAllKnownFormats(), titleWidth, true, 360, 0, pal),
            UserTopLeft(x, y + 130));
        m_raster->setName("formats-raster");

        updateCompressions();
        showProject();
    }

    LightweightString<char> idstring() const override { return "FormatsPage"; }

    bool handleMessageEvent(LightweightString<char> name, Glob* sender) override
    {
        if (sender == m_rate) {
            const Cv::FrameRate rate = m_rate->getSelectedFrameRate();
            Cv::CurrentProject::setFrameRate(rate);
            m_output->setFrameRate(rate);
            Cv::CurrentProject::setOutputImageFormat(m_output->getSelectedFormat());
            m_raster->setFormatID(m_output->getSelectedFormat().getUID());
        } else if (name == OutputFormatButton::FormatChangedMsg) {
            Cv::CurrentProject::setOutputImageFormat(m_output->getSelectedFormat());
            m_raster->setFormatID(m_output->getSelectedFormat().getUID());
        } else if (name != FileFormatButton::FileTypeChangedMsg) {
            return StandardPanel::handleMessageEvent(name, sender);
        }
        updateCompressions();
        showProject();
        return true;
    }

private:
    // The export is written at the project's output format.
    void updateCompressions()
    {
        const OutputFormat::Details out = Cv::CurrentProject::getOutputImageFormat(0);
        const auto raster = Cv::DigitalVideoFormats::findByUID(out.getUID());
        m_compression->setOutputFormat(m_fileType->getBtn()->getFileType(),
            ShotVideoMetadata(out.getUID(), out.frameRate(), !out.scanFormat().isInterlaced(), raster.getPictureAspect()));
    }
    void showProject()
    {
        const OutputFormat::Details out = Cv::CurrentProject::getOutputImageFormat(0);
        m_status->setString(UIString(L"Project: " + Cv::getDisplayString(Cv::CurrentProject::getFrameRate(0)) + L", " + out.getDisplayString()));
    }

    FrameRateButton* m_rate = nullptr;
    OutputFormatButton* m_output = nullptr;
    DigitalVideoFormatButton* m_raster = nullptr;
    TitledFileFormatButton* m_fileType = nullptr;
    CompressionFormatButton* m_compression = nullptr;
    TitledDiskButton* m_disk = nullptr;
    ShotVideoMetadataButton* m_source = nullptr;
    TextLabel* m_status = nullptr;
};

Glob* buildFormatsPage()
{
    return new FormatsPage(galleryPageArgs(L"Video formats on a live project", pageWidth, pageHeight));
}

void openRasterMenu(Glob* page)
{
    if (auto* raster = dynamic_cast<DigitalVideoFormatButton*>(findNamed(page, "formats-raster")))
        raster->getBtn()->openMenu();
}

GalleryPageRegistrar formatsPage("Formats", buildFormatsPage, openRasterMenu);

} // namespace
