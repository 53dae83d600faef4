// Panel benchmarks: scrolling a panel of many rows (only the rows in view may cost anything) and dragging a
// panel across the screen, each step painted as a window would paint it.
//
//     build/release/bin/tessel-bench --benchmark_filter=Panel

#include "toolkit/gfx/Painter.h"
#include "toolkit/ui/GlobManager.h"
#include "toolkit/ui/Screen.h"
#include "toolkit/ui/StylePainter.h"
#include "toolkit/ui/UifStd.h"
#include "toolkit/ui/VerticalScrollingBase.h"

#include <benchmark/benchmark.h>

#include <string>

namespace {

class BenchRow : public Glob {
public:
    struct InitArgs : GlobCreationInfo {
        InitArgs(LightweightString<wchar_t> text, uint16_t w, uint16_t h) : GlobCreationInfo(w, h), label(std::move(text)) {}
        LightweightString<wchar_t> label;
    };
    explicit BenchRow(const InitArgs& args) : Glob(args), m_label(args.label) {}
    void drawText() override { StylePainter::drawLabel(painter(), getLocalBox(), getPalette(), m_label.view()); }

private:
    LightweightString<wchar_t> m_label;
};

VerticalScrollingBase* makeScrollingPanel(int rows)
{
    StandardPanel::InitArgs args(L"Rows", 360, 600, StandardPanel::CloseButton);
    auto* panel = new VerticalScrollingBase(args);
    Glob* area = panel->getScrollArea();
    for (int i = 0; i < rows; ++i)
        area->addWidget<BenchRow>(BenchRow::InitArgs(LightweightString<wchar_t>(L"Row " + std::to_wstring(i)),
                                                     static_cast<uint16_t>(area->getWidth() - 8),
                                                     static_cast<uint16_t>(UifStd::getButtonHeight())),
                                  i == 0 ? Glob::UserTopLeft(4, 4) : Glob::Below(UifStd::getRowGap()));
    panel->updateScrollExtent();
    panel->setPos(100, 100);
    GlobManager::realize(panel);
    return panel;
}

// One wheel notch and the paint that follows, back and forth through the rows.
void BM_PanelScrollWheel(benchmark::State& state)
{
    Screen screen(1280, 800);
    VerticalScrollingBase* panel = makeScrollingPanel(static_cast<int>(state.range(0)));
    screen.flush();
    const XY<int> at = panel->getScreenBox().centre();
    int direction = -1;
    size_t painted = 0;
    for (auto _ : state) {
        if (panel->getScrollOffset() == (direction < 0 ? panel->getMaxScroll() : 0))
            direction = -direction;
        screen.mouseWheel(at, direction);
        screen.flush();
        painted += screen.getLastPaintCount();
    }
    state.counters["widgets_painted"] = benchmark::Counter(double(painted) / double(state.iterations()));
}
BENCHMARK(BM_PanelScrollWheel)->Arg(100)->Arg(1000)->Arg(10000);

// One step of a title-bar drag, painted.
void BM_PanelDragStep(benchmark::State& state)
{
    Screen screen(1280, 800);
    VerticalScrollingBase* panel = makeScrollingPanel(50);
    screen.flush();
    const XY<int> grip = panel->getScreenPos() + panel->getTitleBarBox().centre();
    screen.mouseMove(grip);
    screen.mouseButton(grip, Event::LeftButton, true);
    int step = 0;
    for (auto _ : state) {
        // Back and forth over 200 pixels, so the panel stays on the screen.
        const int dx = (step / 100) % 2 == 0 ? step % 100 : 100 - step % 100;
        ++step;
        screen.mouseMove({grip.x + 2 * dx, grip.y});
        screen.flush();
    }
    screen.mouseButton({grip.x, grip.y}, Event::LeftButton, false);
}
BENCHMARK(BM_PanelDragStep);

} // namespace
