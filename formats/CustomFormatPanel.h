#pragma once
// CustomFormatPanel: a small free-standing panel in which the user describes a raster of their own (name,
// size, picture shape). Committing it (the title bar's do-it button) registers the raster with the
// digital video format catalogue and tells the panel's owner useCustomFormatMsg. The Add, Edit and Delete
// buttons only note their press in the log for now: managing saved custom rasters is not built yet.

#include "parampanels/UIBuilder.h"
#include "toolkit/support/Notifier.h"
#include "toolkit/ui/StandardPanel.h"

class CustomFormatPanel : public StandardPanel {
public:
    struct InitArgs : StandardPanel::InitArgs {
        // The catalogue's custom-raster parameters.
        InitArgs();
        explicit InitArgs(UIBuilder::ParamList parameters);
        UIBuilder::ParamList params;
    };

    explicit CustomFormatPanel(const InitArgs& args);
    CustomFormatPanel(const CustomFormatPanel&) = default;
    CustomFormatPanel(CustomFormatPanel&&) = default;
    CustomFormatPanel& operator=(const CustomFormatPanel&) = default;
    CustomFormatPanel& operator=(CustomFormatPanel&&) = default;
    ~CustomFormatPanel() override;

    // Makes and shows a panel for `owner`: beside the owner's parent when it has one, else at the pointer.
    static CustomFormatPanel* make(Glob* owner, const InitArgs& args = InitArgs());

    int handleAddPress(const NotifyMsg& msg);
    int handleEditPress(const NotifyMsg& msg);
    int handleDeletePress(const NotifyMsg& msg);
    const Cv::Ptr<UIBuilder::Params>& getParams() const { return m_params; }

    static constexpr const char* useCustomFormatMsg = "use_custom_format";
    static constexpr int titleResource = 14115;
    static constexpr int addResource = 10750;
    static constexpr int editResource = 10751;
    static constexpr int deleteResource = 10752;

    // Called by the toolkit
    LightweightString<char> idstring() const override;
    bool handleMessageEvent(LightweightString<char> name, Glob* sender) override;
    bool handleMouseEvent(const Event& event) override;
    void draw() override;

private:
    void init(const UIBuilder::ParamList& params);

    Cv::Ptr<UIBuilder::Params> m_params;
    Glob* m_owner = nullptr;
};
