// Scroll list and thumbnail benchmarks: filling a list of 100,000 lines and painting it, what a line costs in
// memory, scrolling a page at 1,000 and at 100,000 lines, thumbnails of 50 camera-sized JPEGs on one and two
// workers against decoding them at full size, and the longest turn of the user-interface loop while they load.
//
//     build/release/bin/tessel-bench --benchmark_filter=Lists --benchmark_repetitions=3

#include "lists/ImageThumbnailBrowser.h"
#include "lists/ScrollList.h"
#include "toolkit/gfx/ImageCache.h"
#include "toolkit/gfx/ImageConverter.h"
#include "toolkit/gfx/ImageIO.h"
#include "toolkit/gfx/SamplePictures.h"
#include "toolkit/support/AtomicFile.h"
#include "toolkit/support/MainThread.h"
#include "toolkit/testing/UiHarness.h"
#include "toolkit/widgets/ScrollBar.h"

#include <benchmark/benchmark.h>

#include <malloc.h>
#include <sys/resource.h>
#include <time.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <string>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {

constexpr uint16_t lineHeight = 20;

std::vector<LightweightString<wchar_t>> numberedLines(int count)
{
    std::vector<LightweightString<wchar_t>> lines;
    lines.reserve(static_cast<size_t>(count));
    for (int i = 0; i < count; ++i)
        lines.emplace_back(L"Clip " + std::to_wstring(i) + L".mov");
    return lines;
}

size_t heapInUse()
{
    return mallinfo2().uordblks;
}

// CPU time of the whole process (every thread) and of the calling thread, in seconds. The machine these run on
// is shared, so wall time includes waiting for a core; CPU time says what the work itself cost.
double processCpuSeconds()
{
    rusage usage {};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_utime.tv_sec + usage.ru_stime.tv_sec + (usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1e6;
}

double threadCpuMilliseconds()
{
    timespec now {};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return now.tv_sec * 1e3 + now.tv_nsec / 1e6;
}

ScrollList* makeList(UiHarness& ui)
{
    return ui.make<ScrollList>(ScrollList::InitArgs({}, 400, 600, lineHeight), Glob::BottomLeft(10, 10));
}

void Lists_SetStringsAndFirstPaint(benchmark::State& state)
{
    const int count = static_cast<int>(state.range(0));
    UiHarness ui;
    ScrollList* list = makeList(ui);
    ui.flush();
    const std::vector<LightweightString<wchar_t>> lines = numberedLines(count);
    for (auto _ : state) {
        list->setStrings(lines);
        ui.flush();
        state.PauseTiming();
        list->setStrings(std::vector<LightweightString<wchar_t>>());
        ui.flush();
        state.ResumeTiming();
    }

    // What a line costs, its text included: measured from before the texts were made, after the caller's
    // copy of them is gone.
    list->setStrings(std::vector<LightweightString<wchar_t>>());
    const size_t before = heapInUse();
    {
        const std::vector<LightweightString<wchar_t>> own = numberedLines(count);
        list->setStrings(own);
    }
    ui.flush();
    state.counters["bytes_per_line"] = double(heapInUse() - before) / count;
    state.SetItemsProcessed(state.iterations() * count);
}
BENCHMARK(Lists_SetStringsAndFirstPaint)->Arg(100000)->Unit(benchmark::kMillisecond);

void Lists_ScrollOnePage(benchmark::State& state)
{
    const int count = static_cast<int>(state.range(0));
    UiHarness ui;
    ScrollList* list = makeList(ui);
    list->setStrings(numberedLines(count));
    ui.flush();
    ScrollBar* bar = list->getScrollBar();
    const double page = bar->getThumbSize();
    int step = 0;
    for (auto _ : state) {
        // Page down through the first forty pages and back to the top, repainting each time.
        bar->setThumbPos((step++ % 40) * page);
        list->handleMessageEvent(ScrollBar::thumbMovedMsg, bar);
        ui.flush();
    }
}
BENCHMARK(Lists_ScrollOnePage)->Arg(1000)->Arg(100000)->Unit(benchmark::kMicrosecond);

// Fifty 3000 x 2000 JPEGs, written once per run.
const std::vector<LightweightString<wchar_t>>& cameraStills()
{
    static const std::vector<LightweightString<wchar_t>> paths = [] {
        const auto folder
            = std::filesystem::temp_directory_path() / ("tessel-bench-stills-" + std::to_string(getpid()));
        std::filesystem::create_directories(folder);
        std::vector<LightweightString<wchar_t>> out;
        for (int i = 0; i < 50; ++i) {
            const std::string path = (folder / ("still-" + std::to_string(100 + i) + ".jpg")).string();
            Cv::writeFileAtomically(
                path, Pictor::encodeJpeg(Pictor::makeSamplePicture(3000, 2000, static_cast<unsigned>(i)), 85));
            out.push_back(fromUTF8(path));
        }
        std::atexit([] {
            std::error_code ignored;
            std::filesystem::remove_all(
                std::filesystem::temp_directory_path() / ("tessel-bench-stills-" + std::to_string(getpid())), ignored);
        });
        return out;
    }();
    return paths;
}

// Thumbnails 40 pixels high, as a browser line of 68 pixels asks for.
constexpr XY<int> thumbnailRequest(0, 40);

void Lists_Thumbnails50Jpegs(benchmark::State& state)
{
    const auto& paths = cameraStills();
    CvImage::Cache cache(static_cast<int>(state.range(0)));
    double cpu = 0.0;
    for (auto _ : state) {
        const double cpuBefore = processCpuSeconds();
        cache.clear();
        int delivered = 0;
        for (const auto& path : paths)
            cache.loadAsync(path, CvImage::Cache::formatARGB, thumbnailRequest, [&](const NotifyMsg&) { ++delivered; });
        cache.waitUntilIdle();
        runDeferredCalls();
        if (delivered != static_cast<int>(paths.size()))
            state.SkipWithError("not every thumbnail arrived");
        cpu += processCpuSeconds() - cpuBefore;
    }
    state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(paths.size()));
    state.counters["per_cpu_second"] = state.iterations() * double(paths.size()) / cpu;
}
BENCHMARK(Lists_Thumbnails50Jpegs)->ArgName("workers")->Arg(1)->Arg(2)->Unit(benchmark::kMillisecond)->UseRealTime();

