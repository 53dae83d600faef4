// Log panel and progress benchmarks.
//   - A million lines of about 80 characters, of mixed kinds, written with loggerWrite into a shown log panel
//     600 pixels wide, the screen painted every 1,000 lines as a busy event loop would: lines per second, and
//     the heap bytes each line costs (measured with mallinfo2 before and after, panel and task log together).
//   - The web-page export of such a log to a file: bytes written per second.
//   - Scrolling a log by a page and painting it, at 1,000 and at 1,000,000 lines: the same cost.
//   - ProgInd::update_progress when throttled (the clock stands still, so every call after the first is
//     dropped): the cost a tight loop pays per call.
//
// Rates are per second of the process's own CPU time: on a shared machine the wall clock says more about the
// other processes than about this code (both times are printed).
//
//     build/release/bin/tessel-bench --benchmark_filter='BM_Log|BM_ProgInd' --benchmark_repetitions=3

#include "logging/Logger.h"
#include "logging/LoggerFunctions.h"
#include "logging/ProgInd.h"
#include "toolkit/support/AtomicFile.h"
#include "toolkit/support/Clock.h"
#include "toolkit/ui/GlobManager.h"
#include "toolkit/ui/Screen.h"
#include "toolkit/ui/UifStd.h"
#include "toolkit/widgets/TableWidget.h"

#include <benchmark/benchmark.h>

#include <filesystem>
#include <malloc.h>
#include <string>
#include <vector>

namespace {

using Kind = LoggerBase::eOutputType;

constexpr Kind mixedKinds[] = { Kind::Normal, Kind::Normal, Kind::Normal, Kind::Warning, Kind::Normal,
                                Kind::Error,  Kind::Emphasis, Kind::Normal, Kind::Success, Kind::StatusLine };

// About 80 characters, different from line to line as a real log's are.
std::wstring makeLine(int i)
{
    std::wstring line = L"Frame " + std::to_wstring(i) + L": encoded 1920x1080 in 12.7 ms, bitrate 48.2 Mb/s, "
                        L"clip A0" + std::to_wstring(i % 97) + L"_C00" + std::to_wstring(i % 7);
    line.resize(80, L'.');
    return line;
}

std::vector<LightweightString<wchar_t>> makeLines(int count)
{
    std::vector<LightweightString<wchar_t>> lines;
    lines.reserve(static_cast<size_t>(count));
    for (int i = 0; i < count; ++i)
        lines.emplace_back(makeLine(i));
    return lines;
}

Logger* showLogger(int width)
{
    auto* log = new Logger(Logger::InitArgs(30, static_cast<uint16_t>(width), Logger::ShowGauge));
    log->setPos(40, 40);
    GlobManager::realize(log);
    return log;
}

size_t heapInUse()
{
    return mallinfo2().uordblks;
}

void BM_LogWriteMillionLines(benchmark::State& state)
{
    constexpr int lines = 1000000;
    const std::vector<LightweightString<wchar_t>> text = makeLines(lines);
    double bytesPerLine = 0.0;
    for (auto _ : state) {
        state.PauseTiming();
        Screen screen(1280, 800);
        Logger* log = showLogger(600);
        screen.flush();
        const size_t before = heapInUse();
        state.ResumeTiming();

        for (int i = 0; i < lines; ++i) {
            loggerWrite(log, text[static_cast<size_t>(i)], mixedKinds[i % 10]);
            if (i % 1000 == 999)
                screen.processEvents();
        }
        screen.processEvents();

        state.PauseTiming();
        bytesPerLine = static_cast<double>(heapInUse() - before) / lines;
        if (log->getNumUsedRows() < lines)
            state.SkipWithError("lines were lost");
        Glob::destroy(log);
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * lines);
    state.counters["bytes_per_line"] = bytesPerLine;
}
BENCHMARK(BM_LogWriteMillionLines)->Unit(benchmark::kMillisecond)->Iterations(1);

void BM_LogHtmlExportMillionLines(benchmark::State& state)
{
    constexpr int lines = 1000000;
    TaskLog log;
    for (int i = 0; i < lines; ++i)
        log.add(LightweightString<wchar_t>(makeLine(i)), static_cast<int>(mixedKinds[i % 10]));
    const std::string path = (std::filesystem::temp_directory_path() / "tessel-bench-TaskLog.html").string();
    size_t bytes = 0;
    for (auto _ : state) {
        const std::string page = Logger::makeHtml(log);
        if (!Cv::writeFileAtomically(path, page))
            state.SkipWithError("cannot write the page");
        bytes += page.size();
    }
    std::filesystem::remove(path);
    state.SetBytesProcessed(static_cast<int64_t>(bytes));
}
BENCHMARK(BM_LogHtmlExportMillionLines)->Unit(benchmark::kMillisecond);

void BM_LogScrollPage(benchmark::State& state)
{
    Screen screen(1280, 800);
    Logger* log = showLogger(600);
    const int lines = static_cast<int>(state.range(0));
    for (int i = 0; i < lines; ++i)
        log->write(LightweightString<wchar_t>(makeLine(i)), mixedKinds[i % 10]);
    screen.flush();
    TableWidget* table = log->getTable();
    const int64_t end = table->getMaxScroll();
    table->scrollTo(end / 2);
    screen.flush();
    int64_t page = -table->getViewHeight();
    for (auto _ : state) {
        if (!table->scrollBy(page)) {
            page = -page;
            table->scrollBy(page);
        }
        screen.flush();
    }
    Glob::destroy(log);
}
BENCHMARK(BM_LogScrollPage)->Arg(1000)->Arg(1000000)->Unit(benchmark::kMicrosecond);

void BM_ProgIndThrottledUpdate(benchmark::State& state)
{
    Screen screen(1280, 800);
    Cv::TestClock clock;
    auto* indicator = new ProgInd(UIString(L"Export"), 400, 0, UifStd::getColourScheme(), 0.0, 1.0, false);
    indicator->setPos(40, 40);
    GlobManager::realize(indicator);
    const LightweightString<wchar_t> text = L"Frame";
    indicator->update_progress(text, 0.1);
    double value = 0.2;
    for (auto _ : state) {
        indicator->update_progress(text, value);
        value = value < 0.9 ? value + 1e-6 : 0.2;
    }
    Glob::destroy(indicator);
}
BENCHMARK(BM_ProgIndThrottledUpdate);

} // namespace
