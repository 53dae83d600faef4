#pragma once
// HTMLRenderer: shows a short text with a little markup (bold, italic, colour, line and paragraph breaks, links)
// word-wrapped to its width. The markup it understands is described in docs/html-subset.md; anything else is
// shown as text or left out, never refused.
//
// Reading and showing are apart: parse() turns markup into an HtmlDocument (plain data, testable without a
// screen), layout() breaks a document into lines for a width, and the widget draws those lines. A panel that
// sizes a row to its text parses once, asks calcNumDisplayLines for the width, and makes the widget that high
// (MultiLineTextBox::calcHeightForLines).
//
//   input                      | renderer does
//   ---------------------------+----------------------------------------------------------------------------
//   pointer over a link        | hand cursor
//   press and release on a link| the owner hears linkClickedMsg followed by a space and the link's address
//                              | (UTF-8); isLinkMsg / linkFromMsg take such a message apart
//   anything else              | nothing: the text is for reading

#include "toolkit/gfx/FontDesc.h"
#include "toolkit/gfx/FontUser.h"
#include "toolkit/support/Colour.h"
#include "toolkit/support/LightweightString.h"
#include "toolkit/ui/Glob.h"
#include "toolkit/ui/Transient.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

struct HtmlRun {
    enum Kind : uint8_t {
        Text,
        LineBreak,      // <br>: the next run starts a new line
        ParagraphBreak, // between paragraphs: a new line after an empty one
    };

    bool operator==(const HtmlRun&) const = default;

    Kind kind = Text;
    // Pictor::FontStyle bits.
    uint8_t style = 0;
    // Spaces in the markup are already collapsed to single spaces here.
    std::wstring text;
    Colour colour;
    // Not empty inside a link.
    std::wstring href;
};

struct HtmlDocument {
    // The text as a reader sees it, breaks as newlines (two for a paragraph).
    std::wstring plainText() const;
    bool empty() const { return runs.empty(); }

    std::vector<HtmlRun> runs;
};

class HTMLRenderer : public Glob, public Pictor::FontUser {
public:
    struct InitArgs : GlobCreationInfo {
        InitArgs() = default;
        // The markup is parsed with the palette as its colour scheme.
        InitArgs(LightweightString<wchar_t> markupText, uint16_t w, uint16_t h, const Palette& pal = Palette(),
                 Canvas* c = nullptr)
            : GlobCreationInfo(w, h, pal, c), markup(std::move(markupText))
        {
        }
        // For renderers made by type name: the "markup" setting (UTF-8).
        InitArgs(const GlobCreationInfo& info);

        LightweightString<wchar_t> markup;
        // Empty: the default interface font.
        Pictor::FontDesc font;
        // Room above and below the text, as MultiLineTextBox::calcHeightForLines counts it; -1: the widget gap.
        int gap = -1;
    };

    // One piece of a laid-out line: part of one run, at x pixels from the line's start.
    struct Fragment {
        size_t run = 0;
        std::wstring text;
        double x = 0.0;
        double width = 0.0;
    };
    using Line = std::vector<Fragment>;

    explicit HTMLRenderer(const InitArgs& args);
    HTMLRenderer(uint16_t width, uint16_t height, const Palette& palette = Palette(), Canvas* canvas = nullptr);
    HTMLRenderer(const HTMLRenderer&) = default;
    HTMLRenderer(HTMLRenderer&&) = default;
    HTMLRenderer& operator=(const HTMLRenderer&) = default;
    HTMLRenderer& operator=(HTMLRenderer&&) = default;
    ~HTMLRenderer() override;

    LightweightString<char> idstring() const override;

    // ---- Reading and laying out (no widget needed)
    // Plain text takes the scheme's text colour, links its highlight colour.
    static HtmlDocument parse(std::wstring_view markup, const Palette& colourScheme);
    // The lines of the document at a width (at least one line, even for an empty document). A word wider
    // than the whole width is broken between characters.
    static std::vector<Line> layout(const HtmlDocument& doc, double width, const Pictor::FontDesc& font);
    static int calcNumDisplayLines(const HtmlDocument& doc, int width,
                                   const Pictor::FontDesc& font = Pictor::FontDesc());

    // ---- The widget's text
    void setText(const LightweightString<wchar_t>& markup);
    void setDocument(HtmlDocument doc);
    const HtmlDocument& getDocument() const { return m_doc; }
    // The lines this renderer's text takes at a width, in its font.
    int calcNumDisplayLines(int width) const;
    // The address of the link at a point of the widget, or empty.
    std::wstring linkAt(XY<int> local) const;

    static constexpr const char* linkClickedMsg = "html_link";
    static bool isLinkMsg(const LightweightString<char>& message);
    static LightweightString<wchar_t> linkFromMsg(const LightweightString<char>& message);

    // Called by the toolkit
    bool react(const Event& event) override;
    void drawText() override;
    int contextCursor(const XY<int>& local) override;
    void reshape() override;
    void setFont(const Pictor::FontDesc& desc) override;

private:
    const std::vector<Line>& lines() const;
    double topMargin() const;

    HtmlDocument m_doc;
    Transient<std::wstring> m_pressedLink;
    int m_gap = 0;
    mutable std::vector<Line> m_lines;
    mutable bool m_linesValid = false;
};
