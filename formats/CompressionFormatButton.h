#pragma once
// CompressionFormatButton: a titled drop-down of the compressions an output file type can hold for a source,
// each shown as a VideoCompressionInfo's display string. When the remembered compression is no longer
// offered, a default that suits the picture size is chosen: pictures wider than 720 pixels take the H.264
// intra format at 250 Mb/s (else MPEG-2 long GOP, else the first offered); 720 pixels and narrower take
// MPEG-2 D-10 at 50 Mb/s (else MPEG-2 4:2:0, else the first offered).
//
// The owner hears CompressionFormatChangedMsg when the user picks one. With auto-activation on (the default)
// the button is enabled whenever it offers anything, even a single entry.

#include "toolkit/media/Compression.h"
#include "toolkit/media/VideoCompressionInfo.h"
#include "toolkit/widgets/TitleMenuButton.h"

#include <vector>

class CompressionFormatButton : public TitleMenuButton {
public:
    // The caller brings the title.
    struct InitArgs : TitleMenuButton::InitArgs {
        using TitleMenuButton::InitArgs::InitArgs;
    };

    explicit CompressionFormatButton(const InitArgs& args);
    CompressionFormatButton(const CompressionFormatButton&) = default;
    CompressionFormatButton(CompressionFormatButton&&) = default;
    CompressionFormatButton& operator=(const CompressionFormatButton&) = default;
    CompressionFormatButton& operator=(CompressionFormatButton&&) = default;

    // Flags for VideoCompressionInfo::getDisplayString; used from the next rebuild or selection.
    void setDisplayFlags(uint64_t flags) { m_displayFlags = flags; }
    void setAutoActive(bool autoActive) { m_autoActive = autoActive; }

    // Offers `list`, each shown as `info` with that compression, and selects the entry showing `info`.
    void setCompressionFormat(const VideoCompressionInfo& info, const VectorExt<Cv::Image::Format>& list);
    // Selects the entry showing `info`'s text; none matching leaves the selection alone.
    void setCompressionFormat(const VideoCompressionInfo& info);
    // A default CompressionFormat (no format) when nothing is selected; the bit rate is always 0.0.
    CompressionFormat getCompressionFormat() const;
    // Offers what the file type (a format ID) can hold for the source, keeping the current choice if offered.
    void setOutputFormat(const LightweightString<char>& outputFormat, const ShotVideoMetadata& source);

    static constexpr const char* CompressionFormatChangedMsg = "CFBChangedMsg";

    // Called by the toolkit
    LightweightString<char> idstring() const override;

private:
    void init();
    void setSelected(const CompressionFormat& compression, const ShotVideoMetadata& source);

    VectorExt<Cv::Image::Format> m_formats;
    uint64_t m_displayFlags = VideoCompressionInfo::showRaster;
    bool m_autoActive = true;
};
