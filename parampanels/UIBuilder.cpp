#include "parampanels/UIBuilder.h"

#include "frame/StartupSettings.h"
#include "parampanels/detail/Conditions.h"
#include "parampanels/detail/DescriptionReader.h"
#include "parampanels/detail/HostPanel.h"
#include "parampanels/detail/RemappingValAdaptor.h"
#include "parampanels/UIBuilderParams.h"
#include "toolkit/gfx/FontDesc.h"
#include "toolkit/support/AttribValuePair.h"
#include "toolkit/support/JSON.h"
#include "toolkit/support/ValAdaptor.h"
#include "toolkit/support/params/ActionParam.h"
#include "toolkit/support/params/NumericParams.h"
#include "toolkit/ui/Drawable.h"
#include "toolkit/ui/MenuGlob.h"
#include "toolkit/ui/StandardPanel.h"
#include "toolkit/ui/TabOrderManager.h"
#include "toolkit/ui/UifStd.h"
#include "toolkit/ui/VerticalScrollingBase.h"
#include "toolkit/widgets/Button.h"
#include "toolkit/widgets/Checkbox.h"
#include "toolkit/widgets/DropDownMenuButton.h"
#include "toolkit/widgets/HTMLRenderer.h"
#include "toolkit/widgets/MultiLineTextBox.h"
#include "toolkit/widgets/NumericTextBox.h"
#include "toolkit/widgets/Slider.h"
#include "toolkit/widgets/TextLabel.h"
#include "toolkit/widgets/TitleMenuButton.h"
#include "toolkit/widgets/TitleTextBox.h"
#include "toolkit/widgets/TitledGlob.h"

#include <algorithm>
#include <cstdlib>
#include <optional>
#include <utility>

namespace {

using GenericParam::iParam;
using WText = LightweightString<wchar_t>;

// Rows line up with the left edge of the user area, whatever the row above them is.
constexpr WidgetAlignment kRowAlignment(WidgetAlignment::Start, true, 0.2f);

// Style of a row's check box: the legend first, in the legend colour.
constexpr int kCheckboxRowStyle = 3;

// An invisible child of the panel that lets go of the panel's bounds when the panel goes. Two parameters
// that bound each other hold each other through their constraints; without this they would never be freed.
class BoundsRelease : public Glob {
public:
    explicit BoundsRelease(std::vector<Cv::Ptr<BoundConstraint>> bounds)
        : Glob(0, 0)
        , m_bounds(std::move(bounds))
    {
        setVisible(false);
    }
    ~BoundsRelease() override
    {
        for (const Cv::Ptr<BoundConstraint>& bound : m_bounds)
            bound->release();
    }
    LightweightString<char> idstring() const override { return "BoundsRelease"; }

private:
    std::vector<Cv::Ptr<BoundConstraint>> m_bounds;
};

} // namespace

// ---- Public operations

Cv::Ptr<UIBuilder::Params> UIBuilder::buildFromJSON(const WText& text, StandardPanel* panel)
{
    return buildFromJSON(JSON::parse(text), panel);
}

Cv::Ptr<UIBuilder::Params> UIBuilder::buildFromJSON(const Cv::Ptr<JSON::Element>& description, StandardPanel* panel)
{
    UIBuilder builder(description, panel);
    return builder.takeResult();
}

Cv::Ptr<UIBuilder::Params> UIBuilder::build(const ParamList& params, StandardPanel* panel)
{
    UIBuilder builder(params, panel);
    return builder.takeResult();
}

uint16_t UIBuilder::getNumParams(const Cv::Ptr<JSON::Element>& description)
{
    // Stricter than building, which takes child 0 whatever else the root holds: a root with extra
    // children is not a description we can count.
    if (!description || description->getNumChildren() != 1)
        return 0;
    const Cv::Ptr<JSON::Element> entries = description->getChild(size_t(0));
    if (!entries)
        return 0;
    return static_cast<uint16_t>(std::min<size_t>(entries->getNumChildren(), UINT16_MAX));
}

Cv::Ptr<GenericParam::iParam> UIBuilder::findParam(const ParamList& params, const LightweightString<char>& name)
{
    for (const Cv::Ptr<GenericParam::iParam>& param : params) {
        if (param && param->getName() == name)
            return param;
    }
    return {};
}

