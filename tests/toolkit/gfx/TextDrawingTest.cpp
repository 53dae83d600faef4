// Drawing text from kept glyphs or from the fast tables: the pixels must be exactly those of laying the text
// out in full, and what a font keeps stays within its budget, the texts used least lately going first.
#include "toolkit/gfx/Font.h"
#include "toolkit/gfx/Painter.h"
#include "toolkit/gfx/detail/FontEngine.h"
#include "toolkit/gfx/detail/ShapedTextCache.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace Pictor;

namespace {

// Ligatures, kerning, accents precomposed and combining, wide characters from a fallback font, scripts that
// run left to right, digits and punctuation, a text the font lacks a glyph for, and invalid UTF-8.
const char* const kVariedText[] = {
    "office affluent flow fifty waffle",
    "AVATAR WAVE Tokyo LT Yo, P. r. y. To AV",
    "Crème brûlée à la carte, naïve façade, Łódź, Ærøskøbing",
    "e\u0301te\u0301 with combining marks",
    "12:30 -45.6% $100 (1,000.50) #3",
    "“Curly quotes” – en dash — em dash … € ™ → ←",
    "日本語のテキスト and 한국어",
    "Καλημέρα κόσμε, Привет мир",
    "ffi ffl fj ſt",
    "\xE1\xBF invalid \xFF bytes",
    "private use \xEE\x80\x80 here",
    "Clip 123456 of the reel",
};

Image drawAll(const std::vector<Cv::Ptr<Font>>& fonts)
{
    Image image(420, 40 * static_cast<int>(std::size(kVariedText)));
    Painter painter(image);
    painter.clear(Colour(1, 1, 1));
    double y = 12.0;
    for (const char* text : kVariedText) {
        double x = 3.0;
        for (const auto& font : fonts) {
            // Fractional positions too, where rounding would show first.
            painter.drawText(std::string_view(text), *font, Colour(0.1, 0.1, 0.2), x, y);
            painter.drawText(std::string_view(text), *font, Colour(0.6, 0.1, 0.1), x + 0.375, y + 13.25);
            x += 1.5;
        }
        y += 40.0;
    }
    return image;
}

bool samePixels(const Image& a, const Image& b)
{
    if (a.width() != b.width() || a.height() != b.height())
        return false;
    for (int row = 0; row < a.height(); ++row)
        for (int col = 0; col < a.width(); ++col)
            if (a.pixel(col, row) != b.pixel(col, row))
                return false;
    return true;
}

ShapedText glyphs(size_t count)
{
    ShapedText shaped;
    shaped.glyphs.resize(count);
    return shaped;
}

} // namespace

TEST(TextDrawing, KeptGlyphsDrawExactlyThePixelsOfTheFullLayout)
{
    const std::vector<Cv::Ptr<Font>> fonts = {loadFont(FontDesc()), loadFont(FontDesc("DejaVu Sans", 17, fontStyleItalic)),
                                              loadFont(FontDesc("DejaVu Serif", 14, fontStyleBold))};
    for (const auto& font : fonts)
        font->engine().keepShapedText(false);
    const Image laidOut = drawAll(fonts);
    for (const auto& font : fonts)
        font->engine().keepShapedText(true);
    const Image firstDrawing = drawAll(fonts);
    const Image fromKeptGlyphs = drawAll(fonts);

    EXPECT_TRUE(samePixels(laidOut, firstDrawing));
    EXPECT_TRUE(samePixels(laidOut, fromKeptGlyphs));
    // Not a blank comparison: the text did put ink on the image.
    EXPECT_FALSE(samePixels(laidOut, Image(laidOut.width(), laidOut.height())));
}

TEST(TextDrawing, AFontKeepsNoMoreThanItsBudgetOfShapedText)
{
    const auto font = loadFont(FontDesc("DejaVu Sans", 12));
    Image image(200, 20);
    Painter painter(image);
    for (int i = 0; i < 20000; ++i)
        painter.drawText("Κλιπ " + std::to_string(i) + " της μπομπίνας", *font, Colour(0, 0, 0), 2, 5);
    const ShapedTextCache& kept = font->engine().shapedTexts();
    EXPECT_LE(kept.bytesHeld(), FontEngine::kShapedTextBudget);
    EXPECT_GT(kept.bytesHeld(), FontEngine::kShapedTextBudget / 2);
}

TEST(TextDrawing, OnlyTextTheShaperLaidOutIsKept)
{
    const auto font = loadFont(FontDesc("DejaVu Sans", 13));
    Image image(200, 20);
    Painter painter(image);
    const size_t before = font->engine().shapedTexts().size();
    painter.drawText(std::string_view("Clip 12 of the reel, café"), *font, Colour(0, 0, 0), 2, 5);
    EXPECT_EQ(font->engine().shapedTexts().size(), before) << "placed straight from the tables";
    painter.drawText(std::string_view("Καλημέρα 12"), *font, Colour(0, 0, 0), 2, 5);
    EXPECT_EQ(font->engine().shapedTexts().size(), before + 1);
}

TEST(ShapedTextCacheTest, TheTextUsedLeastLatelyGoesFirstWhenTheBudgetIsSpent)
{
    const size_t entry = ShapedTextCache::entryBytes("aaaa", glyphs(4));
    ShapedTextCache cache(3 * entry);
    cache.insert("aaaa", glyphs(4));
    cache.insert("bbbb", glyphs(4));
    cache.insert("cccc", glyphs(4));
    ASSERT_NE(cache.find("aaaa"), nullptr); // now the most recently used
    cache.insert("dddd", glyphs(4));

    EXPECT_EQ(cache.find("bbbb"), nullptr);
    EXPECT_NE(cache.find("aaaa"), nullptr);
    EXPECT_NE(cache.find("cccc"), nullptr);
    EXPECT_NE(cache.find("dddd"), nullptr);
    EXPECT_EQ(cache.bytesHeld(), 3 * entry);
}

TEST(ShapedTextCacheTest, ATextLargerThanTheWholeBudgetIsNotKept)
{
    ShapedTextCache cache(ShapedTextCache::entryBytes("small", glyphs(5)));
    cache.insert("small", glyphs(5));
    const ShapedText& big = cache.insert("big", glyphs(500));

    EXPECT_EQ(big.glyphs.size(), 500u);
    EXPECT_EQ(cache.find("big"), nullptr);
    EXPECT_NE(cache.find("small"), nullptr);
}
