#include "parampanels/UIBuilderTestPanel.h"

#include "toolkit/support/JSON.h"
#include "toolkit/ui/UifStd.h"
#include "toolkit/ui/VerticalScrollingBase.h"
#include "toolkit/widgets/Button.h"
#include "toolkit/widgets/TextLabel.h"
#include "toolkit/widgets/TitleTextBox.h"

#include <string>

namespace {

constexpr int kUserWidth = 480;
constexpr int kResultHeight = 360;

const wchar_t* const kSample = LR"({"params": [)"
                               LR"({"type": "bool", "name": "enabled", "legend": "Enabled", "default": true}, )"
                               LR"({"type": "int", "name": "mode", "legend": "Mode", "values": {"Fast": 1, "Best": 2}}, )"
                               LR"({"type": "float", "name": "amount", "legend": "Amount", "default": 0.5, "min": 0, "max": 1, "active if": "enabled=true"}, )"
                               LR"({"type": "int", "name": "passes", "legend": "Passes", "default": 2, "min": 1, "max": 8, "visible if": "mode=2"}, )"
                               LR"({"type": "text", "name": "note", "legend": "Note", "hint": "Optional"}]})";

StandardPanel::InitArgs panelArgs()
{
    StandardPanel::InitArgs args(L"UIBuilder Test Panel", 0, 0, StandardPanel::CloseButton,
                                 UifStd::getColourScheme());
    const int rows = 3 * (UifStd::getButtonHeight() + UifStd::getRowGap());
    const XY<int> size = StandardPanel::calcPanelSize(kUserWidth, rows + kResultHeight, args);
    args.width = static_cast<uint16_t>(size.x);
    args.height = static_cast<uint16_t>(size.y);
    return args;
}

} // namespace

UIBuilderTestPanel::UIBuilderTestPanel()
    : StandardPanel(panelArgs())
{
    const auto H = static_cast<uint16_t>(UifStd::getButtonHeight());
    const int gap = UifStd::getRowGap();
    const auto width = static_cast<uint16_t>(getUserArea().width());
    const Palette& palette = getPalette();

    TitleTextBox::InitArgs entry(L"Description", LightweightString<wchar_t>(kSample),
                                 static_cast<uint16_t>(width - 90), width, H, palette);
    m_description = addWidget<TitleTextBox>(entry, UserTopLeft(0, 0));
    m_description->setGhostLabel(UIString(L"Type or paste a description"));
    m_description->requestCallback(buildMsg, this, TextBoxBase::eReturnPressed);

    Button::InitArgs buildButton(L"Build", 90, H, palette);
    buildButton.message = buildMsg;
    auto* button = addWidget<Button>(buildButton, Below(gap));
    m_status = addWidgetRelative<TextLabel>(
        TextLabel::InitArgs(UIString(), static_cast<uint16_t>(width - 90 - UifStd::getWidgetGap()), H, palette),
        button, RightOf(UifStd::getWidgetGap()));
    m_lastChange = addWidgetRelative<TextLabel>(TextLabel::InitArgs(UIString(), width, H, palette), button,
                                                Below(gap));
    build(m_description->getString());
}

UIBuilderTestPanel::~UIBuilderTestPanel() = default;

LightweightString<char> UIBuilderTestPanel::idstring() const
{
    return "UIBuilderTestPanel";
}

void UIBuilderTestPanel::build(const LightweightString<wchar_t>& description)
{
    m_params = nullptr;
    Glob::destroy(m_result);
    StandardPanel::InitArgs args(UIString(), static_cast<uint16_t>(getUserArea().width()), kResultHeight,
                                 StandardPanel::NoWidgets, getPalette());
    args.border = SunkenBorder;
    args.movable = false;
    m_result = addWidgetRelative<VerticalScrollingBase>(args, m_lastChange, Below(UifStd::getRowGap()));
    m_lastChange->setString(UIString());

    const Cv::Ptr<JSON::Element> root = JSON::parse(description);
    if (!root) {
        setStatus(L"Not valid JSON: nothing was built.");
        return;
    }
    m_params = UIBuilder::buildFromJSON(root, m_result);
    // Alternatives that share a place make the built panel shorter; keep it under the controls.
    layoutChildren();
    const size_t rows = m_result->getScrollArea()->numChildren();
    if (rows == 0) {
        setStatus(L"No entries: give an object whose first member is a list of entries.");
        return;
    }
    m_params->addListener(Cv::makeListener(this, &UIBuilderTestPanel::paramChanged));
    setStatus(LightweightString<wchar_t>(
        (L"Built " + std::to_wstring(rows) + L" rows, " + std::to_wstring(m_params->getParams().size())
         + L" parameters.")
            .c_str()));
}

int UIBuilderTestPanel::paramChanged(const NotifyMsg& msg)
{
    const Cv::Ptr<GenericParam::iParam> param = m_params ? m_params->findParam(msg.getMessage()) : nullptr;
    std::wstring text = L"Changed: " + fromUTF8(msg.getMessage().view()).str();
    if (param)
        text += L" = " + param->getValueAsString().str();
    m_lastChange->setString(UIString(LightweightString<wchar_t>(text.c_str())));
    return 0;
}

LightweightString<wchar_t> UIBuilderTestPanel::getStatus() const
{
    return m_status->getString().getString();
}

void UIBuilderTestPanel::setStatus(const LightweightString<wchar_t>& text)
{
    m_status->setString(UIString(text));
}

bool UIBuilderTestPanel::handleMessageEvent(LightweightString<char> name, Glob* sender)
{
    if (name == buildMsg) {
        build(m_description->getString());
        return true;
    }
    // A row of the built panel that performs its main action ("advance").
    if (name == doItMsg && sender == m_result) {
        setStatus(L"The built panel's main action was performed.");
        return true;
    }
    return StandardPanel::handleMessageEvent(name, sender);
}