ResId UIBuilder::getTooltip(const Cv::Ptr<JSON::Element>& entry)
{
    return DescriptionReader::getTooltip(entry);
}

// ---- Construction

UIBuilder::UIBuilder(const Cv::Ptr<JSON::Element>& description, StandardPanel* panel)
    : m_panel(panel)
    , m_result(Cv::make<Params>())
{
    init();
    if (!description || !panel)
        return;
    const Cv::Ptr<JSON::Element> entries = description->getChild(size_t(0));
    if (!entries)
        return;
    calcMaxLegendWidth(entries);
    buildRows(entries);
    std::vector<EntryConditions> conditions;
    conditions.reserve(entries->getNumChildren());
    for (size_t i = 0; i < entries->getNumChildren(); ++i) {
        conditions.push_back(DescriptionReader::readConditions(entries->getChild(i)));
        attachConditions(conditions.back(), m_params, m_widgets, m_postConditions, &m_bounds);
    }
    shareAlternativePlaces(conditions);
    releaseBoundsWithPanel();
    // "active if" is left for the first change on purpose: only "visible if" listens to the values.
    announceValues();
}

UIBuilder::UIBuilder(const ParamList& params, StandardPanel* panel)
    : m_panel(panel)
    , m_result(Cv::make<Params>())
{
    init();
    if (!panel)
        return;
    // Painted once, when every row exists.
    Drawable::disableRedraws();
    calcMaxLegendWidth(params);
    for (const Cv::Ptr<iParam>& param : params) {
        if (param.dynamicCast<GenericParam::ActionParam>())
            makeActionWidget(param);
        else if (param.dynamicCast<GenericParam::IntParam>())
            makeIntWidget(param);
        else if (param.dynamicCast<GenericParam::LabelParam>())
            makeLabelWidget(param);
        else if (param.dynamicCast<GenericParam::ChoiceParam>())
            makeChoiceWidget(param);
        else if (param.dynamicCast<GenericParam::TextParam>())
            makeTextWidget(param);
        else if (param.dynamicCast<GenericParam::BoolParam>())
            makeBoolWidget(param);
        else if (param.dynamicCast<GenericParam::DoubleParam>())
            makeFloatWidget(param);
    }
    if (m_scrollingView)
        m_scrollingView->updateScrollExtent();
    Drawable::clearPendingRedraws();
    Drawable::enableRedraws();
    announceValues();
    for (const Cv::Ptr<iPostCondition>& condition : m_postConditions)
        condition->evaluate(m_params);
    m_panel->redraw();
}

UIBuilder::UIBuilder(const UIBuilder&) = default;
UIBuilder::UIBuilder(UIBuilder&&) noexcept = default;
UIBuilder& UIBuilder::operator=(const UIBuilder&) = default;
UIBuilder& UIBuilder::operator=(UIBuilder&&) noexcept = default;
UIBuilder::~UIBuilder() = default;

void UIBuilder::init()
{
    m_rowPosition = Glob::UserTopLeft(0, 0);
    if (!m_panel)
        return;
    m_scrollingView = dynamic_cast<VerticalScrollingBase*>(m_panel);
    // Rows go where they are seen: inside a scrolling panel that is the scroll area, which leaves room for
    // the scroll bar.
    const GlobBox area = rowParent()->getUserArea();
    m_availableWidth = static_cast<uint16_t>(std::abs(area.right() - area.left()));
}

Cv::Ptr<UIBuilder::Params> UIBuilder::takeResult()
{
    *m_result = Params(m_params, m_widgets, m_postConditions);
    return m_result;
}

// ---- Legend column

namespace {

uint16_t legendColumnFor(const std::vector<UIString>& legends)
{
    const int width = DropDownMenuButton::calcWidth(legends, UifStd::getDefaultFont()) - 3 * UifStd::getWidgetGap();
    return static_cast<uint16_t>(width);
}

} // namespace

void UIBuilder::calcMaxLegendWidth(const Cv::Ptr<JSON::Element>& entries)
{
    std::vector<UIString> legends;
    for (size_t i = 0; i < entries->getNumChildren(); ++i)
        legends.emplace_back(DescriptionReader::getLegend(entries->getChild(i)));
    m_legendWidth = legendColumnFor(legends);
}

