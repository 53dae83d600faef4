// Arbitrary bytes as markup for the text renderer. Whatever comes in must read into a tidy document: no empty
// text runs, no break at the end (nor a paragraph break at the start), no doubled spaces, no text or link on a
// break, and no more characters than the input had. Laying the document out at a few widths loses no character.
#include "FuzzChecks.h"
#include "toolkit/support/LightweightString.h"
#include "toolkit/widgets/HTMLRenderer.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace {

std::wstring withoutSpaces(std::wstring_view text)
{
    std::wstring out;
    for (wchar_t c : text)
        if (c != L' ')
            out.push_back(c);
    return out;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const LightweightString<wchar_t> markup =
        fromUTF8(std::string_view(reinterpret_cast<const char*>(data), size));
    const HtmlDocument doc = HTMLRenderer::parse(markup.view(), Palette());

    size_t characters = 0;
    for (size_t i = 0; i < doc.runs.size(); ++i) {
        const HtmlRun& run = doc.runs[i];
        if (run.kind == HtmlRun::Text) {
            check(!run.text.empty(), "an empty text run");
            check(run.text.find(L"  ") == std::wstring::npos, "spaces not collapsed");
            characters += run.text.size();
        } else {
            check(i + 1 < doc.runs.size(), "a break at the end");
            check(i > 0 || run.kind == HtmlRun::LineBreak, "a paragraph break at the start");
            check(run.text.empty() && run.href.empty(), "a break with text or a link");
        }
        check(run.style <= 3, "a style outside bold and italic");
    }
    check(characters <= markup.size(), "more characters out than in");

    // Small inputs only: layout measures text, and the reader is what is under test.
    if (markup.size() <= 2000) {
        const std::wstring expected = withoutSpaces(doc.plainText());
        for (int width : {0, 37, 400}) {
            const auto lines = HTMLRenderer::layout(doc, width, Pictor::FontDesc());
            check(!lines.empty(), "no lines");
            std::wstring laidOut;
            for (const auto& line : lines)
                for (const auto& fragment : line)
                    laidOut += fragment.text;
            std::wstring plain;
            for (wchar_t c : expected)
                if (c != L'\n')
                    plain.push_back(c);
            check(withoutSpaces(laidOut) == plain, "layout lost or added characters");
        }
    }
    return 0;
}
