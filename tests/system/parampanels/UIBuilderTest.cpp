// UIBuilder: the rows it makes, where it puts them, how alternatives share places, and the two-way wiring of
// rows and parameters, driven through the real widgets.
#include "ParamPanelTestSupport.h"

#include "frame/StartupSettings.h"
#include "parampanels/detail/HostPanel.h"
#include "toolkit/gfx/FontDesc.h"
#include "toolkit/support/params/ActionParam.h"
#include "toolkit/support/params/BoolParam.h"
#include "toolkit/support/params/TextParam.h"
#include "toolkit/support/params/NumericParams.h"
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
#include "toolkit/widgets/TitleMenuButton.h"
#include "toolkit/widgets/TextLabel.h"
#include "toolkit/widgets/TitleTextBox.h"

#include <gtest/gtest.h>

using namespace paramtest;

namespace {

constexpr uint16_t kPanelWidth = 400;
constexpr uint16_t kPanelHeight = 300;

const int H = UifStd::getButtonHeight();
const int G = UifStd::getWidgetGap();
const int kRowGap = UifStd::getRowGap();

StandardPanel* makePanel(UiHarness& ui, uint16_t height = kPanelHeight)
{
    return ui.make<StandardPanel>(StandardPanel::InitArgs(L"Params", kPanelWidth, height), Glob::BottomLeft(10, 10));
}

int availableWidth(const StandardPanel* panel)
{
    return panel->getUserArea().width();
}

// Distance of a row's top edge below the top of the user area.
int depth(const StandardPanel* panel, const Glob* row)
{
    return panel->getUserArea().top() - row->getBox().top();
}

template <typename T> T* rowAs(const Cv::Ptr<UIBuilder::Params>& params, const char* name)
{
    return dynamic_cast<T*>(row(params, name));
}

} // namespace

TEST(UIBuilderLayout, RowsStackUnderTheUserAreaTopSeparatedByTheRowGap)
{
    UiHarness ui;
    StandardPanel* panel = makePanel(ui);
    const auto params = UIBuilder::buildFromJSON(LightweightString<wchar_t>(LR"({"rows": [
        {"type": "bool", "name": "a", "legend": "First"},
        {"type": "bool", "name": "b", "legend": "Second", "default": true},
        {"type": "bool", "name": "c", "legend": "Third"}]})"),
                                                 panel);
    const int W = availableWidth(panel);
    int expectedDepth = 0;
    for (const char* name : { "a", "b", "c" }) {
        auto* box = rowAs<Checkbox>(params, name);
        ASSERT_TRUE(box) << name;
        EXPECT_EQ(box->getWidth(), W) << name;
        EXPECT_EQ(box->getHeight(), H) << name;
        EXPECT_EQ(box->getX(), panel->getUserArea().left()) << name;
        EXPECT_EQ(depth(panel, box), expectedDepth) << name;
        expectedDepth += H + kRowGap;
    }
    EXPECT_TRUE(rowAs<Checkbox>(params, "b")->getValue());
    EXPECT_FALSE(rowAs<Checkbox>(params, "a")->getValue());
}

