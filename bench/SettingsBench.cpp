// Costs of the settings layer: string table lookups (made on every label drawn), configb records (panels with
// many parameters), preferences parsing at start and the atomic write behind every preference change.
#include "toolkit/support/Configb.h"
#include "toolkit/support/DataConvert.h"
#include "toolkit/support/Preferences.h"
#include "toolkit/support/Resources.h"

#include <benchmark/benchmark.h>

#include <filesystem>
#include <string>
#include <unistd.h>

namespace {

void BM_ResourceLookup(benchmark::State& state)
{
    benchmark::DoNotOptimize(resourceStrW(12197)); // loads the table outside the timing
    for (auto _ : state)
        benchmark::DoNotOptimize(resourceStrW(12197));
}
BENCHMARK(BM_ResourceLookup);

void BM_ResourceLookupFormatted(benchmark::State& state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(resourceStrW(10750, resFmtEllipsis));
}
BENCHMARK(BM_ResourceLookupFormatted);

// Saving and restoring a panel: fill a record, then look every key up.
void BM_ConfigbSaveRestore(benchmark::State& state)
{
    const auto count = static_cast<int>(state.range(0));
    std::vector<std::string> keys;
    for (int i = 0; i < count; ++i)
        keys.push_back("parameter " + std::to_string(i));
    LightweightString<char> value;
    for (auto _ : state) {
        configb record;
        for (const auto& key : keys)
            record.set(key, "0.5");
        for (const auto& key : keys)
            benchmark::DoNotOptimize(record.in(key, value));
    }
    state.SetComplexityN(count);
}
BENCHMARK(BM_ConfigbSaveRestore)->RangeMultiplier(4)->Range(8, 2048)->Complexity();

void BM_PreferencesParse(benchmark::State& state)
{
    Preferences::Map values;
    for (int i = 0; i < state.range(0); ++i)
        values.emplace("UI : Hinted " + std::to_string(i), i % 2 ? "true" : "false");
    const std::string bytes = Preferences::serialise(values);
    for (auto _ : state)
        benchmark::DoNotOptimize(Preferences::parse(bytes));
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * bytes.size()));
}
BENCHMARK(BM_PreferencesParse)->Arg(64)->Arg(4096);

// One preference change: the whole file is rewritten, flushed to disk and renamed.
void BM_PreferencesSet(benchmark::State& state)
{
    const auto folder = std::filesystem::temp_directory_path() / ("tessel-bench-" + std::to_string(::getpid()));
    std::filesystem::create_directories(folder);
    {
        Preferences preferences((folder / "preferences").string());
        for (int i = 0; i < state.range(0); ++i)
            preferences.setPreference("key " + std::to_string(i), i);
        int counter = 0;
        for (auto _ : state)
            preferences.setPreference("changing", ++counter);
    }
    std::filesystem::remove_all(folder);
}
BENCHMARK(BM_PreferencesSet)->Arg(50)->Unit(benchmark::kMicrosecond);

void BM_DataConvertDouble(benchmark::State& state)
{
    const std::wstring text = L"  -1234.5678e-3 units";
    double value = 0;
    for (auto _ : state) {
        DataConvert::convert(std::wstring_view(text), value);
        benchmark::DoNotOptimize(value);
    }
}
BENCHMARK(BM_DataConvertDouble);

} // namespace
