// Word wrapping must give the same lines as the text shaper's own wrapping of the same text, so that boxes sized
// from the count fit what is drawn.
#include "toolkit/gfx/detail/FontEngine.h"
#include "toolkit/gfx/detail/LineBreaking.h"
#include "toolkit/gfx/WordWrappingTextRenderer.h"
#include "toolkit/support/LightweightString.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

using namespace Pictor;

namespace {

std::vector<FontEngine::PangoLine> shaperLines(const Font& font, std::string_view utf8, double width)
{
    return font.engine().wrapWithPango(utf8, static_cast<int>(width * kShaperUnits));
}

const char* const kTexts[] = {
    "",
    "word",
    "The quick brown fox jumps over the lazy dog while the render queue finishes.",
    "Extraordinarily long words like incomprehensibilities must be broken by character.",
    "aaa    bbb   trailing spaces   ",
    "office affluent efficient shuffle: ligature words wrap as whole words",
    "first line\nsecond line that is somewhat longer\n\nafter an empty line\n",
    "numbers 1,000.50 and (12)% and -3 and x-ray and foo/bar and what?no and a.(b",
    "Crème brûlée à la carte pour la façade naïve de Łódź",
    "Ellipsis… em—dash and “quotes” go through the shaper's break rules",
    "Greek Καλημέρα κόσμε mixed in falls back to the shaper",
    "tab\tseparated\tvalues",
};

} // namespace

TEST(WordWrap, CountsAndBreaksAgreeWithTheShaper)
{
    // At 60 pixels the wider characters' advances no longer fit the wrapper's 16-bit step table.
    for (const auto& desc : {FontDesc(), FontDesc("DejaVu Sans", 17, fontStyleItalic), FontDesc("DejaVu Serif", 11),
                             FontDesc("DejaVu Sans", 60)}) {
        const auto font = loadFont(desc);
        for (const char* text : kTexts) {
            for (double width : {1.0, 9.0, 20.0, 33.0, 57.5, 80.0, 121.0, 200.0, 333.0, 1000.0}) {
                const auto expected = shaperLines(*font, text, width);
                const auto lines = WordWrappingTextRenderer::calcLineBreaks(std::string_view(text), *font, width);
                ASSERT_EQ(lines.size(), expected.size()) << text << " at " << width;
                EXPECT_EQ(WordWrappingTextRenderer::calcNumDisplayLines(std::string_view(text), *font, width),
                          static_cast<int>(expected.size()));
                for (size_t i = 0; i < lines.size(); ++i) {
                    EXPECT_EQ(lines[i].begin, expected[i].begin) << text << " at " << width << " line " << i;
                    EXPECT_EQ(lines[i].end, expected[i].end) << text << " at " << width << " line " << i;
                    EXPECT_EQ(lines[i].hyphen, expected[i].hyphen) << text << " at " << width << " line " << i;
                }
            }
        }
    }
}

TEST(WordWrap, LinesCoverTheTextInOrder)
{
    const auto font = loadFont(FontDesc());
    const std::wstring text = L"Lines must cover every character once, in order,\nwith nothing lost at the breaks.";
    const auto lines = WordWrappingTextRenderer::calcLineBreaks(std::wstring_view(text), *font, 70.0);
    ASSERT_GT(lines.size(), 3u);
    std::wstring joined;
    size_t previousEnd = 0;
    for (const auto& line : lines) {
        ASSERT_LE(line.begin, line.end);
        // Only the newline ending a paragraph lies between one line and the next.
        const std::wstring between = text.substr(previousEnd, line.begin - previousEnd);
        EXPECT_TRUE(between.empty() || between == L"\n");
        joined += text.substr(line.begin, line.end - line.begin);
        previousEnd = line.end;
        // Nothing but the one space that may hang past the edge is wider than the box.
        std::wstring shown = text.substr(line.begin, line.end - line.begin);
        if (!shown.empty() && shown.back() == L' ')
            shown.pop_back();
        if (shown.size() > 1) {
            EXPECT_LE(font->measureWidth(std::wstring_view(shown)), 70.0) << std::string(toUTF8(shown).c_str());
        }
    }
    EXPECT_EQ(previousEnd, text.size());
    std::wstring withoutNewlines = text;
    std::erase(withoutNewlines, L'\n');
    EXPECT_EQ(joined, withoutNewlines);
}

