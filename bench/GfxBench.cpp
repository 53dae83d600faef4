// Graphics layer: text measuring and wrapping throughput (with their agreement with the full text shaper),
// PNG writing and painting a full-HD image.
//
//   tessel-bench --benchmark_filter=Gfx
#include "toolkit/gfx/Font.h"
#include "toolkit/gfx/detail/FontEngine.h"
#include "toolkit/gfx/ImageIO.h"
#include "toolkit/gfx/Painter.h"
#include "toolkit/gfx/WordWrappingTextRenderer.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <random>
#include <string>
#include <vector>

using namespace Pictor;

namespace {

constexpr size_t kLines = 100000;
constexpr double kWrapWidth = 200.0;

// 100,000 different lines of 80 characters: user-interface and log vocabulary with punctuation, numbers,
// accents and ligature-forming words, as a log panel shows them.
const std::vector<std::string>& lines()
{
    static const std::vector<std::string> result = [] {
        static const char* const words[] = {
            "the", "of", "and", "to", "in", "is", "that", "for", "on", "with", "as", "was", "from", "this", "by",
            "not", "are", "which", "will", "each", "about", "many", "some", "would", "other", "into", "more",
            "Render", "Timeline", "Clip", "Frame", "Export", "Video", "Audio", "Track", "Project", "Sequence",
            "file", "field", "office", "effect", "flow", "shuffle", "finished", "queued", "failed", "written",
            "12.5%", "00:01:02", "1920x1080", "25fps", "(default)", "\"Main\"", "e.g.", "H.264", "MPEG-4", "x-ray",
            "Tokyo", "Vector", "Wave", "AVI", "café", "naïve", "Ærø", "Łódź", "résumé", "2024-06-11", "$100"};
        std::mt19937 rng(1234);
        std::vector<std::string> out;
        out.reserve(kLines);
        while (out.size() < kLines) {
            std::string line;
            while (line.size() < 90) {
                if (!line.empty())
                    line += ' ';
                line += words[rng() % std::size(words)];
                if (rng() % 10 == 0)
                    line += (rng() % 2) ? "," : ".";
            }
            // Cut at 80 characters, not bytes, so that no character is split.
            const std::wstring wide = fromUTF8(line).str().substr(0, 80);
            out.push_back(toUTF8(wide).str());
        }
        return out;
    }();
    return result;
}

void BM_GfxMeasureLines(benchmark::State& state)
{
    const auto font = loadFont(FontDesc());
    const auto& text = lines();
    // Agreement with the shaper laying out each line unhinted, checked once over all the lines.
    double worst = 0.0;
    for (const auto& line : text) {
        const double reference = font->engine().shapeWithPango(line).width / double(kShaperUnits);
        worst = std::max(worst, std::abs(font->measureWidth(std::string_view(line)) - reference));
    }
    for (auto _ : state) {
        double sum = 0.0;
        for (const auto& line : text)
            sum += font->measureWidth(std::string_view(line));
        benchmark::DoNotOptimize(sum);
    }
    state.SetItemsProcessed(static_cast<int64_t>(state.iterations() * text.size()));
    state.counters["maxDeviationPx"] = worst;
}
BENCHMARK(BM_GfxMeasureLines)->Unit(benchmark::kMillisecond);

// The same lines through the full shaper, for comparison.
void BM_GfxMeasureLinesShaperOnly(benchmark::State& state)
{
    const auto font = loadFont(FontDesc());
    const auto& text = lines();
    for (auto _ : state) {
        double sum = 0.0;
        for (size_t i = 0; i < 10000; ++i)
            sum += font->engine().shapeWithPango(text[i]).width;
        benchmark::DoNotOptimize(sum);
    }
    state.SetItemsProcessed(static_cast<int64_t>(state.iterations() * 10000));
}
BENCHMARK(BM_GfxMeasureLinesShaperOnly)->Unit(benchmark::kMillisecond);

void BM_GfxWrapLines(benchmark::State& state)
{
    const auto font = loadFont(FontDesc());
    const auto& text = lines();
    size_t agree = 0;
    for (const auto& line : text) {
        const auto reference = font->engine().wrapWithPango(line, static_cast<int>(kWrapWidth * kShaperUnits));
        agree += WordWrappingTextRenderer::calcNumDisplayLines(std::string_view(line), *font, kWrapWidth)
            == static_cast<int>(reference.size());
    }
    for (auto _ : state) {
        int total = 0;
        for (const auto& line : text)
            total += WordWrappingTextRenderer::calcNumDisplayLines(std::string_view(line), *font, kWrapWidth);
        benchmark::DoNotOptimize(total);
    }
    state.SetItemsProcessed(static_cast<int64_t>(state.iterations() * text.size()));
    state.counters["agreementWithShaper"] = double(agree) / double(text.size());
}
BENCHMARK(BM_GfxWrapLines)->Unit(benchmark::kMillisecond);

// The first characters of a line that fit a cell, cut at a character boundary.
std::string_view label(size_t n)
{
    const std::string& line = lines()[n % lines().size()];
    size_t length = std::min<size_t>(line.size(), 24);
    while (length > 0 && length < line.size() && (static_cast<unsigned char>(line[length]) & 0xC0) == 0x80)
        --length;
    return std::string_view(line).substr(0, length);
}

// A screenful of widgets: panels of bevelled cells, each with a label, on a dark background.
void paintScreen(Image& image)
{
    static const auto font = loadFont(FontDesc());
    Painter painter(image);
    painter.clear(Colour(0.16, 0.16, 0.17));
    const Colour cell(0.24, 0.24, 0.26);
    const Colour light(0.36, 0.36, 0.38);
    const Colour dark(0.10, 0.10, 0.11);
    const Colour text(0.85, 0.85, 0.85);
    int n = 0;
    for (int y = 0; y + 24 <= image.height(); y += 27) {
        for (int x = 0; x + 120 <= image.width(); x += 128) {
            const PaintRect box(x, y, x + 120, y + 24);
            painter.fillRect(box, cell);
            painter.drawBevel(box, light, dark, 1);
            painter.drawTextInBox(label(n++), *font, text,
                                  PaintRect(x + 4, y, x + 116, y + 24), TextAlign::Left, textEllipsis);
        }
    }
}

void BM_GfxPaintFullHD(benchmark::State& state)
{
    Image image(1920, 1080);
    for (auto _ : state)
        paintScreen(image);
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_GfxPaintFullHD)->Unit(benchmark::kMillisecond);

void BM_GfxWritePngFullHD(benchmark::State& state)
{
    Image image(1920, 1080);
    paintScreen(image);
    const auto path = std::filesystem::temp_directory_path() / "tessel-bench-fullhd.png";
    size_t bytes = 0;
    for (auto _ : state) {
        if (!writePng(image, path.string()))
            state.SkipWithError("writing failed");
        bytes = std::filesystem::file_size(path);
    }
    std::filesystem::remove(path);
    state.counters["fileKiB"] = double(bytes) / 1024.0;
}
BENCHMARK(BM_GfxWritePngFullHD)->Unit(benchmark::kMillisecond);

} // namespace
