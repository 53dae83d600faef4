// Text that is only read: the markup reader and its layout, links, labels and wrapped text blocks.

#include "toolkit/gfx/Font.h"
#include "toolkit/gfx/WordWrappingTextRenderer.h"
#include "toolkit/testing/UiHarness.h"
#include "toolkit/ui/GlobManager.h"
#include "toolkit/ui/UifStd.h"
#include "toolkit/widgets/HTMLRenderer.h"
#include "toolkit/widgets/MultiLineTextBox.h"
#include "toolkit/widgets/TextLabel.h"

#include <gtest/gtest.h>

#include <string>

namespace {

const Palette& scheme()
{
    return UifStd::getColourScheme();
}

HtmlDocument parse(std::wstring_view markup)
{
    return HTMLRenderer::parse(markup, scheme());
}

TEST(HtmlParseTest, StylesColoursAndLinksBecomeRuns)
{
    const HtmlDocument doc = parse(L"a <b>bold <i>both</i></b> <font color=\"#ff8000\">warm</font> "
                                   L"<a href=\"https://x.org/?a=1&amp;b=2\">go</a>");
    ASSERT_EQ(doc.runs.size(), 7u);
    EXPECT_EQ(doc.runs[0].text, L"a ");
    EXPECT_EQ(doc.runs[1].text, L"bold ");
    EXPECT_EQ(doc.runs[1].style, Pictor::fontStyleBold);
    EXPECT_EQ(doc.runs[2].style, Pictor::fontStyleBoldItalic);
    EXPECT_EQ(doc.runs[4].text, L"warm");
    EXPECT_TRUE(doc.runs[4].colour.isCloseTo(Colour::fromBytes(255, 128, 0)));
    EXPECT_TRUE(doc.runs[5].colour == scheme().text()) << "</font> restores the colour before it";
    EXPECT_EQ(doc.runs[6].href, L"https://x.org/?a=1&b=2");
    EXPECT_TRUE(doc.runs[6].colour == scheme().highlight());
    EXPECT_TRUE(doc.runs[0].href.empty());
}

TEST(HtmlParseTest, EntitiesSpacesAndBreaks)
{
    EXPECT_EQ(parse(L"&lt;tag&gt; &amp; &quot;q&quot; &#65;&#x42; &nbsp; &bogus; & x").plainText(),
              L"<tag> & \"q\" AB &nbsp; &bogus; & x")
        << "the four named entities and numeric ones are read; anything else stays as typed";
    EXPECT_EQ(parse(L"  many \n\t spaces   here  ").plainText(), L"many spaces here");
    EXPECT_EQ(parse(L"one<br>two<br/>three").plainText(), L"one\ntwo\nthree");
    EXPECT_EQ(parse(L"<p>first</p><p>second</p>").plainText(), L"first\n\nsecond");
    EXPECT_EQ(parse(L"<p><p>x<br><p>y<br><br>").plainText(), L"x\n\ny")
        << "no blank line at the start, none doubled, and no break left dangling at the end";
}

TEST(HtmlParseTest, AnythingElseIsShownOrLeftOutNeverRefused)
{
    EXPECT_EQ(parse(L"1 < 2 and 3 <4").plainText(), L"1 < 2 and 3 <4") << "a '<' that opens no tag is text";
    EXPECT_EQ(parse(L"x <unclosed tag").plainText(), L"x <unclosed tag");
    EXPECT_EQ(parse(L"<table><tr>cell</tr></table><!-- note -->end").plainText(), L"cellend");
    EXPECT_EQ(parse(L"keep<!-- open comment").plainText(), L"keep");
    EXPECT_EQ(parse(L"</b></i></font></a>plain").plainText(), L"plain");
    const HtmlDocument unbalanced = parse(L"</b>x");
    ASSERT_EQ(unbalanced.runs.size(), 1u);
    EXPECT_EQ(unbalanced.runs[0].style, 0) << "a stray close does not make later text lighter than plain";
    const HtmlDocument badColour = parse(L"<font color=red>a<font color='#12345'>b</font>c</font>d");
    ASSERT_FALSE(badColour.runs.empty());
    EXPECT_TRUE(badColour.runs[0].colour == scheme().text()) << "colours the reader cannot read change nothing";
    EXPECT_TRUE(parse(L"").empty());
    EXPECT_TRUE(parse(L"<br><p>   ").empty());
    EXPECT_EQ(parse(L"<A HREF=x>Up</A>").runs.at(0).href, L"x") << "tag and attribute names in any case";
}

TEST(HtmlLayoutTest, WrapsAtSpacesAndKeepsStyledWordsWhole)
{
    const Pictor::FontDesc font;
    const Cv::Ptr<Pictor::Font> f = Pictor::loadFont(font);
    const HtmlDocument doc = parse(L"alpha <b>bo</b>ld gamma");
    // Wide enough for everything: one line.
    EXPECT_EQ(HTMLRenderer::calcNumDisplayLines(doc, 1000, font), 1);
    // Just wide enough for "alpha bold": the styled word is not split between its runs.
    const int width = f->pixelWidth(L"alpha bold") + 2;
    const auto lines = HTMLRenderer::layout(doc, width, font);
    ASSERT_EQ(lines.size(), 2u);
    std::wstring first;
    for (const auto& fragment : lines[0])
        first += fragment.text;
    EXPECT_EQ(first, L"alpha bold");
    EXPECT_EQ(lines[1].front().text, L"gamma") << "no space at the start of a line";
    for (const auto& line : lines)
        for (const auto& fragment : line)
            EXPECT_LE(fragment.x + fragment.width, width + 0.01);

    // A word wider than the line is broken between characters, and nothing is lost.
    const HtmlDocument longWord = parse(L"abcdefghijklmnopqrstuvwxyz");
    const auto broken = HTMLRenderer::layout(longWord, f->measureWidth(std::wstring_view(L"abcdefgh")), font);
    EXPECT_GE(broken.size(), 3u);
    std::wstring all;
    for (const auto& line : broken)
        for (const auto& fragment : line)
            all += fragment.text;
    EXPECT_EQ(all, L"abcdefghijklmnopqrstuvwxyz");
    EXPECT_EQ(HTMLRenderer::calcNumDisplayLines(longWord, 0, font), 26) << "no room: one character a line";
    EXPECT_EQ(HTMLRenderer::calcNumDisplayLines(parse(L""), 100, font), 1);
    EXPECT_EQ(HTMLRenderer::calcNumDisplayLines(parse(L"a<p>b<br>c"), 100, font), 4);
}

TEST(HtmlRendererTest, ClickingALinkTellsTheOwnerItsAddress)
{
    UiHarness ui(400, 200);
    auto* r = ui.make<HTMLRenderer>(
        HTMLRenderer::InitArgs(L"see <a href=\"https://example.org/π\">the manual</a> now", 300, 40, scheme()),
        Glob::BottomLeft(10, 10));
    const auto lines = HTMLRenderer::layout(r->getDocument(), 300, r->getFontDesc());
    ASSERT_EQ(lines.size(), 1u);
    double linkX = -1;
    for (const auto& fragment : lines[0])
        if (!r->getDocument().runs[fragment.run].href.empty())
            linkX = fragment.x + fragment.width / 2;
    ASSERT_GT(linkX, 0);
    const int lineY = r->getHeight() - UifStd::getWidgetGap() / 2 - 8;
    EXPECT_TRUE(r->linkAt({2, lineY}).empty());

    ui.click(r, XY<int>(2, lineY));
    EXPECT_EQ(ui.owner().count(), 0u) << "plain text is not a link";
    ui.click(r, XY<int>(static_cast<int>(linkX), lineY));
    ASSERT_EQ(ui.owner().count(), 1u);
    EXPECT_TRUE(HTMLRenderer::isLinkMsg(ui.owner().last()));
    EXPECT_EQ(HTMLRenderer::linkFromMsg(ui.owner().last()), L"https://example.org/π");

    ui.moveTo(r, XY<int>(static_cast<int>(linkX), lineY));
    EXPECT_EQ(ui.screen().getCursor(), CursorHand);

    // Pressing a link and releasing elsewhere opens nothing.
    ui.drag(r, {static_cast<int>(linkX), lineY}, {2, lineY});
    EXPECT_EQ(ui.owner().count(), 1u);
    EXPECT_FALSE(HTMLRenderer::isLinkMsg("html_link"));
    EXPECT_FALSE(HTMLRenderer::isLinkMsg("html_linker x"));
}

TEST(HtmlRendererTest, DrawsStyledTextInItsColours)
{
    UiHarness ui(400, 200);
    auto* r = ui.make<HTMLRenderer>(
        HTMLRenderer::InitArgs(L"<font color=\"#ff0000\">██████</font>", 200, 30, scheme()), Glob::BottomLeft(10, 10));
    // Somewhere in the block of full blocks the pixels are the colour asked for.
    bool red = false;
    for (int x = 1; x < 40 && !red; ++x)
        for (int y = 2; y < 28 && !red; ++y)
            red = ui.pixelAt(r, {x, y}).isCloseTo(Colour::fromBytes(255, 0, 0), 0.05);
    EXPECT_TRUE(red);
    r->setEnabled(false);
    bool stillRed = false;
    for (int x = 1; x < 40 && !stillRed; ++x)
        for (int y = 2; y < 28 && !stillRed; ++y)
            stillRed = ui.pixelAt(r, {x, y}).isCloseTo(Colour::fromBytes(255, 0, 0), 0.05);
    EXPECT_FALSE(stillRed) << "a disabled text is dimmed whatever its colour";
}

// ---------------------------------------------------------------------------------------------------------
// Labels and text blocks

TEST(TextBlockTest, HeightForLinesGrowsByTheLineHeight)
{
    const Cv::Ptr<Pictor::Font> f = Pictor::loadFont(Pictor::FontDesc(getDefaultFontName(), 13));
    const int one = MultiLineTextBox::calcHeightForLines(1, 13, 6);
    const int three = MultiLineTextBox::calcHeightForLines(3, 13, 6);
    EXPECT_GE(one, static_cast<int>(f->lineHeight()) + 6);
    EXPECT_NEAR(three - one, 2 * f->lineHeight(), 1.0);
    EXPECT_EQ(MultiLineTextBox::calcHeightForLines(0, 13, 6), 6);
    EXPECT_EQ(MultiLineTextBox::calcHeightForLines(-4, 13, -1), 0);
    EXPECT_GT(MultiLineTextBox::calcHeightForLines(2, 26, 0), MultiLineTextBox::calcHeightForLines(2, 13, 0));
}

TEST(TextBlockTest, AWrappedBlockSizedForItsLinesShowsTheLastOne)
{
    UiHarness ui(400, 300);
    const std::wstring text = L"one two three four five six seven eight nine ten eleven twelve";
    const int lines = WordWrappingTextRenderer::calcNumDisplayLines(text, UifStd::getDefaultFont(), 120.0);
    ASSERT_GT(lines, 1);
    const uint16_t h = MultiLineTextBox::calcHeightForLines(lines, getDefaultFontSize(), UifStd::getWidgetGap());
    auto* box = ui.make<MultiLineTextBox>(MultiLineTextBox::InitArgs(text, 120, h, scheme()), Glob::BottomLeft(10, 10));
    EXPECT_EQ(box->getNumLines(), lines);
    // Ink in the bottom line's band: the last line is drawn, not clipped away.
    const Colour back = ui.pixelAt(box, {119, 1});
    bool ink = false;
    const int lineHeight = static_cast<int>(Pictor::loadFont(UifStd::getDefaultFont())->lineHeight());
    for (int x = 0; x < 120 && !ink; ++x)
        for (int y = 2; y < lineHeight && !ink; ++y)
            ink = !ui.pixelAt(box, {x, y}).isCloseTo(back, 0.1);
    EXPECT_TRUE(ink);
}

TEST(TextBlockTest, LabelsAlignElideAndDim)
{
    UiHarness ui(400, 200);
    TextLabel::InitArgs args(UIString(L"Right"), 200, 24, scheme());
    args.alignment = TextAlignment(TextAlignment::Right, TextAlignment::VCentre);
    auto* label = ui.make<TextLabel>(args, Glob::BottomLeft(10, 10));
    const Colour back = ui.pixelAt(label, {1, 1});
    auto inkIn = [&](int x0, int x1) {
        for (int x = x0; x < x1; ++x)
            for (int y = 0; y < label->getHeight(); ++y)
                if (!ui.pixelAt(label, {x, y}).isCloseTo(back, 0.1))
                    return true;
        return false;
    };
    EXPECT_FALSE(inkIn(0, 100));
    EXPECT_TRUE(inkIn(150, 200));
    label->setAlignment(TextAlignment(TextAlignment::Left, TextAlignment::VCentre));
    EXPECT_TRUE(inkIn(0, 40));
    EXPECT_FALSE(inkIn(120, 200));

    label->setEnabled(false);
    EXPECT_TRUE(label->getTextColour() == scheme().disabledText());

    EXPECT_EQ(TextAlignment(9, -3), TextAlignment()) << "values out of range fall back to the defaults";

    label->setWordWrap(true);
    label->setString(UIString(L"a long label that wraps onto several lines at this width"));
    EXPECT_GT(label->getNumLines(), 1);
}

TEST(TextBlockTest, TextWidgetsAreMadeByTypeName)
{
    for (const char* type : {"TextBoxBase", "TitleTextBox", "NumericTextBox", "CustomTextBox", "TextLabel",
                             "MultiLineTextBox", "HTMLRenderer"}) {
        GlobCreationInfo info(120, 24);
        info.typeName = type;
        info.config.set("text", "hello");
        Glob* made = GlobManager::createGlob(info);
        ASSERT_NE(made, nullptr) << type;
        EXPECT_EQ(made->idstring(), type);
        delete made;
    }
}

} // namespace
