// Building parameter panels: 200 rows from a description, and 200 rows from ready-made parameters, into a
// panel on an off-screen screen (the panel is made, built, painted once and destroyed each time).
#include "BenchScenes.h"
#include "parampanels/UIBuilderParams.h"
#include "toolkit/support/JSON.h"
#include "toolkit/ui/GlobManager.h"
#include "toolkit/ui/Screen.h"
#include "toolkit/ui/StandardPanel.h"
#include "toolkit/ui/UifStd.h"

#include <benchmark/benchmark.h>

#include <string>

namespace {

constexpr int kRows = 200;

// Cycles through the kinds a panel usually holds: check boxes, numbers, choices, text and notes.
std::string description()
{
    std::string json = R"({"params": [)";
    for (int i = 0; i < kRows; ++i) {
        const std::string name = "\"name\": \"p" + std::to_string(i) + "\", \"legend\": \"Parameter " + std::to_string(i) + "\"";
        if (i)
            json += ", ";
        switch (i % 6) {
        case 0:
            json += "{\"type\": \"bool\", " + name + "}";
            break;
        case 1:
            json += "{\"type\": \"int\", " + name + ", \"default\": 5, \"min\": 0, \"max\": 10}";
            break;
        case 2:
            json += "{\"type\": \"float\", " + name + ", \"default\": 0.5, \"min\": 0, \"max\": 1}";
            break;
        case 3:
            json += "{\"type\": \"int\", " + name + ", \"values\": {\"One\": 1, \"Two\": 2, \"Three\": 3}}";
            break;
        case 4:
            json += "{\"type\": \"text\", " + name + ", \"value\": \"Some text\"}";
            break;
        default:
            json += "{\"type\": \"label\", " + name + "}";
            break;
        }
    }
    return json + "]}";
}

StandardPanel* makePanel()
{
    // Tall enough to hold every row, as a caller sizes a panel for its description.
    auto* panel = new StandardPanel(StandardPanel::InitArgs(L"Bench", 400, 60000, StandardPanel::CloseButton,
                                                            UifStd::getColourScheme()));
    GlobManager::realize(panel);
    return panel;
}

template <typename Build> void buildPanels(benchmark::State& state, Build build)
{
    Screen screen(1920, 1080);
    for (auto _ : state) {
        StandardPanel* panel = makePanel();
        const Cv::Ptr<UIBuilder::Params> params = build(panel);
        benchmark::DoNotOptimize(params.get());
        screen.flush();
        Glob::destroy(panel);
    }
    // Rows per second; a row's cost in microseconds is a million over it.
    state.SetItemsProcessed(state.iterations() * kRows);
}

void BM_ParamPanelFromDescription(benchmark::State& state)
{
    const Cv::Ptr<JSON::Element> root = JSON::parse(description());
    buildPanels(state, [&](StandardPanel* panel) { return UIBuilder::buildFromJSON(root, panel); });
}
BENCHMARK(BM_ParamPanelFromDescription)->Unit(benchmark::kMillisecond);

void BM_ParamPanelFromParameters(benchmark::State& state)
{
    buildPanels(state, [](StandardPanel* panel) { return UIBuilder::build(mixedPanelParameters(kRows), panel); });
}
BENCHMARK(BM_ParamPanelFromParameters)->Unit(benchmark::kMillisecond);

} // namespace
