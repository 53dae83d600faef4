// Fast measuring against the full text shaper. The shaper's own unhinted layout of the same text is the
// reference: widths must stay within a pixel of it (in practice they are equal to the 1/1024 pixel).
#include "toolkit/gfx/Font.h"
#include "toolkit/gfx/detail/FontEngine.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <string>
#include <vector>

using namespace Pictor;

namespace {

double shaperWidth(const Font& font, std::string_view utf8)
{
    return font.engine().shapeWithPango(utf8).width / double(kShaperUnits);
}

std::vector<Cv::Ptr<Font>> fontsUnderTest()
{
    return {loadFont(FontDesc()), loadFont(FontDesc("DejaVu Sans", 11, fontStyleBold)),
            loadFont(FontDesc("DejaVu Sans", 17, fontStyleItalic)), loadFont(FontDesc("DejaVu Serif", 14)),
            loadFont(FontDesc("DejaVu Sans Mono", 12)), loadFont(getTitleFontDesc())};
}

const char* const kVariedText[] = {
    "The quick brown fox jumps over the lazy dog.",
    "AVATAR WAVE Tokyo LT Yo, P. r. y. To AV",                      // kerning pairs
    "office affluent flow fifty waffle",                            // ligatures the font forms
    "Crème brûlée à la carte, naïve façade, Łódź, Ærøskøbing",      // accents
    "12:30 -45.6% $100 (1,000.50) #3 @user x_y a|b [c] {d}",        // digits and punctuation only runs too
    "“Curly quotes” – en dash — em dash … ‹›«» € ™ → ←",            // general punctuation and symbols
    "non\u00a0breaking space",
    "Καλημέρα κόσμε",                                               // Greek: the shaper's
    "Привет, мир",                                                  // Cyrillic
    "مرحبا بالعالم",                                                // Arabic, right to left and joined
    "שלום עולם",                                                    // Hebrew
    "日本語のテキスト",                                              // CJK from a fallback font
    "e\u0301te\u0301 combining marks",
    "tab\tseparated",
    "emoji 😀 here",
};

std::string randomLine(std::mt19937& rng)
{
    static const char* const words[] = {
        "the", "of", "Render", "Timeline", "clip", "AVATAR", "Tokyo", "office", "file", "flow", "affine", "Wave",
        "12.5%", "00:01:02", "1920x1080", "(default)", "\"quoted\"", "e.g.", "x-ray", "café", "naïve", "Łódź",
        "Ærø", "…", "—", "→", "€5", "T.", "Yo,", "ff", "fi", "W", "AV", "To", "don't", "[a]", "{b}", "a/b"};
    std::string line;
    const int count = 1 + static_cast<int>(rng() % 12);
    for (int i = 0; i < count; ++i) {
        if (i)
            line += (rng() % 8 == 0) ? "  " : " ";
        line += words[rng() % std::size(words)];
    }
    return line;
}

} // namespace

TEST(FontMeasuring, VariedTextMatchesTheShaper)
{
    for (const auto& font : fontsUnderTest()) {
        for (const char* text : kVariedText) {
            const double fast = font->measureWidth(std::string_view(text));
            EXPECT_NEAR(fast, shaperWidth(*font, text), 1.0) << text << " in " << font->desc().name.c_str();
            EXPECT_GT(fast, 0.0) << text;
        }
    }
}

TEST(FontMeasuring, KerningAndLigaturesAreApplied)
{
    // If the tables ignored kerning these pairs would be as wide as their letters apart.
    const auto font = loadFont(FontDesc());
    for (const char* pair : {"AV", "To", "Yo", "LT"}) {
        const std::string text(pair);
        const double apart = font->measureWidth(text.substr(0, 1)) + font->measureWidth(text.substr(1, 1));
        EXPECT_LT(font->measureWidth(text), apart - 0.2) << pair;
        EXPECT_NEAR(font->measureWidth(text), shaperWidth(*font, text), 1e-3) << pair;
    }
    EXPECT_NEAR(font->measureWidth(std::string_view("office")), shaperWidth(*font, "office"), 1e-3);
}

TEST(FontMeasuring, RandomLinesMatchTheShaperAndBothEncodingsAgree)
{
    std::mt19937 rng(20240611);
    double worst = 0.0;
    for (const auto& font : fontsUnderTest()) {
        for (int i = 0; i < 400; ++i) {
            const std::string line = randomLine(rng);
            const double fast = font->measureWidth(std::string_view(line));
            worst = std::max(worst, std::abs(fast - shaperWidth(*font, line)));
            const auto wide = fromUTF8(line);
            EXPECT_DOUBLE_EQ(fast, font->measureWidth(std::wstring_view(wide))) << line;
        }
    }
    EXPECT_LT(worst, 1.0);
}

TEST(FontMeasuring, BadTextGetsAFiniteWidthInsteadOfACrash)
{
    const auto font = loadFont(FontDesc());
    const std::string invalid[] = {std::string("\xff\xfe\xfd", 3), std::string("ab\0cd", 5), "\xc3", "\xed\xa0\x80",
                                   std::string(3000, 'W')};
    for (const auto& text : invalid) {
        const double w = font->measureWidth(text);
        EXPECT_TRUE(std::isfinite(w));
        EXPECT_GE(w, 0.0);
    }
    const std::wstring wide{wchar_t(0xD800), L'a', wchar_t(0x110000), wchar_t(0)};
    EXPECT_TRUE(std::isfinite(font->measureWidth(std::wstring_view(wide))));
}

TEST(FontMeasuring, ExtentsCountLinesAndKeepTheLineBox)
{
    const auto font = loadFont(FontDesc());
    const TextExtents empty = font->getExtents(std::string_view(""));
    EXPECT_EQ(empty.width, 0.0);
    EXPECT_EQ(empty.lines, 1);
    EXPECT_DOUBLE_EQ(empty.height, font->lineHeight());
    EXPECT_NEAR(font->ascent() + font->descent(), font->lineHeight(), 1e-9);
    EXPECT_GT(font->ascent(), font->descent());

    const TextExtents three = font->getExtents(std::string_view("a\nbbbb\ncc"));
    EXPECT_EQ(three.lines, 3);
    EXPECT_NEAR(three.width, font->measureWidth(std::string_view("bbbb")), 1e-3);
    EXPECT_NEAR(three.height, 3 * font->lineHeight(), 0.5);
}

TEST(FontLoading, EqualDescriptionsShareOneFont)
{
    const auto a = loadFont(FontDesc("DejaVu Sans", 12));
    const auto b = loadFont(FontDesc("DejaVu Sans", 12));
    const auto bigger = loadFont(FontDesc("DejaVu Sans", 24));
    EXPECT_EQ(a.get(), b.get());
    EXPECT_NE(a.get(), bigger.get());
    EXPECT_NEAR(bigger->measureWidth(std::string_view("Width")), 2 * a->measureWidth(std::string_view("Width")), 0.5);
    // An empty name is the default family; the size is clamped, never rejected.
    EXPECT_EQ(loadFont(FontDesc("", getDefaultFontSize())).get(), loadFont(FontDesc()).get());
    EXPECT_GT(loadFont(FontDesc("DejaVu Sans", 0))->lineHeight(), 0.0);
    EXPECT_GT(loadFont(FontDesc("No Such Family Anywhere", 13))->measureWidth(std::string_view("text")), 0.0);
}
