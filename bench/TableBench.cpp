// Table benchmarks: scrolling a table by a page and painting it, for tables of 10,000 and 1,000,000 rows of
// different heights (and of one height, which the table handles by arithmetic). The time per page must not
// grow with the number of rows. Also the one-off cost of measuring every row the first time the whole height
// is needed (the scroll bar needs it), which does grow with the rows.
//
//     build/table-rel/bin/tessel-bench --benchmark_filter=Table

#include "BenchScenes.h"
#include "toolkit/ui/Screen.h"
#include "toolkit/widgets/TableWidget.h"
#include "toolkit/widgets/iTableAdaptor.h"

#include <benchmark/benchmark.h>

#include <string>

namespace {

// Rows made up from their number, so a million rows cost no memory.
class GeneratedRows : public iTableAdaptor {
public:
    GeneratedRows(unsigned rows, bool uniform) : m_rows(rows), m_uniform(uniform) {}

    unsigned getSize() override { return m_rows; }
    int getRowHeight(unsigned row) override
    {
        const int h = TableWidget::getDefaultRowHeight();
        return m_uniform || row % 5 != 0 ? h : 2 * h;
    }
    bool hasUniformRowHeights() override { return m_uniform; }
    LightweightString<wchar_t> getFieldText(unsigned row, unsigned col) override
    {
        return LightweightString<wchar_t>((col == 0 ? L"Clip " : L"Take ") + std::to_wstring(row));
    }
    std::vector<TableColumnDescription> getColumnDefinitions() override
    {
        return {TableColumnDescription(L"Clip", "clip", 160), TableColumnDescription(L"Take", "take")};
    }

private:
    unsigned m_rows;
    bool m_uniform;
};

void scrollByPage(benchmark::State& state, bool uniform)
{
    GeneratedRows rows(static_cast<unsigned>(state.range(0)), uniform);
    scrollTableByPages(state, rows, 480);
    state.counters["rows"] = static_cast<double>(state.range(0));
}

void BM_TablePageScroll(benchmark::State& state)
{
    scrollByPage(state, false);
}
BENCHMARK(BM_TablePageScroll)->Arg(10000)->Arg(1000000)->Unit(benchmark::kMillisecond);

void BM_TablePageScrollUniform(benchmark::State& state)
{
    scrollByPage(state, true);
}
BENCHMARK(BM_TablePageScrollUniform)->Arg(10000)->Arg(1000000)->Unit(benchmark::kMillisecond);

// Measuring every row once, as the first paint of a table of rows of different heights does.
void BM_TableFirstMeasure(benchmark::State& state)
{
    Screen screen(1280, 800);
    GeneratedRows rows(static_cast<unsigned>(state.range(0)), false);
    TableWidget table(TableWidget::InitArgs(&rows, 480, 600));
    for (auto _ : state) {
        table.rowsChanged(0);
        benchmark::DoNotOptimize(table.getContentHeight());
    }
}
BENCHMARK(BM_TableFirstMeasure)->Arg(10000)->Arg(1000000)->Unit(benchmark::kMillisecond);

} // namespace