TEST(UIBuilderLayout, NumericRowsSplitTheWidthBetweenSliderAndNumberBox)
{
    UiHarness ui;
    StandardPanel* panel = makePanel(ui);
    const auto params = UIBuilder::buildFromJSON(LightweightString<wchar_t>(LR"({"rows": [
        {"type": "int", "name": "count", "legend": "Count", "default": 4, "min": 0, "max": 10},
        {"type": "float", "name": "gain", "legend": "A rather long legend"}]})"),
                                                 panel);
    const int W = availableWidth(panel);
    const int L = DropDownMenuButton::calcWidth(std::vector<UIString>{ UIString(L"Count"),
                                                                       UIString(L"A rather long legend") },
                                                UifStd::getDefaultFont())
        - 3 * G;

    auto* host = rowAs<HostPanel>(params, "count");
    ASSERT_TRUE(host);
    const int S = host->getTitledSlider()->getWidth();
    EXPECT_EQ(host->getWidth(), W);
    EXPECT_EQ(S, W - 2 * H - G);
    EXPECT_EQ(host->getSlider()->getWidth(), S - L);
    EXPECT_EQ(host->getNumberBox()->getWidth(), 2 * H);
    EXPECT_EQ(host->getNumberBox()->getHeight(), getDefaultFontSize());
    EXPECT_EQ(host->getNumberBox()->getBox().right(), W);

    // A range given by two different numbers bounds both parts; the default marks the slider.
    EXPECT_DOUBLE_EQ(host->getSlider()->getMinimum(), 0.0);
    EXPECT_DOUBLE_EQ(host->getSlider()->getMaximum(), 10.0);
    EXPECT_EQ(host->getNumberBox()->getMaximum(), std::optional<double>(10.0));
    EXPECT_EQ(host->getSlider()->getPointOfInterest(), std::optional<double>(4.0));
    EXPECT_DOUBLE_EQ(host->getSlider()->getValue(), 4.0);

    // Without "min" and "max" nothing is bounded, and the point of interest is the -1 default.
    auto* gain = rowAs<HostPanel>(params, "gain");
    ASSERT_TRUE(gain);
    EXPECT_FALSE(gain->getNumberBox()->getMinimum().has_value());
    EXPECT_FALSE(gain->getNumberBox()->getMaximum().has_value());
    EXPECT_EQ(gain->getSlider()->getPointOfInterest(), std::optional<double>(-1.0));
    EXPECT_EQ(gain->getSlider()->getColour(), panel->getPalette().subheadingText());
}

TEST(UIBuilderLayout, TextChoiceLabelAndUnknownRows)
{
    UiHarness ui;
    StandardPanel* panel = makePanel(ui);
    const auto params = UIBuilder::buildFromJSON(LightweightString<wchar_t>(LR"({"rows": [
        {"type": "text", "name": "title", "legend": "Title", "value": "untitled", "hint": "Name it", "tooltip": 12},
        {"type": "int", "name": "quality", "legend": "Quality", "values": {"Low": 1, "High": 2}, "choice": "2"},
        {"type": "label", "name": "note", "legend": "<b>Note:</b> a label that is long enough to need more than one line at this width, surely"},
        {"type": "Bool", "name": "odd", "legend": "Shown as text"}]})"),
                                                 panel);
    const int W = availableWidth(panel);

    auto* title = rowAs<TitleTextBox>(params, "title");
    ASSERT_TRUE(title);
    EXPECT_EQ(title->getWidth(), W);
    EXPECT_EQ(title->getString(), LightweightString<wchar_t>(L"untitled"));
    EXPECT_EQ(title->getContextTitle().getResId(), ResId(12));
    EXPECT_TRUE(title->isEditable());

    auto* quality = rowAs<TitleMenuButton>(params, "quality");
    ASSERT_TRUE(quality);
    EXPECT_EQ(quality->getHeight(), H);
    EXPECT_EQ(quality->getSelectedItem(), 1); // the value 2 is the second choice

    auto* note = rowAs<HTMLRenderer>(params, "note");
    ASSERT_TRUE(note);
    const int lines = HTMLRenderer::calcNumDisplayLines(note->getDocument(), W);
    EXPECT_GT(lines, 1);
    EXPECT_EQ(note->getHeight(), MultiLineTextBox::calcHeightForLines(lines, getDefaultFontSize(), G));

    // "Bool" is not "bool": a line of text, neither a parameter nor in the widget map, but it takes a place.
    EXPECT_FALSE(params->findParam("odd"));
    EXPECT_FALSE(row(params, "odd"));
    EXPECT_EQ(params->getParams().size(), 3u);
    const Glob* area = panel;
    const Glob* last = area->child(area->numChildren() - 1);
    ASSERT_TRUE(dynamic_cast<const TextLabel*>(last));
    EXPECT_EQ(last->getBox().top(), note->getBox().bottom() - kRowGap);
}

