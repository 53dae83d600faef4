// Words holding pairs the font joins ("ff", "fi", "fl") measured and wrapped without shaping each word: the
// answers must agree with the shaper on text from a large vocabulary, and what is kept must not grow with it.
#include "toolkit/gfx/Font.h"
#include "toolkit/gfx/WordWrappingTextRenderer.h"
#include "toolkit/gfx/detail/FontEngine.h"
#include "toolkit/testing/RandomWordText.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <set>
#include <sstream>
#include <string>

using namespace Pictor;

namespace {

constexpr double kWrapWidth = 200.0;

class JoinedPairs : public ::testing::Test {
protected:
    // A font of its own, so that what it keeps comes from these lines alone.
    Cv::Ptr<Font> font = loadFont(FontDesc("DejaVu Sans", 13, fontStyleItalic));
    TestText::Vocabulary vocabulary = TestText::makeVocabulary(18000, 77);
    std::vector<std::string> lines = TestText::makeLines(vocabulary, 2000, 5);
};

} // namespace

TEST_F(JoinedPairs, WidthsOfRandomWordLinesStayWithinAPixelOfTheShaper)
{
    double worst = 0.0;
    for (const auto& line : lines) {
        const double shaped = font->engine().shapeWithPango(line).width / double(kShaperUnits);
        worst = std::max(worst, std::abs(font->measureWidth(std::string_view(line)) - shaped));
    }
    EXPECT_LT(worst, 1.0);
}

TEST_F(JoinedPairs, WrappedLineCountsOfRandomWordLinesEqualTheShapersWrap)
{
    size_t differing = 0;
    for (const auto& line : lines) {
        const auto shaped = font->engine().wrapWithPango(line, static_cast<int>(kWrapWidth * kShaperUnits));
        differing += WordWrappingTextRenderer::calcNumDisplayLines(std::string_view(line), *font, kWrapWidth)
            != static_cast<int>(shaped.size());
    }
    EXPECT_EQ(differing, 0u);
}

TEST_F(JoinedPairs, WhatIsKeptGrowsWithTheLettersMetNotWithTheWords)
{
    // Ten times the words with joined pairs keep well under twice the windows: new words soon bring no new
    // neighbours for their joined letters.
    const auto countAfter = [&](const std::vector<std::string>& text, std::set<std::string>& joinedWords) {
        for (const auto& line : text) {
            font->measureWidth(std::string_view(line));
            std::istringstream words(line);
            for (std::string word; words >> word;)
                if (word.find("ff") != std::string::npos || word.find("fi") != std::string::npos
                    || word.find("fl") != std::string::npos)
                    joinedWords.insert(word);
        }
        return font->engine().ligatureWindowCount();
    };
    std::set<std::string> joinedWords;
    const size_t fewWindows = countAfter(lines, joinedWords);
    const size_t fewWords = joinedWords.size();
    const size_t manyWindows = countAfter(TestText::makeLines(vocabulary, 20000, 6), joinedWords);

    ASSERT_GT(joinedWords.size(), 8 * fewWords);
    EXPECT_LT(manyWindows, 2 * fewWindows);
}
