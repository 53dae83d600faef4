// Standard widget benchmarks: making a list's worth of buttons (one per line), painting them, and a slider
// drag feeding a value that two other widgets show.
//
//     build/buttons-rel/bin/tessel-bench --benchmark_filter=Widgets

#include "toolkit/support/ValAdaptor.h"
#include "toolkit/support/ValServer.h"
#include "toolkit/testing/UiHarness.h"
#include "toolkit/ui/UifStd.h"
#include "toolkit/widgets/Button.h"
#include "toolkit/widgets/Slider.h"

#include <benchmark/benchmark.h>

#include <string>

namespace {

void Widgets_MakeAndDestroyButtons(benchmark::State& state)
{
    const int count = static_cast<int>(state.range(0));
    Glob parent(400, static_cast<uint16_t>(std::min(65535, count * 22)));
    const LightweightString<wchar_t> label(L"Line of a list");
    for (auto _ : state) {
        for (int i = 0; i < count; ++i)
            parent.addWidget<Button>(Button::InitArgs(label, 400, 22), Glob::Absolute(0, i * 22));
        parent.removeAllChildren();
    }
    state.SetItemsProcessed(state.iterations() * count);
}
BENCHMARK(Widgets_MakeAndDestroyButtons)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

void Widgets_PaintScreenOfButtons(benchmark::State& state)
{
    UiHarness ui(1024, 768);
    // A screen full of buttons in columns, as a dense tool panel shows them.
    for (int x = 0; x + 100 <= 1024; x += 102)
        for (int y = 0; y + 22 <= 768; y += 24)
            ui.make<Button>(Button::InitArgs(L"Button", 100, 22, UifStd::getColourScheme()), Glob::BottomLeft(x, y));
    for (auto _ : state) {
        ui.screen().invalidateAll();
        ui.flush();
    }
    state.counters["widgets"] = static_cast<double>(ui.screen().getLastPaintCount());
}
BENCHMARK(Widgets_PaintScreenOfButtons)->Unit(benchmark::kMillisecond);

void Widgets_BoundSliderDrag(benchmark::State& state)
{
    UiHarness ui(640, 200);
    auto server = Cv::make<ValServer<double>>(0.0);
    Slider* sliders[3];
    for (int i = 0; i < 3; ++i) {
        sliders[i] = ui.make<Slider>(Slider::InitArgs(Palette().highlight(), 600, 22, UifStd::getColourScheme()),
                                     Glob::BottomLeft(10, 10 + 40 * i));
        sliders[i]->setDataAdaptor(makeServerAdaptor(server));
    }
    Slider* dragged = sliders[0];
    const int y = dragged->getHeight() / 2;
    for (auto _ : state) {
        // One drag across the whole track: every step reaches the value and both other sliders.
        ui.drag(dragged, {dragged->valueToX(server->getValue()), y}, {dragged->getWidth(), y}, 100);
        ui.drag(dragged, {dragged->valueToX(server->getValue()), y}, {0, y}, 100);
    }
    state.SetItemsProcessed(state.iterations() * 200);
}
BENCHMARK(Widgets_BoundSliderDrag)->Unit(benchmark::kMillisecond);

} // namespace