TEST(WordWrap, WordsSplitBetweenLettersShowAHyphen)
{
    const auto font = loadFont(FontDesc());
    const std::string text = "incomprehensibilities";
    const auto lines = WordWrappingTextRenderer::calcLineBreaks(std::string_view(text), *font, 40.0);
    ASSERT_GT(lines.size(), 2u);
    for (size_t i = 0; i + 1 < lines.size(); ++i) {
        EXPECT_TRUE(lines[i].hyphen);
    }
    EXPECT_FALSE(lines.back().hyphen);
    // Digits are not a word: no hyphen.
    const auto digits = WordWrappingTextRenderer::calcLineBreaks(std::string_view("1234567890123"), *font, 30.0);
    ASSERT_GT(digits.size(), 1u);
    EXPECT_FALSE(digits.front().hyphen);
}

TEST(WordWrap, EdgeCases)
{
    const auto font = loadFont(FontDesc());
    EXPECT_EQ(WordWrappingTextRenderer::calcNumDisplayLines(std::wstring_view(L""), *font, 100.0), 1);
    EXPECT_EQ(WordWrappingTextRenderer::calcNumDisplayLines(std::wstring_view(L"\n"), *font, 100.0), 2);
    EXPECT_EQ(WordWrappingTextRenderer::calcNumDisplayLines(std::wstring_view(L"a\n\nb"), *font, 100.0), 3);
    // No room at all still shows every character, one per line.
    EXPECT_EQ(WordWrappingTextRenderer::calcNumDisplayLines(std::wstring_view(L"abc"), *font, 0.0), 3);
    EXPECT_EQ(WordWrappingTextRenderer::calcNumDisplayLines(std::wstring_view(L"abc"), *font, -50.0), 3);
    EXPECT_EQ(WordWrappingTextRenderer::calcNumDisplayLines(std::wstring_view(L"a b c d"), *font, 1e12), 1);
    // The description overloads load the same font.
    const std::wstring text = L"The description overloads wrap exactly like the font ones";
    const int byFont = WordWrappingTextRenderer::calcNumDisplayLines(std::wstring_view(text), *font, 90.0);
    EXPECT_EQ(WordWrappingTextRenderer::calcNumDisplayLines(text, 90, FontDesc()), byFont);
    EXPECT_EQ(WordWrappingTextRenderer::calcNumDisplayLines(text, FontDesc(), 90.0), byFont);
    // Surrogates and other values that are no characters must not derail the wide path.
    const std::wstring odd{L'a', wchar_t(0xD800), L' ', wchar_t(0x110000), L'b'};
    EXPECT_GE(WordWrappingTextRenderer::calcNumDisplayLines(std::wstring_view(odd), *font, 5.0), 1);
}

