#pragma once
// ShotVideoMetadataButton: a drop-down of source video formats. Formats that share a raster, scan and
// picture shape sit under one heading ("576i (PAL 16:9)", "1080i", "720p (960x720)"), each listing its frame
// rates; the group of the project's own raster family starts open, the others folded. The face reads
// "<heading>, <rate>". With experimental formats switched on, a last entry opens a CustomFormatPanel.

#include "formats/CustomFormatPanel.h"
#include "toolkit/media/ShotVideoMetadata.h"
#include "toolkit/support/IdStamp.h"
#include "toolkit/widgets/DropDownMenuButton.h"

#include <set>
#include <vector>

class ShotVideoMetadataButton : public DropDownMenuButton {
public:
    struct InitArgs : GlobCreationInfo {
        InitArgs() = default;
        InitArgs(uint16_t w, uint16_t h, const Palette& pal = Palette())
            : GlobCreationInfo(w, h, pal)
        {
        }
    };

    // The key of one heading. Two keys are the same group when raster, family, scan and shape agree; the
    // label is made from them.
    struct UIFormatGroup {
        uint32_t uid = 0;
        uint32_t group = 0;
        bool progressive = true;
        Cv::Image::PictureRatio aspect;
        LightweightString<wchar_t> label;

        explicit UIFormatGroup(const ShotVideoMetadata& format);
        bool sameGroup(const UIFormatGroup& other) const
        {
            return uid == other.uid && group == other.group && progressive == other.progressive && aspect == other.aspect;
        }
        // Family first, so that headings run 625, 525, HD, UHD and on.
        bool operator<(const UIFormatGroup& other) const;
    };

    explicit ShotVideoMetadataButton(const InitArgs& args);
    ShotVideoMetadataButton(uint16_t w, uint16_t h, const Palette& palette = Palette(), Canvas* canvas = nullptr);
    ShotVideoMetadataButton(const ShotVideoMetadataButton&) = default;
    ShotVideoMetadataButton(ShotVideoMetadataButton&&) = default;
    ShotVideoMetadataButton& operator=(const ShotVideoMetadataButton&) = default;
    ShotVideoMetadataButton& operator=(ShotVideoMetadataButton&&) = default;

    void setFormats(const std::set<ShotVideoMetadata>& formats);
    // False, changing nothing, for a format not offered.
    bool setSelectedFormat(const ShotVideoMetadata& format);
    // A default ShotVideoMetadata when no format entry is selected.
    ShotVideoMetadata getSelectedFormat() const;
    // Shows the selected format on the face.
    void handleCurrentItemChange();
    // Replaces any custom format panel this button opened with a new one. Answers 0.
    int customiseFormat(const NotifyMsg& msg);
    CustomFormatPanel* getCustomFormatPanel() const;

    static constexpr int customiseResource = 11373;

    // Called by the toolkit
    LightweightString<char> idstring() const override;
    bool handleMessageEvent(LightweightString<char> name, Glob* sender) override;

private:
    static MenuItemType getDefaultMenuGroupState(const UIFormatGroup& key);

    IdStamp m_panelStamp;
    CustomFormatPanel* m_panel = nullptr;
    std::vector<ShotVideoMetadata> m_entries;
    bool m_offersCustomise = false;
};
