#pragma once
// CompressionSettingsPanel: a plain panel of a compression's settings, one row per parameter. The values
// come from the caller's configb when the panel is made and go back into it, as UTF-8 text under each
// parameter's name, when the panel is destroyed. A null configb is neither read nor written.

#include "parampanels/UIBuilder.h"
#include "toolkit/support/Configb.h"
#include "toolkit/ui/StandardPanel.h"

class CompressionSettingsPanel : public StandardPanel {
public:
    struct InitArgs : StandardPanel::InitArgs {
        // No parameters, no configb.
        InitArgs();
        // Sized for one row per parameter, `width` wide inside the border.
        InitArgs(UIBuilder::ParamList parameters, configb& store, uint16_t width);
        UIBuilder::ParamList params;
        configb* config = nullptr;
    };

    explicit CompressionSettingsPanel(const InitArgs& args);
    CompressionSettingsPanel(const CompressionSettingsPanel&) = default;
    CompressionSettingsPanel(CompressionSettingsPanel&&) = default;
    CompressionSettingsPanel& operator=(const CompressionSettingsPanel&) = default;
    CompressionSettingsPanel& operator=(CompressionSettingsPanel&&) = default;
    ~CompressionSettingsPanel() override;

    const Cv::Ptr<UIBuilder::Params>& getParams() const { return m_params; }
    // n rows and the gaps between them; 0 for no rows. Kept to 16 bits, as widget sizes are.
    static uint16_t contentHeight(unsigned rows);

    // Called by the toolkit
    LightweightString<char> idstring() const override;

private:
    Cv::Ptr<UIBuilder::Params> m_params;
    configb* m_config = nullptr;
};