// The wrapper classifies break positions only near the edge of each line, so every way a line can end near the
// edge is tried: widths in half-pixel steps over texts whose breaks are unusual just there.
TEST(WordWrap, EveryWidthNearTheEdgeAgreesWithTheShaper)
{
    const char* const texts[] = {
        "after a space ( no break before a bracket's content ( nor ) here ! and ? there",
        "spaces at    the boundary     wrap   trailing  ",
        "figures 1,000.50 and (12)% and -3.5 and $100 stay whole across 2024-06-11 00:01:02",
        "office effect shuffle fluffier affine waffle: ligature words at every position",
        "file/office off-flow fi-fi x-ray ff/ffl self-effacing words with breaks inside ligatures",
        // So many ligatures that the shaped word is narrower than its text without its last letter.
        "a fififififififififi/fififi-fififi/fi b fiflfiflfiflfifl-fiflfifl",
        "café naïve Ærø Łódź résumé façade déjà vu Crème brûlée à la carte",
        "100\u00a0km and 5\u00a0%: glue keeps them together\u2002en\u2002spaces\u2003em",
        "Pneumonoultramicroscopicsilicovolcanoconiosis is longer than any line here",
        "short\nlines\n\nwith\nnewlines at the end\n",
        "Greek Καλημέρα κόσμε among Latin words",
        "AVÀ TÝ Wå Yó LÝ Ťá Ŵŷ: kerning pairs beyond ASCII",
        "-1,000.50 (12)% 00:01:02 $100 +3 [4] {5}",            // no letter: the other kerning tables
        "combining e\u0301 marks and a\u0308 letters",
        "\"Main\" e.g. H.264 MPEG-4 (default) 25fps 1920x1080 12.5%",
    };
    for (const auto& desc : {FontDesc(), FontDesc("DejaVu Serif", 15, fontStyleBold)}) {
        const auto font = loadFont(desc);
        for (const char* text : texts) {
            const std::wstring wide = fromUTF8(text).str();
            for (double width = 4.0; width <= 260.0; width += 0.5) {
                const auto expected = shaperLines(*font, text, width);
                const auto lines = WordWrappingTextRenderer::calcLineBreaks(std::string_view(text), *font, width);
                ASSERT_EQ(lines.size(), expected.size()) << text << " at " << width;
                for (size_t i = 0; i < lines.size(); ++i) {
                    ASSERT_EQ(lines[i].end, expected[i].end) << text << " at " << width << " line " << i;
                    ASSERT_EQ(lines[i].hyphen, expected[i].hyphen) << text << " at " << width << " line " << i;
                }
                ASSERT_EQ(WordWrappingTextRenderer::calcNumDisplayLines(std::string_view(text), *font, width),
                          static_cast<int>(expected.size()))
                    << text << " at " << width;
                ASSERT_EQ(WordWrappingTextRenderer::calcNumDisplayLines(std::wstring_view(wide), *font, width),
                          static_cast<int>(expected.size()))
                    << text << " at " << width;
            }
        }
    }
}

TEST(LineBreakRules, AgreeWithTheShaperForEveryCharacterTheyKnow)
{
    std::vector<uint16_t> known;
    for (int slot = 0; slot < FontEngine::kTableSize; ++slot) {
        if (FontEngine::charInfo(slot).flags & charWrapSimple)
            known.push_back(static_cast<uint16_t>(slot));
    }
    ASSERT_GT(known.size(), 500u);
    const std::string ascii = " aZ09-.,:;!?'\"()[]{}/|\\$%+#&*@^_`~=<>";
    std::mt19937 rng(99);
    std::vector<uint8_t> fast, reference;
    for (int i = 0; i < 20000; ++i) {
        std::vector<uint16_t> slots(1 + rng() % 12);
        for (auto& s : slots)
            s = (i % 2) ? known[rng() % known.size()] : static_cast<uint16_t>(ascii[rng() % ascii.size()]);
        ASSERT_TRUE(computeBreakFlags(slots.data(), slots.size(), fast));
        ASSERT_TRUE(computeBreakFlagsWithShaper(slots.data(), slots.size(), reference));
        ASSERT_EQ(fast, reference) << "case " << i;
    }
}

