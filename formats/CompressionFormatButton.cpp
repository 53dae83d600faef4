#include "formats/CompressionFormatButton.h"

#include <algorithm>

namespace {

// Picture widths up to this are standard definition.
constexpr uint32_t standardDefinitionWidth = 720;

} // namespace

CompressionFormatButton::CompressionFormatButton(const InitArgs& args)
    : TitleMenuButton(args)
{
    init();
}

LightweightString<char> CompressionFormatButton::idstring() const { return "CompressionFormatButton"; }

void CompressionFormatButton::init()
{
    m_displayFlags = VideoCompressionInfo::showRaster;
    m_autoActive = true;
    getBtn()->setMessage(CompressionFormatChangedMsg);
}

void CompressionFormatButton::setCompressionFormat(const VideoCompressionInfo& info, const VectorExt<Cv::Image::Format>& list)
{
    if (&list != &m_formats)
        m_formats = list;
    std::vector<UIString> texts;
    for (Cv::Image::Format code : m_formats) {
        VideoCompressionInfo shown = info;
        shown.setCompression(CompressionFormat(code, 0.0));
        texts.emplace_back(shown.getDisplayString(m_displayFlags));
    }
    getBtn()->setStrings(texts, MenuItemIndex(0));
    // Looked up with the incoming bit rate, so a rate that shows in the text must match an entry's text.
    setCompressionFormat(info);
    if (m_autoActive)
        setEnabled(!m_formats.empty(), true);
}

void CompressionFormatButton::setCompressionFormat(const VideoCompressionInfo& info)
{
    setSelectedItem(MenuItemIndex(info.getDisplayString(m_displayFlags)));
}

CompressionFormat CompressionFormatButton::getCompressionFormat() const
{
    const int selected = getSelectedItem();
    if (selected < 0 || selected >= static_cast<int>(m_formats.size()))
        return CompressionFormat();
    return CompressionFormat(m_formats[static_cast<size_t>(selected)], 0.0);
}

void CompressionFormatButton::setOutputFormat(const LightweightString<char>& outputFormat, const ShotVideoMetadata& source)
{
    VectorExt<uint32_t> dvFormats;
    VectorExt<Cv::Image::Format> imageFormats;
    Compression::getValidFormats(outputFormat, source, dvFormats, imageFormats);
    if (!imageFormats.empty()) {
        const CompressionFormat remembered = getCompressionFormat();
        VideoCompressionInfo info;
        info.setInputImageFormat(source);
        setCompressionFormat(info, imageFormats);
        setSelected(remembered, source);
    } else {
        getBtn()->setStrings(std::vector<MenuItem>(), MenuItemIndex(0));
        m_formats.clear();
    }
    if (m_autoActive)
        setEnabled(!imageFormats.empty(), true);
}

void CompressionFormatButton::setSelected(const CompressionFormat& compression, const ShotVideoMetadata& source)
{
    if (compression.getFormat() == Cv::Image::noFormat)
        return;
    auto offered = [this](Cv::Image::Format code) { return std::find(m_formats.begin(), m_formats.end(), code) != m_formats.end(); };
    if (offered(compression.getFormat())) {
        setCompressionFormat(VideoCompressionInfo(source, compression));
    } else if (!m_formats.empty()) {
        CompressionFormat fallback(m_formats.front(), 0.0);
        if (source.getWidth() > standardDefinitionWidth) {
            if (offered(Compression::Codes::h264Intra422))
                fallback = CompressionFormat(Compression::Codes::h264Intra422, 250.0);
            else if (offered(Compression::Codes::mpeg2LongGop422))
                fallback = CompressionFormat(Compression::Codes::mpeg2LongGop422, 0.0);
        } else {
            if (offered(Compression::Codes::mpeg2D10))
                fallback = CompressionFormat(Compression::Codes::mpeg2D10, 50.0);
            else if (offered(Compression::Codes::mpeg2Sd420))
                fallback = CompressionFormat(Compression::Codes::mpeg2Sd420, 0.0);
        }
        setCompressionFormat(VideoCompressionInfo(source, fallback));
    }
    getBtn()->redraw();
}