TEST(UIBuilderLayout, BadDescriptionsBuildNothingAndNeverCrash)
{
    UiHarness ui;
    StandardPanel* panel = makePanel(ui);
    const size_t childrenBefore = panel->numChildren();
    for (const wchar_t* text : { L"", L"not json", L"{\"rows\": 5}", L"[]", L"{\"rows\": [1, 2, \"x\"]}", L"{}" }) {
        const auto params = UIBuilder::buildFromJSON(LightweightString<wchar_t>(text), panel);
        ASSERT_TRUE(params) << text;
        EXPECT_TRUE(params->empty()) << text;
        EXPECT_EQ(panel->numChildren(), childrenBefore) << text;
    }
    EXPECT_TRUE(UIBuilder::buildFromJSON(LightweightString<wchar_t>(L"{\"r\":[{\"type\":\"bool\"}]}"), nullptr)->empty());
    EXPECT_TRUE(UIBuilder::build({}, nullptr)->empty());
}

TEST(UIBuilderLayout, RowsGoIntoTheScrollAreaOfAScrollingPanel)
{
    UiHarness ui;
    auto* panel = ui.make<VerticalScrollingBase>(VerticalScrollingBase::InitArgs(L"Scrolls", 300, 120));
    std::wstring json = L"{\"rows\": [";
    for (int i = 0; i < 12; ++i)
        json += (i ? L"," : L"") + std::wstring(L"{\"type\": \"bool\", \"name\": \"b") + std::to_wstring(i) + L"\"}";
    json += L"]}";
    const auto params = UIBuilder::buildFromJSON(LightweightString<wchar_t>(json.c_str()), panel);
    Glob* first = row(params, "b0");
    ASSERT_TRUE(first);
    EXPECT_EQ(first->parent(), panel->getScrollArea());
    EXPECT_EQ(first->getWidth(), panel->getScrollArea()->getUserArea().width());
    EXPECT_GT(panel->getMaxScroll(), 0);
}

// ---- Alternatives sharing a place

namespace {

std::wstring alternatives(int count, bool sameValue = false)
{
    std::wstring json = LR"({"rows": [{"type": "int", "name": "mode", "values": {"One": 1, "Two": 2, "Three": 3}})";
    for (int i = 1; i <= count; ++i) {
        const int value = sameValue ? 1 : i;
        json += LR"(, {"type": "bool", "name": "alt)" + std::to_wstring(i) + LR"(", "visible if": "mode=)"
            + std::to_wstring(value) + L"\"}";
    }
    json += LR"(, {"type": "bool", "name": "after"}]})";
    return json;
}

} // namespace

TEST(UIBuilderSharing, TwoAlternativesTakeOnePlaceAndThePanelLosesOneRow)
{
    UiHarness ui;
    StandardPanel* panel = makePanel(ui);
    const auto params = UIBuilder::buildFromJSON(LightweightString<wchar_t>(alternatives(2).c_str()), panel);
    EXPECT_EQ(panel->getHeight(), kPanelHeight - (H + kRowGap));
    Glob* first = row(params, "alt1");
    Glob* second = row(params, "alt2");
    EXPECT_EQ(second->getBox(), first->getBox());
    // The row after them follows the shared place.
    EXPECT_EQ(depth(panel, row(params, "after")), depth(panel, first) + H + kRowGap);
}

