#pragma once
// FrameRateButton: a titled drop-down of frame rates. The menu's text is the only record of the choice:
// rates are shown by their display strings and read back by parsing the selected text, so the button
// depends on those strings being distinct and exactly invertible.

#include "toolkit/media/FrameRate.h"
#include "toolkit/widgets/TitleMenuButton.h"

#include <vector>

class FrameRateButton : public TitleMenuButton {
public:
    struct InitArgs : GlobCreationInfo {
        InitArgs() = default;
        // One literal entry per rate, in the given order; the standard button height.
        InitArgs(const std::vector<Cv::FrameRate>& rates, uint16_t titleWidth, uint16_t width);

        std::vector<UIString> strings;
        uint16_t titleWidth = 0;
    };

    explicit FrameRateButton(const InitArgs& args);
    FrameRateButton(const std::vector<Cv::FrameRate>& rates, uint16_t w, uint16_t h, const Palette& palette = Palette(),
        Canvas* canvas = nullptr);
    // Offers the project rates (frame-rate group 1).
    FrameRateButton(uint16_t w, uint16_t h, const Palette& palette = Palette(), Canvas* canvas = nullptr);
    FrameRateButton(const FrameRateButton&) = default;
    FrameRateButton(FrameRateButton&&) = default;
    FrameRateButton& operator=(const FrameRateButton&) = default;
    FrameRateButton& operator=(FrameRateButton&&) = default;

    // Selects the entry showing the rate's text; a rate not offered leaves the selection alone.
    void setFrameRate(Cv::FrameRate rate);
    // Unknown when nothing (or an unrecognised text) is selected.
    Cv::FrameRate getSelectedFrameRate() const;

    static constexpr int titleResource = 12235;

    // Called by the toolkit
    LightweightString<char> idstring() const override;

private:
    void init(const std::vector<Cv::FrameRate>& rates);
};
