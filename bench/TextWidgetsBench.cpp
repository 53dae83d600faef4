// Text widget benchmarks: reading and laying out markup (a panel sizes every label row with it), and the
// cost of a keystroke and of a click in a long text box, where caret positions are found by measuring.
//
//     build/<dir>/bin/tessel-bench --benchmark_filter=Text

#include "toolkit/gfx/FontDesc.h"
#include "toolkit/testing/UiHarness.h"
#include "toolkit/ui/UifStd.h"
#include "toolkit/widgets/HTMLRenderer.h"
#include "toolkit/widgets/TextBoxBase.h"

#include <benchmark/benchmark.h>

#include <string>

namespace {

std::wstring hintMarkup(int paragraphs)
{
    std::wstring text;
    for (int i = 0; i < paragraphs; ++i)
        text += L"<p><b>Export</b> writes <i>every</i> selected clip to the folder you choose. "
                L"<font color=\"#e0a040\">Files with the same name are replaced</font> without asking; see "
                L"<a href=\"https://example.org/export?page=2&amp;lang=en\">the export guide</a> &amp; notes.</p>";
    return text;
}

void BM_TextMarkupParse(benchmark::State& state)
{
    const std::wstring markup = hintMarkup(static_cast<int>(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(HTMLRenderer::parse(markup, UifStd::getColourScheme()));
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * markup.size() * sizeof(wchar_t)));
}
BENCHMARK(BM_TextMarkupParse)->Arg(1)->Arg(50);

void BM_TextMarkupLayout(benchmark::State& state)
{
    const HtmlDocument doc = HTMLRenderer::parse(hintMarkup(static_cast<int>(state.range(0))), UifStd::getColourScheme());
    const Pictor::FontDesc font;
    for (auto _ : state)
        benchmark::DoNotOptimize(HTMLRenderer::calcNumDisplayLines(doc, 300, font));
}
BENCHMARK(BM_TextMarkupLayout)->Arg(1)->Arg(50);

// One character typed at the end of a long, scrolled text, with the paint that follows.
void BM_TextBoxKeystroke(benchmark::State& state)
{
    UiHarness ui(400, 100);
    auto* box = ui.make<TextBoxBase>(
        TextBoxBase::InitArgs(std::wstring(static_cast<size_t>(state.range(0)), L'x'), 200, 24), Glob::BottomLeft(10, 10));
    ui.focus(box);
    ui.pressKey(Event::KeyEnd);
    bool type = true;
    for (auto _ : state) {
        ui.pressKey(type ? int('a') : int(Event::KeyBackspace));
        type = !type;
        ui.flush();
    }
}
BENCHMARK(BM_TextBoxKeystroke)->Arg(20)->Arg(1000);

// A click in a long text: the caret position under the pointer is found by bisection over measured widths.
void BM_TextBoxClickToCaret(benchmark::State& state)
{
    UiHarness ui(400, 100);
    auto* box = ui.make<TextBoxBase>(
        TextBoxBase::InitArgs(std::wstring(static_cast<size_t>(state.range(0)), L'w'), 200, 24), Glob::BottomLeft(10, 10));
    for (auto _ : state)
        benchmark::DoNotOptimize(box->posForX(150.0));
}
BENCHMARK(BM_TextBoxClickToCaret)->Arg(20)->Arg(1000);

} // namespace
