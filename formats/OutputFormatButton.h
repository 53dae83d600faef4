#pragma once
// OutputFormatButton: a titled drop-down of the output formats allowed for the project's frame rate,
// grouped under their type's heading and ordered by type. The face shows the chosen format's display string;
// the owner hears FormatChangedMsg when the user picks one.
//
// Finding a format (setSelectedFormat) compares type, picture width and height, frame rate and scan; a strict
// match also needs the colour encoding to agree. The first strict match wins; failing that, the last loose one.

#include "toolkit/media/OutputFormat.h"
#include "toolkit/widgets/TitleMenuButton.h"

#include <vector>

class OutputFormatButton : public TitleMenuButton {
public:
    // Chooses which allowed formats are offered.
    class iFormatFilter {
    public:
        virtual ~iFormatFilter() = default;
        virtual bool keep(const OutputFormat::Details& format) = 0;
    };

    struct InitArgs : GlobCreationInfo {
        InitArgs() = default;
        // A width of 0 fits the widest format's display string.
        InitArgs(uint16_t w, uint16_t h, const Palette& pal = Palette(), iFormatFilter* formatFilter = nullptr)
            : GlobCreationInfo(w, h, pal)
            , filter(formatFilter)
        {
        }
        // Not owned; used only while the button is made.
        iFormatFilter* filter = nullptr;
    };

    explicit OutputFormatButton(const InitArgs& args);
    OutputFormatButton(const Palette& palette, uint16_t w, uint16_t h, Canvas* canvas = nullptr);
    OutputFormatButton(iFormatFilter* filter, const Palette& palette, uint16_t w, uint16_t h, Canvas* canvas = nullptr);
    OutputFormatButton(const OutputFormatButton&) = default;
    OutputFormatButton(OutputFormatButton&&) = default;
    OutputFormatButton& operator=(const OutputFormatButton&) = default;
    OutputFormatButton& operator=(OutputFormatButton&&) = default;

    // Offers the formats allowed for the project's frame rate that the filter keeps (all, for a null filter).
    void buildOutputFormatList(iFormatFilter* filter);
    // Rebuilds for another rate, keeping the choice when it is still allowed (else the rate's first allowed
    // format). The enabled state is left as it was, whatever the new list holds.
    void setFrameRate(Cv::FrameRate rate);
    // Answers false, changing nothing, when no table format matches or the match is not offered.
    bool setSelectedFormat(const OutputFormat::Details& format);
    // An empty Details when nothing is selected.
    const OutputFormat::Details& getSelectedFormat() const;
    uint32_t getNumFormats() const { return static_cast<uint32_t>(m_formatIndices.size()); }

    static constexpr const char* FormatChangedMsg = "OFChange";
    static constexpr int titleResource = 10095;

    // Called by the toolkit
    LightweightString<char> idstring() const override;
    bool react(const Event& event) override;

private:
    void buildOutputFormatList(Cv::FrameRate rate);
    void addItemsToMenu(const std::vector<uint32_t>& indices);
    void finishConstruction(iFormatFilter* filter);
    static bool compare(const OutputFormat::Details& a, const OutputFormat::Details& b, bool strict);

    std::vector<uint32_t> m_formatIndices;
    std::vector<MenuItem> m_items;
    // Made without a width: the drop-down is sized to the widest display string at each rebuild.
    bool m_fitWidth = false;
};