void UIBuilder::calcMaxLegendWidth(const ParamList& params)
{
    std::vector<UIString> legends;
    for (const Cv::Ptr<iParam>& param : params) {
        if (param && param->getValueTypeName() != "action")
            legends.emplace_back(param->getLegend());
    }
    m_legendWidth = legendColumnFor(legends);
}

// ---- Rows from a description

void UIBuilder::buildRows(const Cv::Ptr<JSON::Element>& entries)
{
    for (size_t i = 0; i < entries->getNumChildren(); ++i) {
        const Cv::Ptr<JSON::Element> entry = entries->getChild(i);
        switch (DescriptionReader::kindOf(entry)) {
        case DescriptionReader::Kind::Bool:
            makeBoolParam(entry);
            break;
        case DescriptionReader::Kind::Choice:
            makeChoiceParam(entry);
            break;
        case DescriptionReader::Kind::Int:
            makeIntParam(entry);
            break;
        case DescriptionReader::Kind::Text:
            makeTextParam(entry);
            break;
        case DescriptionReader::Kind::Float:
            makeFloatParam(entry);
            break;
        case DescriptionReader::Kind::Label:
            makeLabelParam(entry);
            break;
        case DescriptionReader::Kind::Unknown:
            makeUnknownRow(entry);
            break;
        }
    }
}

void UIBuilder::makeBoolParam(const Cv::Ptr<JSON::Element>& entry)
{
    makeBoolWidget(DescriptionReader::readBool(entry));
}

void UIBuilder::makeChoiceParam(const Cv::Ptr<JSON::Element>& entry)
{
    makeChoiceWidget(DescriptionReader::readChoice(entry));
}

void UIBuilder::makeIntParam(const Cv::Ptr<JSON::Element>& entry)
{
    makeIntWidget(DescriptionReader::readInt(entry));
}

void UIBuilder::makeFloatParam(const Cv::Ptr<JSON::Element>& entry)
{
    makeFloatWidget(DescriptionReader::readFloat(entry));
}

void UIBuilder::makeTextParam(const Cv::Ptr<JSON::Element>& entry)
{
    makeTextWidget(DescriptionReader::readText(entry));
}

void UIBuilder::makeLabelParam(const Cv::Ptr<JSON::Element>& entry)
{
    makeLabelWidget(DescriptionReader::readLabel(entry));
}

void UIBuilder::makeUnknownRow(const Cv::Ptr<JSON::Element>& entry)
{
    // Not a parameter: a line of text that keeps its place in the column, and nothing more.
    addRow<TextLabel>(TextLabel::InitArgs(UIString(DescriptionReader::getLegend(entry)), m_availableWidth,
                                          static_cast<uint16_t>(UifStd::getButtonHeight()), m_panel->getPalette()));
}

// ---- Rows, by kind

Glob* UIBuilder::rowParent() const
{
    return m_scrollingView ? m_scrollingView->getScrollArea() : m_panel;
}

template <typename T> T* UIBuilder::addRow(const typename T::InitArgs& args)
{
    T* row = rowParent()->template addWidget<T>(args, m_rowPosition);
    m_rows.push_back(row);
    m_rowPosition = Glob::Below(UifStd::getRowGap(), row, kRowAlignment);
    return row;
}

void UIBuilder::enterRow(Glob* row, const Cv::Ptr<GenericParam::iParam>& param)
{
    row->setContextString(UIString(param->getTooltip()), UIString());
    m_widgets[param->getName()] = row;
    m_params.push_back(param);
    TabOrderManager::addTabStopsFrom(row, TabOrderManager::append);
}

void UIBuilder::makeBoolWidget(const Cv::Ptr<GenericParam::iParam>& param)
{
    const auto flag = param.dynamicCast<GenericParam::BoolParam>();
    const Checkbox::InitArgs args(UIString(param->getLegend()), flag && flag->getValue(), kCheckboxRowStyle,
                                  m_availableWidth, static_cast<uint16_t>(UifStd::getButtonHeight()),
                                  m_panel->getPalette());
    auto* box = addRow<Checkbox>(args);
    box->setLabelWidth(m_legendWidth);
    box->setDataAdaptor(makeParamAdaptor<bool>(param));
    enterRow(box, param);
}

