// Gallery page: the library frame. FactoryGlobWrapper around widgets made by type name (one filling the
// panel, one smaller than it so that the shaded margins show, one of an unknown type), the library version and
// the start-up settings this process loaded with.
#include "frame/FactoryGlobWrapper.h"
#include "frame/StartupSettings.h"
#include "frame/Version.h"
#include "toolkit/ui/GlobManager.h"
#include "toolkit/ui/StandardPanel.h"
#include "toolkit/ui/UifStd.h"
#include "toolkit/widgets/Gauge.h"
#include "workbench/Gallery.h"
#include "workbench/GalleryWidgets.h"

#include <string>

namespace {

constexpr int cellWidth = 300;
constexpr int cellHeight = 150;
constexpr int gap = 16;

// A type whose factory ignores the size it is offered, as some widgets do: the wrapper shows margins around it.
const char* const fixedGaugeType = "GalleryFixedGauge";

void registerFixedGauge()
{
    if (GlobManager::isRegistered(fixedGaugeType))
        return;
    GlobManager::registerType(fixedGaugeType, [](const GlobCreationInfo& info) -> Glob* {
        Gauge::InitArgs args(180, static_cast<uint16_t>(UifStd::getButtonHeight()), info.palette, info.canvas);
        args.measure = 0.6;
        args.text = UIString(L"60%");
        return new Gauge(args);
    });
}

FactoryGlobWrapper* addWrapper(Glob* page, const char* typeName, int column, const wchar_t* note,
                               const char* text = nullptr)
{
    StandardPanel::InitArgs args(L"FactoryGlobWrapper", cellWidth, cellHeight, StandardPanel::CloseButton,
                                 UifStd::getColourScheme());
    args.typeName = typeName;
    if (text)
        args.config.set("text", text);
    const int x = gap + column * (cellWidth + gap);
    auto* wrapper = page->addWidget<FactoryGlobWrapper>(args, Glob::UserTopLeft(x, gap));
    addLabel(page, note, x, 2 * gap + cellHeight, cellWidth);
    addLabel(page, fromUTF8(wrapper->idstring().view()).str(), x, 2 * gap + cellHeight + UifStd::getButtonHeight(),
             cellWidth);
    return wrapper;
}

Glob* buildFramePage()
{
    registerFixedGauge();
    const int rowHeight = UifStd::getButtonHeight();
    StandardPanel::InitArgs pageArgs = galleryPageArgs(L"Library frame", 3 * (cellWidth + gap) + gap,
                                                       cellHeight + 4 * gap + 8 * rowHeight);
    auto* page = new StandardPanel(pageArgs);

    addWrapper(page, "MultiLineTextBox", 0, L"MultiLineTextBox: fills the user area",
               "A widget made by type name, from the panel's own creation info.");
    addWrapper(page, fixedGaugeType, 1, L"A fixed-size gauge: shaded margins");
    addWrapper(page, "NoSuchWidget", 2, L"An unknown type: an empty panel");

    const StartupSettings::Values settings = StartupSettings::current();
    const int textWidth = 3 * (cellWidth + gap) - gap;
    int y = 3 * gap + cellHeight + 2 * rowHeight;
    const auto line = [&](const std::string& text) {
        addLabel(page, fromUTF8(text).str(), gap, y, textWidth);
        y += rowHeight;
    };
    line(std::string("tesselPlusDllVersionStr(): ") + tesselPlusDllVersionStr());
    line("Start-up settings read at load:");
    line("  colour_wheel_reflect_luma = " + std::to_string(settings.colourWheelReflectLuma));
    line(std::string("  showExperimental = ") + (settings.showExperimental ? "on" : "off"));
    line("  celstrip_grab_size = " + std::to_string(settings.celstripGrabSize) + " px");
    line(std::string("  action_params_on_menu = ") + (settings.actionParamsOnMenu ? "on" : "off"));
    return page;
}

GalleryPageRegistrar framePage("Frame", buildFramePage);

} // namespace
