#pragma once
// The "UIBuilder Test Panel": type or paste a parameter description, press "Build" (or Return in the entry)
// and the panel it describes appears below, live: its values can be edited, and the last change is shown.
// A description that is not JSON, or that holds no entries, builds nothing and says why in the panel.

#include "parampanels/UIBuilderParams.h"
#include "toolkit/ui/StandardPanel.h"

class TextLabel;
class TitleTextBox;
class VerticalScrollingBase;

class UIBuilderTestPanel : public StandardPanel {
public:
    UIBuilderTestPanel();
    ~UIBuilderTestPanel() override;

    LightweightString<char> idstring() const override;

    // Builds from `description` as the "Build" button does, replacing what was built before.
    void build(const LightweightString<wchar_t>& description);

    TitleTextBox* getDescriptionBox() const { return m_description; }
    VerticalScrollingBase* getResultPanel() const { return m_result; }
    const Cv::Ptr<UIBuilder::Params>& getParams() const { return m_params; }
    LightweightString<wchar_t> getStatus() const;

    // Called by the toolkit
    bool handleMessageEvent(LightweightString<char> name, Glob* sender) override;

    static constexpr const char* buildMsg = "uibuilder_test_build";

private:
    void setStatus(const LightweightString<wchar_t>& text);
    int paramChanged(const NotifyMsg& msg);

    TitleTextBox* m_description = nullptr;
    TextLabel* m_status = nullptr;
    TextLabel* m_lastChange = nullptr;
    VerticalScrollingBase* m_result = nullptr;
    Cv::Ptr<UIBuilder::Params> m_params;
};