TEST(UIBuilderSharing, ShrinkCountsEachAlternativesRunAndEqualConditionsKeepTheirPlaces)
{
    // Three alternatives save two places but the panel loses three rows (1 + 2); equal conditions save none.
    const struct {
        int rows;
        bool sameValue;
        int rowsLost;
    } cases[] = { { 3, false, 3 }, { 2, true, 0 } };
    for (const auto& c : cases) {
        UiHarness ui;
        StandardPanel* panel = makePanel(ui);
        const auto params = UIBuilder::buildFromJSON(LightweightString<wchar_t>(alternatives(c.rows, c.sameValue).c_str()),
                                                     panel);
        EXPECT_EQ(panel->getHeight(), kPanelHeight - c.rowsLost * (H + kRowGap)) << c.rows;
        const int step = c.sameValue ? H + kRowGap : 0;
        for (int i = 2; i <= c.rows; ++i) {
            const std::string name = "alt" + std::to_string(i);
            EXPECT_EQ(depth(panel, row(params, name.c_str())), depth(panel, row(params, "alt1")) + (i - 1) * step)
                << name;
        }
    }
}

// ---- Rows and parameters wired both ways

TEST(UIBuilderWiring, TypingAndDraggingChangeTheParameterAndBothPartsOfTheRow)
{
    UiHarness ui;
    StandardPanel* panel = makePanel(ui);
    const auto params = UIBuilder::buildFromJSON(LightweightString<wchar_t>(LR"({"rows": [
        {"type": "int", "name": "count", "legend": "Count", "default": 4, "min": 0, "max": 10}]})"),
                                                 panel);
    Heard heard;
    params->addListener(heard.listener());
    auto* host = rowAs<HostPanel>(params, "count");
    ASSERT_TRUE(host);
    NumericTextBox* box = host->getNumberBox();
    Slider* slider = host->getSlider();

    ASSERT_TRUE(ui.focus(box));
    ui.pressKey('a', Event::Ctrl);
    ui.typeText(L"7");
    ui.pressKey(Event::KeyReturn);
    EXPECT_EQ(value(params, "count"), L"7");
    EXPECT_DOUBLE_EQ(slider->getValue(), 7.0);
    EXPECT_EQ(heard.messages, std::vector<std::string>{ "count" });

    // Typing beyond the range stores the bound.
    ui.pressKey('a', Event::Ctrl);
    ui.typeText(L"25");
    ui.pressKey(Event::KeyReturn);
    EXPECT_EQ(value(params, "count"), L"10");

    const int y = slider->getHeight() / 2;
    ui.drag(slider, { slider->valueToX(10.0), y }, { slider->valueToX(2.0), y });
    EXPECT_EQ(value(params, "count"), L"2");
    EXPECT_DOUBLE_EQ(box->getValue(), 2.0);

    // Set from code: both parts follow.
    set(params, "count", L"9");
    EXPECT_DOUBLE_EQ(slider->getValue(), 9.0);
    EXPECT_EQ(box->getString(), LightweightString<wchar_t>(L"9"));
}

TEST(UIBuilderWiring, CheckboxChoiceAndTextRowsEditTheirParameters)
{
    UiHarness ui;
    StandardPanel* panel = makePanel(ui);
    const auto params = UIBuilder::buildFromJSON(LightweightString<wchar_t>(LR"({"rows": [
        {"type": "bool", "name": "on", "legend": "On"},
        {"type": "int", "name": "quality", "legend": "Quality", "values": {"Low": 10, "High": 20}},
        {"type": "text", "name": "title", "legend": "Title"}]})"),
                                                 panel);
    ui.click(row(params, "on"));
    EXPECT_EQ(value(params, "on"), L"true");

    auto* quality = rowAs<TitleMenuButton>(params, "quality");
    MenuGlob* menu = quality->getBtn()->openMenu();
    ASSERT_TRUE(menu);
    menu->chooseItem(1);
    ui.step();
    EXPECT_EQ(value(params, "quality"), L"20"); // the value, not the position
    set(params, "quality", L"10");
    EXPECT_EQ(quality->getSelectedItem(), 0);

    auto* title = rowAs<TitleTextBox>(params, "title");
    ASSERT_TRUE(ui.focus(title));
    ui.typeText(L"Intro");
    EXPECT_EQ(value(params, "title"), L""); // typing alone is not an entry
    ui.pressKey(Event::KeyReturn);
    EXPECT_EQ(value(params, "title"), L"Intro");
}