void Lists_Thumbnails50JpegsDecodedFullSize(benchmark::State& state)
{
    const auto& paths = cameraStills();
    double cpu = 0.0;
    for (auto _ : state) {
        const double cpuBefore = processCpuSeconds();
        for (const auto& path : paths) {
            const Pictor::Image full = Pictor::loadImage(toUTF8(path.view()).str());
            Pictor::Image thumb(full.width() * thumbnailRequest.y / std::max(1, full.height()), thumbnailRequest.y);
            ImageConverter::resize(full, thumb);
            benchmark::DoNotOptimize(thumb.bytes());
        }
        cpu += processCpuSeconds() - cpuBefore;
    }
    state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(paths.size()));
    state.counters["per_cpu_second"] = state.iterations() * double(paths.size()) / cpu;
}
BENCHMARK(Lists_Thumbnails50JpegsDecodedFullSize)->Unit(benchmark::kMillisecond)->UseRealTime();

void Lists_LongestUiTurnWhileThumbnailsLoad(benchmark::State& state)
{
    const auto& paths = cameraStills();
    CvImage::Cache& cache = CvImage::Cache::instance();
    cache.setWorkerCount(2);
    double longest = 0.0;
    double longestCpu = 0.0;
    int turns = 0;
    for (auto _ : state) {
        cache.clear();
        UiHarness ui(800, 800);
        auto* browser = ui.make<ImageThumbnailBrowser>(
            ImageThumbnailBrowser::InitArgs({}, 400, 700, 68), Glob::BottomLeft(10, 10));
        browser->setFiles(paths);
        // A person scrolls down a line every turn while the pictures come in, then waits for the rest.
        for (int line = 0; line < browser->numItems() || cache.numQueued() > 0; ++line) {
            const auto start = std::chrono::steady_clock::now();
            const double cpuStart = threadCpuMilliseconds();
            if (line < browser->numItems())
                browser->selectItem(line);
            ui.step();
            const double ms
                = std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
            longest = std::max(longest, ms);
            longestCpu = std::max(longestCpu, threadCpuMilliseconds() - cpuStart);
            ++turns;
            std::this_thread::sleep_for(std::chrono::milliseconds(2));
        }
        cache.waitUntilIdle();
        ui.step();
    }
    state.counters["longest_turn_ms"] = longest;
    state.counters["longest_turn_cpu_ms"] = longestCpu;
    state.counters["turns"] = turns;
}
BENCHMARK(Lists_LongestUiTurnWhileThumbnailsLoad)->Iterations(1)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace
