// Costs of the tutorial catalogue: the first use, which reads every tutorial file of the folder (the host waits
// for it when it first shows the tutorials menu), saving one tutorial (an atomic write with a flush to disk)
// and reading one document already in memory (the parse and read without the file system).
#include "toolkit/support/JSON.h"
#include "toolkit/support/OS.h"
#include "tutorials/Tutorial.h"
#include "tutorials/TutorialsManager.h"

#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <unistd.h>

namespace {

constexpr int kFileCount = 10000;

// A tutorial of about 4 KB as written, like the ones the editor records: a few components and ten phases.
Tutorial makeTutorial(int number)
{
    const std::string n = std::to_string(number);
    std::string json = R"({"name": "Tutorial )";
    json += n;
    json += R"(", "category": "Category )";
    json += std::to_string(number % 20);
    json += R"(", "components": [)";
    for (int i = 0; i < 6; ++i) {
        json += i ? R"(,{"type": "panel)" : R"({"type": "panel)";
        json += std::to_string(i);
        json += R"(", "x": 12.5, "y": 340, "width": 640, "height": 360})";
    }
    json += R"(], "phases": [)";
    for (int i = 0; i < 9; ++i) {
        json += i ? R"(,{"pause": 1.5, "pointer": {"target": "button )" : R"({"pause": 1.5, "pointer": {"target": "button )";
        json += std::to_string(i);
        json += R"("}, "message": {"text": "Now press the highlighted button to go on with step )";
        json += std::to_string(i);
        json += R"(", "target": "button", "relativity": "below"}, "action": {"event": "click", "modifiers": ["shift"]}})";
    }
    json += "]}";
    Tutorial tutorial;
    static_cast<JSON::iPersistable&>(tutorial).read(JSON::parse(json));
    return tutorial;
}

std::string documentOf(const Tutorial& tutorial)
{
    JSON::Builder builder;
    static_cast<const JSON::iPersistable&>(tutorial).write(builder);
    return builder.toString(3, 0);
}

// The data folder of the benchmarks, with kFileCount tutorial files in its Tutorials folder. Written once
// with plain writes: an atomic, flushed save per file would take minutes and measure nothing of interest.
class BenchData {
public:
    BenchData()
        : m_base(std::filesystem::temp_directory_path() / ("tessel-bench-tutorials-" + std::to_string(::getpid())))
    {
        std::filesystem::create_directories(m_base / "Tutorials");
        for (int i = 0; i < kFileCount; ++i) {
            std::string name = std::to_string(i);
            name += ".CvTutorial";
            std::ofstream out(m_base / "Tutorials" / name, std::ios::binary);
            const std::string bytes = documentOf(makeTutorial(i));
            m_bytes += bytes.size();
            out << bytes;
        }
        OS()->fileManager().setBaseDataDirectory(fromUTF8(m_base.string()));
    }
    ~BenchData()
    {
        OS()->fileManager().setBaseDataDirectory({});
        std::error_code error;
        std::filesystem::remove_all(m_base, error);
    }

    const std::filesystem::path& base() const { return m_base; }
    size_t totalBytes() const { return m_bytes; }

private:
    std::filesystem::path m_base;
    size_t m_bytes = 0;
};

BenchData& benchData()
{
    static BenchData data;
    return data;
}

class BenchCatalogue : public TutorialsManager {
public:
    BenchCatalogue()
        : TutorialsManager(SeparateCatalogue {})
    {
    }
};

// Items are files; the files are in the page cache, as they are on any start but the first after a boot.
void BM_CatalogueFirstUse(benchmark::State& state)
{
    const BenchData& data = benchData();
    for (auto _ : state) {
        BenchCatalogue catalogue;
        if (catalogue.tutorials().size() != static_cast<size_t>(kFileCount))
            state.SkipWithError("the catalogue did not list every file");
        benchmark::DoNotOptimize(catalogue.getCategories().size());
    }
    state.SetItemsProcessed(state.iterations() * kFileCount);
    state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(data.totalBytes()));
    state.counters["bytes_per_file"] = static_cast<double>(data.totalBytes()) / kFileCount;
}
BENCHMARK(BM_CatalogueFirstUse)->Unit(benchmark::kMillisecond)->MinTime(2.0);

void BM_TutorialSave(benchmark::State& state)
{
    const BenchData& data = benchData();
    Tutorial tutorial = makeTutorial(1);
    const auto path = fromUTF8((data.base() / "save-bench.CvTutorial").string());
    for (auto _ : state)
        if (!tutorial.save(path))
            state.SkipWithError("save failed");
    state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(documentOf(tutorial).size()));
}
BENCHMARK(BM_TutorialSave)->Unit(benchmark::kMicrosecond);

void BM_TutorialReadDocument(benchmark::State& state)
{
    const std::string bytes = documentOf(makeTutorial(1));
    for (auto _ : state) {
        Tutorial tutorial;
        static_cast<JSON::iPersistable&>(tutorial).read(JSON::parse(bytes));
        benchmark::DoNotOptimize(tutorial.getNumPhases());
    }
    state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(bytes.size()));
}
BENCHMARK(BM_TutorialReadDocument)->Unit(benchmark::kMicrosecond);

} // namespace