void UIBuilder::makeChoiceWidget(const Cv::Ptr<GenericParam::iParam>& param)
{
    const auto choice = param.dynamicCast<GenericParam::ChoiceParam>();
    std::vector<UIString> labels;
    if (choice) {
        for (const GenericParam::ChoiceParam::Choice& c : choice->getChoices())
            labels.emplace_back(c.label);
    }
    const TitleMenuButton::InitArgs args(UIString(param->getLegend()), std::move(labels), 0, 0,
                                         static_cast<uint16_t>(UifStd::getButtonHeight()), m_panel->getPalette());
    auto* button = addRow<TitleMenuButton>(args);
    if (choice)
        button->setDataAdaptor(Cv::Ptr<ValAdaptor<int>>(new RemappingValAdaptor(choice)));
    enterRow(button, param);
}

namespace {

// The range a numeric row shows: any with two different ends, whether or not it clamps the parameter's values,
// so a list-built parameter that only suggests a range still gets a slider across it.
template <typename T> std::optional<std::pair<double, double>> rangeOf(const GenericParam::RangedParam<T>& param)
{
    if (param.getMinValue() == param.getMaxValue())
        return std::nullopt;
    return std::pair<double, double>(param.getMinValue(), param.getMaxValue());
}

} // namespace

void UIBuilder::makeIntWidget(const Cv::Ptr<GenericParam::iParam>& param)
{
    if (const auto number = param.dynamicCast<GenericParam::IntParam>())
        makeNumericWidget(param, number->getDefaultValue(), rangeOf(*number), true);
}

void UIBuilder::makeFloatWidget(const Cv::Ptr<GenericParam::iParam>& param)
{
    if (const auto number = param.dynamicCast<GenericParam::DoubleParam>())
        makeNumericWidget(param, number->getDefaultValue(), rangeOf(*number), false);
}

void UIBuilder::makeNumericWidget(const Cv::Ptr<GenericParam::iParam>& param, double defaultValue,
                                  std::optional<std::pair<double, double>> range, bool integral)
{
    const Palette& palette = m_panel->getPalette();
    const HostPanel::InitArgs args(UIString(param->getLegend()), m_legendWidth, palette.subheadingText(),
                                   m_availableWidth, static_cast<uint16_t>(UifStd::getButtonHeight()), palette);
    auto* host = addRow<HostPanel>(args);
    Slider* slider = host->getSlider();
    NumericTextBox* box = host->getNumberBox();
    if (range) {
        slider->setValueRange(range->first, range->second);
        if (integral)
            box->setValueRange(static_cast<int>(range->first), static_cast<int>(range->second));
        else
            box->setValueRange(range->first, range->second);
    } else if (integral) {
        box->setDecimals(0);
    }
    slider->setPointOfInterest(defaultValue);
    box->setEditable(true);
    box->setPalette(makeChildPalette(palette));
    box->setAlignment(TextAlignment(2, 1));
    // One adaptor each: either widget may be unbound or destroyed without the other noticing.
    slider->setDataAdaptor(makeParamAdaptor<double>(param));
    box->setDataAdaptor(makeParamAdaptor<double>(param));
    enterRow(host, param);
}

void UIBuilder::makeTextWidget(const Cv::Ptr<GenericParam::iParam>& param)
{
    const auto text = param.dynamicCast<GenericParam::TextParam>();
    const TitleTextBox::InitArgs args(UIString(param->getLegend()), param->getValueAsString(),
                                      static_cast<uint16_t>(m_availableWidth - m_legendWidth), m_availableWidth,
                                      static_cast<uint16_t>(UifStd::getButtonHeight()), m_panel->getPalette());
    auto* box = addRow<TitleTextBox>(args);
    if (text && !text->getHint().empty())
        box->setGhostLabel(UIString(text->getHint()));
    if (text && text->isObfuscated())
        box->setObfuscatedDisplay(true);
    box->setEditable(true);
    // Finishing an "advance" entry does what the panel's do-it button does.
    if (text && text->isAdvance())
        box->requestCallback(StandardPanel::doItMsg, m_panel, TextBoxBase::eCommit);
    box->setDataAdaptor(makeParamAdaptor<WText>(param));
    enterRow(box, param);
}