TEST(UIBuilderWiring, CommittingAnAdvanceEntryDoesThePanelsMainAction)
{
    UiHarness ui;
    StandardPanel* panel = makePanel(ui);
    const auto params = UIBuilder::buildFromJSON(LightweightString<wchar_t>(LR"({"rows": [
        {"type": "text", "name": "plain", "legend": "Plain"},
        {"type": "text", "name": "go", "legend": "Password", "advance": true, "obfuscated": true}]})"),
                                                 panel);
    ASSERT_TRUE(ui.focus(row(params, "plain")));
    ui.typeText(L"x");
    ui.pressKey(Event::KeyReturn);
    EXPECT_EQ(value(params, "plain"), L"x");
    EXPECT_FALSE(ui.owner().heard(StandardPanel::doItMsg));

    ASSERT_TRUE(ui.focus(row(params, "go")));
    ui.typeText(L"secret");
    ui.pressKey(Event::KeyReturn);
    EXPECT_EQ(value(params, "go"), L"secret");
    EXPECT_EQ(ui.owner().count(StandardPanel::doItMsg), 1u);
}

TEST(UIBuilderWiring, ActiveIfWaitsForTheFirstChangeOnADescribedPanel)
{
    UiHarness ui;
    StandardPanel* panel = makePanel(ui);
    const auto params = UIBuilder::buildFromJSON(LightweightString<wchar_t>(LR"({"rows": [
        {"type": "bool", "name": "on", "legend": "On"},
        {"type": "float", "name": "level", "legend": "Level", "active if": "on=true"},
        {"type": "bool", "name": "other", "legend": "Other"}]})"),
                                                 panel);
    Glob* level = row(params, "level");
    EXPECT_TRUE(level->isActive()); // unmet, but nothing has changed yet
    ui.click(row(params, "other"));
    EXPECT_FALSE(level->isActive());
    ui.click(row(params, "on"));
    EXPECT_TRUE(level->isActive());
}

TEST(UIBuilderWiring, MutualBoundsDoNotOutliveThePanel)
{
    // Leak detection (the sanitizer build) fails this test if the two parameters keep each other alive.
    UiHarness ui;
    StandardPanel* panel = makePanel(ui);
    auto params = UIBuilder::buildFromJSON(LightweightString<wchar_t>(LR"({"rows": [
        {"type": "int", "name": "low", "default": 2, "must not be higher than": "high"},
        {"type": "int", "name": "high", "default": 8, "must not be lower than": "low"}]})"),
                                           panel);
    set(params, "low", L"9");
    EXPECT_EQ(value(params, "low"), L"8");
    Cv::Ptr<GenericParam::iParam> low = params->findParam("low");
    params = nullptr;
    Glob::destroy(panel);
    ui.step();
    // With the panel gone the bound is released: the value passes unchecked.
    low->setValueFromString(L"100");
    EXPECT_EQ(low->getValueAsString(), LightweightString<wchar_t>(L"100"));
}

// ---- Panels built from ready-made parameters

namespace {

struct ActionPanel {
    Cv::Ptr<GenericParam::IntParam> count = Cv::make<GenericParam::IntParam>(L"Count", "count", ResId(), 1);
    int runs = 0;
    int heardInside = 0;
    Heard heard;
    Cv::Ptr<UIBuilder::Params> params;

    UIBuilder::ParamList list()
    {
        UIBuilder::ParamList all;
        all.push_back(count);
        all.push_back(Cv::make<GenericParam::ActionParam>(
            L"Double it", "double", ResId(), [this](const UIBuilder::ParamList& ps) {
                ++runs;
                auto n = ps[0].dynamicCast<GenericParam::IntParam>();
                n->setValue(n->getValue() * 2);
                n->setValue(n->getValue() + 1);
                heardInside += static_cast<int>(heard.messages.size());
                return true;
            }));
        return all;
    }
};

} // namespace

