#include "parampanels/UIBuilderTest2Panel.h"

#include "toolkit/support/params/ActionParam.h"
#include "toolkit/support/params/BoolParam.h"
#include "toolkit/support/params/ChoiceParam.h"
#include "toolkit/support/params/NumericParams.h"
#include "toolkit/support/params/TextParam.h"
#include "toolkit/ui/UifStd.h"
#include "toolkit/widgets/TextLabel.h"

#include <string>

namespace {

constexpr int kUserWidth = 360;
constexpr int kRows = 7; // six parameter rows and the line of what was heard

StandardPanel::InitArgs panelArgs()
{
    StandardPanel::InitArgs args(L"UIBuilderTest2", 0, 0, StandardPanel::CloseButton, UifStd::getColourScheme());
    const XY<int> size = StandardPanel::calcPanelSize(
        kUserWidth, kRows * (UifStd::getButtonHeight() + UifStd::getRowGap()), args);
    args.width = static_cast<uint16_t>(size.x);
    args.height = static_cast<uint16_t>(size.y);
    return args;
}

// Sets every parameter that has a default back to it. Answers true: something may have changed.
bool resetToDefaults(const UIBuilder::ParamList& params)
{
    for (const Cv::Ptr<GenericParam::iParam>& param : params) {
        if (auto p = param.dynamicCast<GenericParam::BoolParam>())
            p->setValue(p->getDefaultValue());
        else if (auto i = param.dynamicCast<GenericParam::IntParam>())
            i->setValue(i->getDefaultValue());
        else if (auto d = param.dynamicCast<GenericParam::DoubleParam>())
            d->setValue(d->getDefaultValue());
        else if (auto c = param.dynamicCast<GenericParam::ChoiceParam>())
            c->setValue(c->getDefaultValue());
        else if (auto t = param.dynamicCast<GenericParam::TextParam>())
            t->setValue(t->getDefaultValue());
    }
    return true;
}

} // namespace

UIBuilderTest2Panel::UIBuilderTest2Panel()
    : StandardPanel(panelArgs())
{
    m_params = UIBuilder::build(makeParams(), this);
    m_params->addListener(Cv::makeListener(this, &UIBuilderTest2Panel::heard));
    const auto width = static_cast<uint16_t>(getUserArea().width());
    const auto H = static_cast<uint16_t>(UifStd::getButtonHeight());
    m_heard = addWidget<TextLabel>(TextLabel::InitArgs(UIString(L"Change a value or press Reset."), width, H,
                                                       getPalette()),
                                   BottomLeft(getUserArea().left(), getUserArea().bottom()));
}

UIBuilderTest2Panel::~UIBuilderTest2Panel() = default;

LightweightString<char> UIBuilderTest2Panel::idstring() const
{
    return "UIBuilderTest2Panel";
}

UIBuilder::ParamList UIBuilderTest2Panel::makeParams()
{
    using namespace GenericParam;
    UIBuilder::ParamList params;
    params.push_back(Cv::make<BoolParam>(L"Bool param", "boolParam", ResId(), true));
    params.push_back(Cv::make<DoubleParam>(L"Double param", "doubleParam", ResId(), 0.25, 0.0, 1.0, true));
    params.push_back(Cv::make<IntParam>(L"Int param", "intParam", ResId(), 5, 0, 10, true));
    params.push_back(Cv::make<ChoiceParam>(L"Choice param", "choiceParam", ResId(), 1,
                                           std::vector<ChoiceParam::Choice>{ { L"One", 1 }, { L"Two", 2 },
                                                                             { L"Three", 3 } }));
    params.push_back(Cv::make<TextParam>(L"Text param", "textParam", ResId(), L"Some text"));
    params.push_back(Cv::make<ActionParam>(L"Reset", "reset", ResId(), resetToDefaults));
    return params;
}

int UIBuilderTest2Panel::heard(const NotifyMsg& msg)
{
    ++m_numHeard;
    const std::wstring text = L"Heard " + std::to_wstring(m_numHeard) + L": " + fromUTF8(msg.getMessage().view()).str();
    m_heard->setString(UIString(LightweightString<wchar_t>(text.c_str())));
    return 0;
}
