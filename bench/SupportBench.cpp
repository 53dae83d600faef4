// Costs of the support layer's value types: copying shared handles (done on every parameter and text
// passed around), decoding UTF-8 (every label read from a file or the string table), liveness checks of
// widget stamps and colour conversions (the colour wheel converts per pixel).
#include "toolkit/support/Colour.h"
#include "toolkit/support/IdStamp.h"
#include "toolkit/support/LightweightString.h"
#include "toolkit/support/Ptr.h"
#include "toolkit/support/Vectors.h"
#include "toolkit/support/params/NumericParams.h"

#include <benchmark/benchmark.h>

#include <string>
#include <vector>

namespace {

// One copy made and destroyed per iteration: an atomic increment and decrement. With several threads
// copying the same object the count's cache line bounces between cores.
void BM_PtrCopyAndDestroy(benchmark::State& state)
{
    static Cv::Ptr<GenericParam::IntParam> shared;
    if (state.thread_index() == 0)
        shared = Cv::make<GenericParam::IntParam>(L"Level", "level", ResId(), 0);
    for (auto _ : state) {
        Cv::Ptr<GenericParam::IntParam> copy = shared;
        benchmark::DoNotOptimize(copy);
    }
    state.SetItemsProcessed(state.iterations());
    if (state.thread_index() == 0)
        shared = nullptr;
}
BENCHMARK(BM_PtrCopyAndDestroy)->Threads(1)->Threads(2);

void BM_LightweightVectorCopy(benchmark::State& state)
{
    LightweightVector<int> items(std::vector<int>(static_cast<size_t>(state.range(0)), 7));
    for (auto _ : state) {
        LightweightVector<int> copy = items;
        benchmark::DoNotOptimize(copy);
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_LightweightVectorCopy)->Arg(8)->Arg(1024);

std::string repeatToSize(const std::string& unit, size_t bytes)
{
    std::string text;
    while (text.size() < bytes)
        text += unit;
    return text;
}

// Labels and file names: ASCII with the occasional accented letter.
const std::string& mostlyAsciiText()
{
    static const std::string text = repeatToSize(
        "Export settings for the final render of the sequence: frame rate 25, codec caf\xC3\xA9 v2, 1920x1080. ",
        64 * 1024);
    return text;
}

// Translated texts: Cyrillic and CJK runs between ASCII, with a few four-byte characters.
const std::string& mixedText()
{
    static const std::string text = repeatToSize(
        "\xD0\x9D\xD0\xB0\xD1\x81\xD1\x82\xD1\x80\xD0\xBE\xD0\xB9\xD0\xBA\xD0\xB8 render "
        "\xE8\xA8\xAD\xE5\xAE\x9A\xE3\x81\xAE\xE6\x9B\xB8\xE3\x81\x8D\xE5\x87\xBA\xE3\x81\x97 "
        "\xF0\x9F\x8E\xAC 25 fps \xC3\xA9\xC3\xA8 ",
        64 * 1024);
    return text;
}

void decodeBenchmark(benchmark::State& state, const std::string& text)
{
    for (auto _ : state) {
        LightweightString<wchar_t> wide = fromUTF8(text);
        benchmark::DoNotOptimize(wide);
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * static_cast<int64_t>(text.size()));
}

void BM_FromUTF8_MostlyAscii(benchmark::State& state)
{
    decodeBenchmark(state, mostlyAsciiText());
}
BENCHMARK(BM_FromUTF8_MostlyAscii);

void BM_FromUTF8_Mixed(benchmark::State& state)
{
    decodeBenchmark(state, mixedText());
}
BENCHMARK(BM_FromUTF8_Mixed);

void BM_ToUTF8_Mixed(benchmark::State& state)
{
    const LightweightString<wchar_t> wide = fromUTF8(mixedText());
    for (auto _ : state) {
        LightweightString<char> narrow = toUTF8(wide.view());
        benchmark::DoNotOptimize(narrow);
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * static_cast<int64_t>(mixedText().size()));
}
BENCHMARK(BM_ToUTF8_Mixed);

// The liveness test behind every "is this widget still there" after a callback.
void BM_StampIsLive(benchmark::State& state)
{
    Cv::StampTable table;
    std::vector<IdStamp> stamps;
    for (int i = 0; i < 10000; ++i)
        stamps.push_back(table.issue());
    for (size_t i = 0; i < stamps.size(); i += 3)
        table.retire(stamps[i]);
    size_t i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(table.isLive(stamps[i]));
        i = (i + 1) % stamps.size();
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_StampIsLive);

void BM_StampIssueAndRetire(benchmark::State& state)
{
    Cv::StampTable table;
    for (auto _ : state)
        table.retire(table.issue());
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_StampIssueAndRetire);

void BM_HSVRoundTrip(benchmark::State& state)
{
    double hue = 0.0;
    for (auto _ : state) {
        const NormalisedRGB rgb = HSVToRGB({hue, 0.8, 0.9});
        benchmark::DoNotOptimize(RGBToHSV(rgb));
        hue += 0.7;
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_HSVRoundTrip);

} // namespace
