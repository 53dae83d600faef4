// Arbitrary text as a parameter description, built into a live panel on an off-screen screen and painted.
// Whatever the text, building must not crash; every entry of the description must make exactly one row; every
// parameter must be reachable by name unless an earlier one took the name; saving then restoring must leave
// every value as it was; and the panel must go without leaving anything behind.
#include "FuzzChecks.h"
#include "parampanels/UIBuilderParams.h"
#include "toolkit/support/Configb.h"
#include "toolkit/support/JSON.h"
#include "toolkit/support/MainThread.h"
#include "toolkit/ui/GlobManager.h"
#include "toolkit/ui/Screen.h"
#include "toolkit/ui/StandardPanel.h"
#include "toolkit/ui/UifStd.h"

#include <cstdint>
#include <map>
#include <string_view>
#include <vector>

namespace {

Screen& screen()
{
    static Screen* made = [] {
        setMainThread();
        return new Screen(800, 600);
    }();
    return *made;
}

size_t entriesIn(const Cv::Ptr<JSON::Element>& root)
{
    const Cv::Ptr<JSON::Element> entries = root ? root->getChild(size_t(0)) : nullptr;
    return entries ? entries->getNumChildren() : 0;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    Screen& onScreen = screen();
    const LightweightString<wchar_t> text = fromUTF8(std::string_view(reinterpret_cast<const char*>(data), size));

    auto* panel = new StandardPanel(StandardPanel::InitArgs(L"Fuzz", 400, 300, StandardPanel::CloseButton,
                                                            UifStd::getColourScheme()));
    check(GlobManager::realize(panel), "the panel could not be shown");
    const size_t childrenBefore = panel->numChildren();

    const Cv::Ptr<UIBuilder::Params> params = UIBuilder::buildFromJSON(text, panel);
    check(static_cast<bool>(params), "no Params for a description");

    // One row per entry (plus the bounds keeper, when the description ties parameters together).
    const size_t entries = entriesIn(JSON::parse(text));
    const size_t rows = panel->numChildren() - childrenBefore;
    check(rows == entries || rows == entries + 1, "rows do not match the entries");
    for (const Cv::Ptr<GenericParam::iParam>& param : params->getParams())
        check(params->findParam(param->getName()) != nullptr, "a parameter cannot be found by its name");

    configb saved;
    params->saveState(saved);
    std::vector<LightweightString<wchar_t>> before;
    for (const Cv::Ptr<GenericParam::iParam>& param : params->getParams())
        before.push_back(param->getValueAsString());
    params->restoreState(saved);
    // Parameters that share a name are saved under one key, and bounds may tie values to one another, so
    // only a parameter whose name is its own and that has no bound must come back exactly.
    std::map<LightweightString<char>, int> uses;
    for (const Cv::Ptr<GenericParam::iParam>& param : params->getParams())
        ++uses[param->getName()];
    const bool bounded = text.view().find(L"must not be") != std::wstring_view::npos;
    size_t i = 0;
    for (const Cv::Ptr<GenericParam::iParam>& param : params->getParams()) {
        if (uses[param->getName()] == 1 && !bounded)
            check(param->getValueAsString() == before[i], "a value changed by saving and restoring");
        ++i;
    }

    onScreen.invalidateAll();
    onScreen.flush();
    Glob::destroy(panel);
    return 0;
}