TEST(UIBuilderActions, AButtonRunsTheActionAndListenersHearItOnce)
{
    UiHarness ui;
    StandardPanel* panel = makePanel(ui);
    ActionPanel fixture;
    fixture.params = UIBuilder::build(fixture.list(), panel);
    fixture.params->addListener(fixture.heard.listener());
    auto* row = dynamic_cast<TitledGlob<Button>*>(paramtest::row(fixture.params, "double"));
    ASSERT_TRUE(row);
    ui.click(row->widget());
    EXPECT_EQ(fixture.runs, 1);
    EXPECT_EQ(fixture.count->getValue(), 3);
    EXPECT_EQ(fixture.heardInside, 0);
    EXPECT_EQ(fixture.heard.messages, std::vector<std::string>{ "double" });
}

TEST(UIBuilderActions, OnTheMenuActionsBecomeMenuItemsInsteadOfRows)
{
    StartupSettings::Values onMenu = StartupSettings::current();
    onMenu.actionParamsOnMenu = true;
    const StartupSettings::ScopedOverride scoped(onMenu);

    UiHarness ui;
    StandardPanel* panel = makePanel(ui);
    ActionPanel fixture;
    fixture.params = UIBuilder::build(fixture.list(), panel);
    EXPECT_FALSE(row(fixture.params, "double"));
    ASSERT_TRUE(panel->hasMenu());
    ASSERT_EQ(panel->getMenu()->getItems().size(), 1u);
    EXPECT_EQ(panel->getMenu()->getItems()[0].getDisplayText(), LightweightString<wchar_t>(L"Double it"));
    MenuGlob* menu = panel->openMenu();
    ASSERT_TRUE(menu);
    menu->chooseItem(0);
    ui.step();
    EXPECT_EQ(fixture.runs, 1);
    EXPECT_EQ(fixture.count->getValue(), 3);
}

TEST(UIBuilderActions, ListRowsFollowTheParameterClassAndJoinTheTabOrder)
{
    UiHarness ui;
    StandardPanel* panel = makePanel(ui);
    UIBuilder::ParamList list;
    list.push_back(Cv::make<GenericParam::BoolParam>(L"Bool param", "b", ResId(), true));
    list.push_back(Cv::make<GenericParam::DoubleParam>(L"Double param", "d", ResId(), 0.5, 0.0, 1.0, true));
    list.push_back(Cv::make<GenericParam::TextParam>(L"Text param", "t", ResId(), L"x"));
    const auto params = UIBuilder::build(list, panel);
    EXPECT_TRUE(rowAs<Checkbox>(params, "b"));
    auto* host = rowAs<HostPanel>(params, "d");
    ASSERT_TRUE(host);
    EXPECT_TRUE(rowAs<TitleTextBox>(params, "t"));

    const std::vector<Glob*> stops = TabOrderManager::getTabStops(panel);
    const std::vector<Glob*> expected{ row(params, "b"), host->getSlider(), host->getNumberBox(), row(params, "t") };
    EXPECT_EQ(stops, expected);
}

TEST(UIBuilderActions, ListBuiltRowWithTheClampingFlagOffShowsItsRange)
{
    UiHarness ui;
    StandardPanel* panel = makePanel(ui);
    UIBuilder::ParamList list;
    list.push_back(Cv::make<GenericParam::IntParam>(L"Int param", "i", ResId(), 5, 0, 20, false));
    const auto params = UIBuilder::build(list, panel);
    auto* host = rowAs<HostPanel>(params, "i");
    ASSERT_TRUE(host);
    EXPECT_EQ(host->getSlider()->getMinimum(), 0.0);
    EXPECT_EQ(host->getSlider()->getMaximum(), 20.0);
    EXPECT_EQ(host->getNumberBox()->getMaximum(), 20.0);
}
