// Widget core benchmarks: the cost of making and destroying many small widgets (a list makes one per line),
// of delivering named messages, and of repainting a full screen of panels.
//
//     build/ui-rel/bin/tessel-bench --benchmark_filter=Ui

#include "toolkit/gfx/Painter.h"
#include "toolkit/ui/Glob.h"
#include "toolkit/ui/Screen.h"
#include "toolkit/ui/StylePainter.h"
#include "toolkit/ui/UifStd.h"

#include <benchmark/benchmark.h>
#include <malloc.h>

#include <ctime>
#include <string>
#include <vector>

namespace {

// The shape of a standard button: a Glob with a label, drawn by the style painter.
class BenchButton : public Glob {
public:
    struct InitArgs : GlobCreationInfo {
        InitArgs(LightweightString<wchar_t> text, uint16_t w, uint16_t h)
            : GlobCreationInfo(w, h)
            , label(std::move(text))
        {
        }
        LightweightString<wchar_t> label;
    };
    explicit BenchButton(const InitArgs& args)
        : Glob(args)
        , m_label(args.label)
    {
    }

    void draw() override
    {
        StylePainter::drawLabelledButton(painter(), getLocalBox(), getPalette(),
            isActive() ? StylePainter::Normal : StylePainter::Disabled, m_label.view());
    }
    bool handleMessageEvent(LightweightString<char>, Glob*) override
    {
        ++heard;
        return true;
    }

    LightweightString<wchar_t> m_label;
    size_t heard = 0;
};

// The other painted widgets of a panel.
class BenchCheck : public Glob {
public:
    BenchCheck(uint16_t w, uint16_t h, bool on)
        : Glob(w, h)
        , m_on(on)
    {
    }
    void draw() override
    {
        const int side = getHeight() - 4;
        StylePainter::drawCheckBox(painter(), GlobBox(2, 2, 2 + side, 2 + side), getPalette(), m_on);
        StylePainter::drawLabel(painter(), GlobBox(side + 8, 0, getWidth(), getHeight()), getPalette(), L"Deinterlace");
    }
    bool m_on;
};

class BenchGauge : public Glob {
public:
    BenchGauge(uint16_t w, uint16_t h, double f)
        : Glob(w, h)
        , m_fraction(f)
    {
    }
    void draw() override { StylePainter::drawGauge(painter(), getLocalBox(), getPalette(), m_fraction); }
    double m_fraction;
};

class BenchEntry : public Glob {
public:
    BenchEntry(uint16_t w, uint16_t h)
        : Glob(w, h)
    {
    }
    void draw() override
    {
        StylePainter::drawEntryWell(painter(), getLocalBox(), getPalette());
        StylePainter::drawLabel(painter(), getLocalBox().expanded(-4), getPalette(), L"00:01:23:12");
    }
};

class BenchPanel : public Glob {
public:
    BenchPanel(uint16_t w, uint16_t h)
        : Glob(w, h)
    {
        setUserAreaInsets(3, 3, 3, 3 + 22);
    }
    void draw() override
    {
        StylePainter::drawPanel(painter(), getLocalBox(), getPalette());
        StylePainter::drawTitleBar(
            painter(), GlobBox(1, getHeight() - 23, getWidth() - 1, getHeight() - 1), getPalette(), L"Export settings");
    }
};

// Thread CPU time: the machine may be busy with other work, which wall time would charge to us.
double cpuSeconds()
{
    timespec t {};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &t);
    return static_cast<double>(t.tv_sec) + static_cast<double>(t.tv_nsec) * 1e-9;
}

size_t heapInUse()
{
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

void BM_UiCreateDestroyButtons(benchmark::State& state)
{
    const auto count = static_cast<size_t>(state.range(0));
    double createSeconds = 0.0;
    double destroySeconds = 0.0;
    double bytes = 0.0;
    for (auto _ : state) {
        const size_t heapBefore = heapInUse();
        const double t0 = cpuSeconds();
        auto* parent = new Glob(400, 30000);
        for (size_t i = 0; i < count; ++i)
            parent->addWidget<BenchButton>(BenchButton::InitArgs(L"Line label", 200, 20), Glob::Absolute(0, 0));
        const double t1 = cpuSeconds();
        bytes += static_cast<double>(heapInUse() - heapBefore);
        delete parent;
        const double t2 = cpuSeconds();
        createSeconds += t1 - t0;
        destroySeconds += t2 - t1;
    }
    const double made = static_cast<double>(count * state.iterations());
    state.counters["create_us_per_widget"] = createSeconds * 1e6 / made;
    state.counters["destroy_us_per_widget"] = destroySeconds * 1e6 / made;
    state.counters["bytes_per_widget"] = bytes / made;
    state.counters["sizeof_Glob"] = static_cast<double>(sizeof(Glob));
}
// Two sizes, so that a destruction cost that grows faster than the count would show per widget.
BENCHMARK(BM_UiCreateDestroyButtons)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

void BM_UiDispatchMessages(benchmark::State& state)
{
    BenchButton owner(BenchButton::InitArgs(L"owner", 100, 100));
    auto* child = owner.addWidget<BenchButton>(BenchButton::InitArgs(L"child", 10, 10), Glob::Absolute(0, 0));
    static const LightweightString<char> clickMsg("bench_button_clicked");
    constexpr int perIteration = 1000000;
    for (auto _ : state) {
        for (int i = 0; i < perIteration; ++i)
            child->callMsg(clickMsg);
    }
    benchmark::DoNotOptimize(owner.heard);
    state.SetItemsProcessed(state.iterations() * perIteration);
}
BENCHMARK(BM_UiDispatchMessages)->Unit(benchmark::kMillisecond);

void BM_UiFullRepaint1080p(benchmark::State& state)
{
    Screen screen(1920, 1080);
    // A dozen panels of mixed widgets, four across and three down.
    for (int p = 0; p < 12; ++p) {
        auto* panel = new BenchPanel(440, 330);
        panel->setPos(20 + (p % 4) * 470, 20 + (p / 4) * 350);
        Glob* last = nullptr;
        for (int row = 0; row < 11; ++row) {
            Glob* made = nullptr;
            switch (row % 4) {
            case 0:
                made = new BenchButton(BenchButton::InitArgs(L"Render in background", 200, 22));
                break;
            case 1:
                made = new BenchCheck(200, 22, row % 2 == 1);
                break;
            case 2:
                made = new BenchGauge(300, 14, row / 11.0);
                break;
            default:
                made = new BenchEntry(160, 22);
                break;
            }
            panel->addChild(made, last ? Glob::Below(4, last) : Glob::UserTopLeft(6, 6));
            last = made;
            panel->addChild(new BenchButton(BenchButton::InitArgs(L"Apply", 80, 22)), Glob::RightOf(8, made));
        }
        screen.addTopLevel(panel);
    }
    screen.flush(); // fonts and glyph caches warm up once
    for (auto _ : state) {
        screen.invalidateAll();
        screen.flush();
    }
    state.counters["widgets_painted"] = static_cast<double>(screen.getLastPaintCount());
}
BENCHMARK(BM_UiFullRepaint1080p)->Unit(benchmark::kMillisecond);

} // namespace