// Text goes to table slots sixteen bytes at a time while it is printable ASCII; anything else at any place in
// or across those blocks must come out as character by character.
TEST(WrapSlots, BlocksOfAsciiMapLikeSingleCharacters)
{
    const auto font = loadFont(FontDesc());
    const FontEngine& engine = font->engine();
    const char* const odd[] = {"é", "\n", "Ł", "€", "\t", "\x7f", "\xff", "Ω"};
    std::vector<uint16_t> slots;
    std::vector<uint32_t> offsets, newlines;
    for (const char* insert : odd) {
        for (size_t at = 0; at <= 40; ++at) {
            std::string text(40, 'x');
            for (size_t i = 0; i < text.size(); ++i)
                text[i] = static_cast<char>('!' + (i * 7) % 94);
            text.insert(at, insert);
            text.insert(std::min(text.size(), at + 17), insert); // a second one in a later block
            // The reference: each character alone.
            std::vector<uint16_t> expectedSlots;
            std::vector<uint32_t> expectedOffsets, expectedNewlines;
            bool expectedOk = true;
            for (size_t i = 0; i < text.size();) {
                const auto c = static_cast<unsigned char>(text[i]);
                const size_t length = c < 0x80 ? 1 : c < 0xE0 ? 2 : c < 0xF0 ? 3 : 4;
                const std::wstring one = fromUTF8(std::string_view(text).substr(i, length)).str();
                const int slot = one.size() == 1 ? FontEngine::tableIndex(static_cast<uint32_t>(one[0])) : -1;
                if (slot == '\n')
                    expectedNewlines.push_back(static_cast<uint32_t>(expectedSlots.size()));
                else if (slot < 0 || c == 0xFF || !(FontEngine::charInfo(slot).flags & charInTables))
                    expectedOk = false;
                expectedOffsets.push_back(static_cast<uint32_t>(i));
                expectedSlots.push_back(static_cast<uint16_t>(std::max(slot, 0)));
                i += length;
            }
            expectedOffsets.push_back(static_cast<uint32_t>(text.size()));
            const bool ok = engine.toSlots(std::string_view(text), slots, &offsets, &newlines);
            ASSERT_EQ(ok, expectedOk) << insert << " at " << at;
            if (!ok)
                continue;
            EXPECT_EQ(slots, expectedSlots) << insert << " at " << at;
            EXPECT_EQ(offsets, expectedOffsets) << insert << " at " << at;
            EXPECT_EQ(newlines, expectedNewlines) << insert << " at " << at;
        }
    }
}

// A scanner picked up in the middle of a paragraph must classify the rest exactly as one that read it all.
TEST(LineBreakRules, ResumingMidParagraphMatchesReadingFromTheStart)
{
    std::vector<uint16_t> known;
    for (int slot = 0; slot < FontEngine::kTableSize; ++slot) {
        if (FontEngine::charInfo(slot).flags & charWrapSimple)
            known.push_back(static_cast<uint16_t>(slot));
    }
    // Digits, separators, brackets and spaces dominate, so that long digit runs and space runs reach back
    // across the resume point.
    const std::string ascii = "  0123456789.,:/%$()[]-aZ!?'\"";
    std::mt19937 rng(5);
    std::vector<uint8_t> flags;
    for (int i = 0; i < 5000; ++i) {
        std::vector<uint16_t> slots(2 + rng() % 20);
        for (auto& s : slots)
            s = (rng() % 8) ? static_cast<uint16_t>(ascii[rng() % ascii.size()]) : known[rng() % known.size()];
        ASSERT_TRUE(computeBreakFlags(slots.data(), slots.size(), flags));
        const CharInfo* info = &FontEngine::charInfo(0);
        for (size_t at = 1; at < slots.size(); ++at) {
            LineBreakScanner scanner = LineBreakScanner::resumeAt(slots.data(), at);
            for (size_t p = at; p < slots.size(); ++p) {
                const BreakClass after = p + 1 < slots.size() ? info[slots[p + 1]].breakClass : BreakClass::Other;
                ASSERT_EQ(scanner.step(info[slots[p - 1]], info[slots[p]], after), flags[p])
                    << "case " << i << " resumed at " << at << " position " << p;
            }
        }
    }
}

TEST(LineBreakRules, NumbersAndBracketsStayWhole)
{
    const auto breaksIn = [](const char* text) {
        std::vector<uint16_t> slots;
        for (const char* p = text; *p; ++p)
            slots.push_back(static_cast<uint16_t>(*p));
        std::vector<uint8_t> flags;
        EXPECT_TRUE(computeBreakFlags(slots.data(), slots.size(), flags));
        std::vector<size_t> at;
        for (size_t i = 1; i < slots.size(); ++i) {
            if (flags[i] & breakLine)
                at.push_back(i);
        }
        return at;
    };
    EXPECT_TRUE(breaksIn("1,000.50").empty());
    EXPECT_TRUE(breaksIn("(12)%").empty());
    EXPECT_EQ(breaksIn("x -1"), std::vector<size_t>{2});  // before "-1", never inside it
    EXPECT_EQ(breaksIn("x-ray"), std::vector<size_t>{2}); // after the hyphen
    EXPECT_EQ(breaksIn("a ( b"), std::vector<size_t>{2}); // not after an opening bracket, even past spaces
}
