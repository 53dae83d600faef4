// Gallery page: parameter panels built from a JSON description that uses every key of the format, once as
// built and once after some values changed (a row disabled by "active if", the other alternative shown by
// "visible if", a bound correcting a value).
#include "parampanels/UIBuilderParams.h"
#include "toolkit/support/JSON.h"
#include "toolkit/ui/StandardPanel.h"
#include "toolkit/ui/UifStd.h"
#include "workbench/Gallery.h"
#include "workbench/GalleryWidgets.h"

#include <vector>

namespace {

constexpr int panelWidth = 440;
constexpr int gap = 16;
constexpr int noteLines = 4;

// Every key: type (each kind, and one unknown), name, legend, tooltip, default, min, max, values, choice,
// value, hint, obfuscated, advance, active if, visible if, must not be lower than, must not be higher than.
const char* const everyKey = R"json({"export": [
    {"type": "label", "name": "intro", "legend": "<b>Export</b> settings"},
    {"type": "bool", "name": "enabled", "legend": "Enabled", "default": true, "tooltip": 10764},
    {"type": "int", "name": "preset", "legend": "Preset", "values": {"Draft": 1, "Master": 2, "Archive": 3},
     "choice": "2"},
    {"type": "int", "name": "quality", "legend": "Quality", "default": 80, "min": 1, "max": 100,
     "active if": "enabled=true"},
    {"type": "int", "name": "depth", "legend": "Bit depth", "values": {"8 bits": 8, "10 bits": 10, "12 bits": 12},
     "visible if": "preset=2"},
    {"type": "int", "name": "rate", "legend": "Data rate", "default": 20, "min": 1, "max": 200,
     "visible if": "preset=1"},
    {"type": "float", "name": "in", "legend": "In point", "default": 1.5, "min": 0, "max": 60,
     "must not be higher than": "out"},
    {"type": "float", "name": "out", "legend": "Out point", "default": 10, "min": 0, "max": 60,
     "must not be lower than": "in"},
    {"type": "float", "name": "gain", "legend": "Gain"},
    {"type": "text", "name": "title", "legend": "Title", "value": "Untitled", "hint": "Clip title"},
    {"type": "text", "name": "password", "legend": "Password", "hint": "Commits the panel",
     "obfuscated": true, "advance": true},
    {"type": "separator", "legend": "A plain line"}
]})json";

// Keeps the built parameters for as long as the page shows their rows.
class ParamPanelsPage : public StandardPanel {
public:
    explicit ParamPanelsPage(const InitArgs& args) : StandardPanel(args) {}
    LightweightString<char> idstring() const override { return "ParamPanelsPage"; }
    std::vector<Cv::Ptr<UIBuilder::Params>> built;
};

int describedHeight()
{
    const Cv::Ptr<JSON::Element> description = JSON::parse(std::string_view(everyKey));
    // One row each; the label may take two lines.
    return (UIBuilder::getNumParams(description) + 1) * (UifStd::getButtonHeight() + UifStd::getRowGap());
}

StandardPanel* addDescribedPanel(ParamPanelsPage* page, const wchar_t* title, int column)
{
    StandardPanel::InitArgs args(title, 0, 0, StandardPanel::CloseButton, UifStd::getColourScheme());
    const XY<int> size = StandardPanel::calcPanelSize(panelWidth, describedHeight(), args);
    args.width = static_cast<uint16_t>(size.x);
    args.height = static_cast<uint16_t>(size.y);
    auto* panel = page->addWidget<StandardPanel>(args, Glob::UserTopLeft(gap + column * (size.x + gap), gap));
    page->built.push_back(UIBuilder::buildFromJSON(JSON::parse(std::string_view(everyKey)), panel));
    return panel;
}

Glob* buildParamPanelsPage()
{
    const int rowHeight = UifStd::getButtonHeight();
    const XY<int> inner = StandardPanel::calcPanelSize(panelWidth, describedHeight(),
                                                       StandardPanel::InitArgs(L"x", 0, 0));
    StandardPanel::InitArgs pageArgs = galleryPageArgs(L"Parameter panels built from JSON", 2 * (inner.x + gap) + gap,
                                                       inner.y + 3 * gap + noteLines * rowHeight);
    auto* page = new ParamPanelsPage(pageArgs);

    addDescribedPanel(page, L"As built", 0);
    addDescribedPanel(page, L"After changes", 1);
    const Cv::Ptr<UIBuilder::Params>& changed = page->built.back();
    changed->findParam("enabled")->setValueFromString(L"false");
    changed->findParam("preset")->setValueFromString(L"1");
    changed->findParam("out")->setValueFromString(L"0.5"); // held at the in point by its lower bound
    changed->findParam("title")->setValueFromString(L"Interview, take 3");

    const int noteY = inner.y + 2 * gap;
    const int noteWidth = pageArgs.width - 2 * gap;
    addLabel(page, L"Left: as built. \"Quality\" is enabled although \"Enabled\" decides it: \"active if\" waits for the first change.",
             gap, noteY, noteWidth);
    addLabel(page, L"\"Bit depth\" and \"Data rate\" are alternatives (\"visible if\" on Preset) and share one place; the panel is one row shorter.",
             gap, noteY + rowHeight, noteWidth);
    addLabel(page, L"Right: Enabled off disables Quality; Preset Draft shows Data rate; Out point set to 0.5 is held at the in point (1.5).",
             gap, noteY + 2 * rowHeight, noteWidth);
    addLabel(page, L"Gain has no min and max, so it is unbounded; \"A plain line\" is an entry of unknown type. Every legend sets the legend column.",
             gap, noteY + 3 * rowHeight, noteWidth);
    return page;
}

GalleryPageRegistrar paramPanelsPage("Parameter panels", buildParamPanelsPage);

} // namespace
