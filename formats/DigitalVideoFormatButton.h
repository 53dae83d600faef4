#pragma once
// DigitalVideoFormatButton: a titled drop-down of digital video rasters, grouped under their family's
// heading. The face shows the chosen raster's name (with its size, unless told not to); the owner hears
// FormatChangedMsg when the user picks one.
//
// Only the families 1 to 6 are offered (proxies and unknown groups never), and never a raster whose
// displayed width is 0. One family alone gets no heading. Headings placed once ten entries stand start
// folded, so long catalogues open short. The button is enabled when its menu has more than one entry,
// headings counted.

#include "toolkit/media/DigitalVideoFormats.h"
#include "toolkit/widgets/TitleMenuButton.h"

#include <vector>

class DigitalVideoFormatButton : public TitleMenuButton {
public:
    using Formats = VectorExt<Cv::DigitalVideoFormats::DigitalVideoFormatInfo>;

    struct InitArgs : GlobCreationInfo {
        InitArgs() = default;
        InitArgs(Formats formatList, uint16_t titleWidth_, bool showDimensions_, uint16_t w, uint16_t h = 0,
            const Palette& pal = Palette())
            : GlobCreationInfo(w, h, pal)
            , formats(std::move(formatList))
            , titleWidth(titleWidth_)
            , showDimensions(showDimensions_)
        {
        }
        Formats formats;
        uint16_t titleWidth = 0;
        bool showDimensions = true;
    };

    explicit DigitalVideoFormatButton(const InitArgs& args);
    DigitalVideoFormatButton(const Formats& formats, uint16_t titleWidth, const GlobCreationInfo& info);
    DigitalVideoFormatButton(const Formats& formats, uint16_t w, uint16_t h, const Palette& palette = Palette(),
        Canvas* canvas = nullptr);
    // Offer every known raster.
    DigitalVideoFormatButton(uint16_t titleWidth, const GlobCreationInfo& info);
    DigitalVideoFormatButton(uint16_t w, uint16_t h, const Palette& palette = Palette(), Canvas* canvas = nullptr);
    DigitalVideoFormatButton(const DigitalVideoFormatButton&) = default;
    DigitalVideoFormatButton(DigitalVideoFormatButton&&) = default;
    DigitalVideoFormatButton& operator=(const DigitalVideoFormatButton&) = default;
    DigitalVideoFormatButton& operator=(DigitalVideoFormatButton&&) = default;

    // Rebuilds the menu, keeping the current choice when it is still offered.
    void reinit(const Formats& formats);
    // 0 when nothing is offered.
    uint32_t getSelectedFormatID() const;
    // Selects the raster quietly (no message); a UID not offered changes nothing.
    void setFormatID(uint32_t uid);

    static constexpr const char* FormatChangedMsg = "FmtChange";
    static constexpr int titleResource = 10058;

    // Called by the toolkit
    LightweightString<char> idstring() const override;
    bool react(const Event& event) override;

private:
    void init(const Formats& formats, uint32_t uid);
    void addFormats(const std::vector<Cv::DigitalVideoFormats::DigitalVideoFormatInfo>& formats,
        const LightweightString<wchar_t>& heading, bool fewItems);
    // Shows the selected entry's label as the drop-down's help text.
    void showSelectedAsContext();
    // The raster's name, then (with a separator) its displayed width x height.
    static LightweightString<wchar_t> getFormatName(
        const Cv::DigitalVideoFormats::DigitalVideoFormatInfo& info, const wchar_t* separator);

    std::vector<MenuItem> m_items;
    bool m_showDimensions = true;
    std::vector<uint32_t> m_formatIds;
};
