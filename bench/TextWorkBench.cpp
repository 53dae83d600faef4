// The four kinds of work where text decides the speed of the toolkit, each as one benchmark:
//
//   1. a 400 x 600 table of one text column and standard rows, 1,000,000 or 10,000 rows: scroll by a page and
//      paint (BM_TextWorkTableScroll);
//   2. the widths of 100,000 different lines of 80 characters (BM_TextWorkMeasureLines);
//   3. the wrapped line counts of the same lines at 200 pixels (BM_TextWorkWrapLines);
//   4. a panel of 200 parameter rows: build, first paint, destroy (BM_TextWorkParamPanel).
//
// The lines are random words from a generated vocabulary of about 18,000 distinct words, so that no cache of
// words can hold them all; a fifth of the lines hold a word with "ff", "fi" or "fl", which the default font
// joins into one glyph. Everything is generated from fixed seeds, so every run measures the same work.
//
//     build/release/bin/tessel-bench --benchmark_filter=TextWork --benchmark_repetitions=5
//         --benchmark_report_aggregates_only=true   (on one line)
#include "BenchScenes.h"
#include "toolkit/testing/RandomWordText.h"

#include "parampanels/UIBuilderParams.h"
#include "toolkit/gfx/Font.h"
#include "toolkit/gfx/detail/FontEngine.h"
#include "toolkit/gfx/WordWrappingTextRenderer.h"
#include "toolkit/ui/GlobManager.h"
#include "toolkit/ui/Screen.h"
#include "toolkit/ui/StandardPanel.h"
#include "toolkit/ui/UifStd.h"
#include "toolkit/widgets/TableWidget.h"
#include "toolkit/widgets/iTableAdaptor.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <string>

using namespace Pictor;

namespace {

constexpr double kWrapWidth = 200.0;

// One text column of rows made up from their number, so that a million rows cost no memory and every page
// shows text the table has not drawn before.
class NumberedRows : public iTableAdaptor {
public:
    explicit NumberedRows(unsigned rows) : m_rows(rows) {}

    unsigned getSize() override { return m_rows; }
    bool hasUniformRowHeights() override { return true; }
    LightweightString<wchar_t> getFieldText(unsigned row, unsigned) override
    {
        return LightweightString<wchar_t>(L"Clip " + std::to_wstring(row) + L" of the reel");
    }
    std::vector<TableColumnDescription> getColumnDefinitions() override
    {
        return {TableColumnDescription(L"Name", "name")};
    }

private:
    unsigned m_rows;
};

void BM_TextWorkTableScroll(benchmark::State& state)
{
    NumberedRows rows(static_cast<unsigned>(state.range(0)));
    state.counters["widgetsPaintedPerFlush"] = scrollTableByPages(state, rows, 400);
}
BENCHMARK(BM_TextWorkTableScroll)->Arg(1000000)->Arg(10000)->Unit(benchmark::kMillisecond);

void BM_TextWorkMeasureLines(benchmark::State& state)
{
    const auto font = loadFont(FontDesc());
    const auto& lines = TestText::benchmarkLines();
    for (auto _ : state) {
        double sum = 0.0;
        for (const auto& line : lines)
            sum += font->measureWidth(std::string_view(line));
        benchmark::DoNotOptimize(sum);
    }
    state.SetItemsProcessed(static_cast<int64_t>(state.iterations() * lines.size()));
}
BENCHMARK(BM_TextWorkMeasureLines)->Unit(benchmark::kMillisecond);

void BM_TextWorkWrapLines(benchmark::State& state)
{
    const auto font = loadFont(FontDesc());
    const auto& lines = TestText::benchmarkLines();
    for (auto _ : state) {
        int total = 0;
        for (const auto& line : lines)
            total += WordWrappingTextRenderer::calcNumDisplayLines(std::string_view(line), *font, kWrapWidth);
        benchmark::DoNotOptimize(total);
    }
    state.SetItemsProcessed(static_cast<int64_t>(state.iterations() * lines.size()));
}
BENCHMARK(BM_TextWorkWrapLines)->Unit(benchmark::kMillisecond);

// Not a speed: how closely the fast widths and line counts above agree with the full shaper's over all the
// lines (the largest difference in pixels, and the share of lines wrapped to the same number of lines).
void BM_TextWorkShapedAgreement(benchmark::State& state)
{
    const auto font = loadFont(FontDesc());
    const auto& lines = TestText::benchmarkLines();
    double worst = 0.0;
    size_t equalCounts = 0;
    for (auto _ : state) {
        for (const auto& line : lines) {
            const double shaped = font->engine().shapeWithPango(line).width / double(kShaperUnits);
            worst = std::max(worst, std::abs(font->measureWidth(std::string_view(line)) - shaped));
            const auto wrapped = font->engine().wrapWithPango(line, static_cast<int>(kWrapWidth * kShaperUnits));
            equalCounts += WordWrappingTextRenderer::calcNumDisplayLines(std::string_view(line), *font, kWrapWidth)
                == static_cast<int>(wrapped.size());
        }
    }
    state.counters["maxWidthDifferencePx"] = worst;
    state.counters["equalLineCountShare"] = double(equalCounts) / double(lines.size());
}
BENCHMARK(BM_TextWorkShapedAgreement)->Iterations(1)->Unit(benchmark::kMillisecond);

void BM_TextWorkParamPanel(benchmark::State& state)
{
    Screen screen(1920, 1080);
    for (auto _ : state) {
        // Tall enough for every row, as a caller sizes a panel for its parameters.
        auto* panel = new StandardPanel(StandardPanel::InitArgs(L"Bench", 400, 60000, StandardPanel::CloseButton,
                                                                UifStd::getColourScheme()));
        GlobManager::realize(panel);
        const Cv::Ptr<UIBuilder::Params> params = UIBuilder::build(mixedPanelParameters(200), panel);
        benchmark::DoNotOptimize(params.get());
        screen.flush();
        Glob::destroy(panel);
    }
}
BENCHMARK(BM_TextWorkParamPanel)->Unit(benchmark::kMillisecond);

} // namespace