void UIBuilder::makeLabelWidget(const Cv::Ptr<GenericParam::iParam>& param)
{
    const int gap = UifStd::getWidgetGap();
    HtmlDocument document = HTMLRenderer::parse(param->getLegend().view(), UifStd::getColourScheme());
    const int lines = HTMLRenderer::calcNumDisplayLines(document, m_availableWidth);
    const uint16_t height = MultiLineTextBox::calcHeightForLines(lines, getDefaultFontSize(), gap);
    HTMLRenderer::InitArgs args(WText(), m_availableWidth, height, m_panel->getPalette());
    args.gap = gap;
    auto* label = addRow<HTMLRenderer>(args);
    label->setDocument(std::move(document));
    enterRow(label, param);
}

void UIBuilder::makeActionWidget(const Cv::Ptr<GenericParam::iParam>& param)
{
    const auto action = param.dynamicCast<GenericParam::ActionParam>();
    if (!action)
        return;
    // The Params is made before the rows and filled afterwards, so the callback can hold it from the start.
    WidgetCallback run = [result = m_result, action] {
        // Held for the call: the action may close the panel, and with it this callback.
        const Cv::Ptr<Params> keep = result;
        const Cv::Ptr<GenericParam::ActionParam> keepAction = action;
        keep->handleActionParam(NotifyMsg(keepAction->getName(), keepAction));
    };
    const UIString legend(param->getLegend());
    if (StartupSettings::actionParamsOnMenu()) {
        if (!m_panel->hasStandardWidget(StandardPanel::MenuButton))
            m_panel->addStandardWidgets(StandardPanel::MenuButton);
        m_panel->getMenu()->addMenuItem(MenuItem(legend, std::move(run)));
        // No row: the menu is where the action lives.
        m_params.push_back(param);
        return;
    }
    const auto height = static_cast<uint16_t>(UifStd::getButtonHeight());
    const Button::InitArgs button(legend, Button::calcWidth(legend), height, m_panel->getPalette());
    // Untitled, with the legend column left empty, so that the button lines up with the other rows' values.
    TitledGlob<Button>::InitArgs args(UIString(), button, m_legendWidth);
    args.height = height;
    auto* row = addRow<TitledGlob<Button>>(args);
    row->widget()->setCallback(std::move(run));
    enterRow(row, param);
}

// ---- Alternatives and values

void UIBuilder::shareAlternativePlaces(const std::vector<EntryConditions>& conditions)
{
    const size_t count = std::min(conditions.size(), m_rows.size());
    std::vector<Cv::AttribValuePair> visibleIf;
    visibleIf.reserve(count);
    for (size_t i = 0; i < count; ++i)
        visibleIf.emplace_back(conditions[i].visibleIf.view(), '=');

    // The reductions are summed per row as they are found, so a run of three alternatives counts 1 + 2 and
    // the panel shrinks by more than the places saved. Callers rely on that height.
    const long initial = static_cast<long>(m_widgets.size());
    long remaining = initial;
    Glob* parent = rowParent();
    for (size_t i = 1; i < count; ++i) {
        if (!visibleIf[i].valid())
            continue;
        long j = static_cast<long>(i) - 1;
        for (; j >= 0; --j) {
            const Cv::AttribValuePair& earlier = visibleIf[static_cast<size_t>(j)];
            if (!earlier.valid() || earlier.name() != visibleIf[i].name() || earlier.value() == visibleIf[i].value())
                break;
        }
        if (j < 0 || j == static_cast<long>(i) - 1)
            continue;
        WidgetDetails details = parent->getWidget(m_rows[i]);
        details.position.sibling = m_rows[static_cast<size_t>(j)];
        parent->setWidgetDetails(details);
        remaining -= static_cast<long>(i) - j - 1;
    }

    const long saved = initial - remaining;
    if (saved > 0) {
        const long rowHeight = UifStd::getButtonHeight() + UifStd::getRowGap();
        m_panel->resize(m_panel->getWidth(), static_cast<double>(m_panel->getHeight() - saved * rowHeight));
    }
    if (m_scrollingView)
        m_scrollingView->updateScrollExtent();
}

void UIBuilder::releaseBoundsWithPanel()
{
    if (m_bounds.empty())
        return;
    m_panel->addChild(new BoundsRelease(std::move(m_bounds)), Glob::Absolute(0, 0));
    m_bounds.clear();
}

void UIBuilder::announceValues()
{
    for (const Cv::Ptr<iParam>& param : m_params) {
        if (param)
            param->announce();
    }
}
