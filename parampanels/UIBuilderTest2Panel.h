#pragma once
// The "UIBuilderTest2" panel: a parameter panel built from parameters made in code, one of each kind, with a
// "Reset" action that puts every value back to its default. The line at the bottom shows what the panel's
// listeners last heard: a reset, however many values it changes, is heard as one message.

#include "parampanels/UIBuilderParams.h"
#include "toolkit/ui/StandardPanel.h"

class TextLabel;

class UIBuilderTest2Panel : public StandardPanel {
public:
    UIBuilderTest2Panel();
    ~UIBuilderTest2Panel() override;

    LightweightString<char> idstring() const override;

    const Cv::Ptr<UIBuilder::Params>& getParams() const { return m_params; }
    int getNumHeard() const { return m_numHeard; }

private:
    static UIBuilder::ParamList makeParams();
    int heard(const NotifyMsg& msg);

    Cv::Ptr<UIBuilder::Params> m_params;
    TextLabel* m_heard = nullptr;
    int m_numHeard = 0;
};
