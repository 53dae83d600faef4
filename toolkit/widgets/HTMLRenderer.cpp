#include "toolkit/widgets/HTMLRenderer.h"

#include "toolkit/support/SettingsReader.h"
#include "toolkit/gfx/Font.h"
#include "toolkit/gfx/Painter.h"
#include "toolkit/ui/GlobManager.h"
#include "toolkit/ui/Screen.h"
#include "toolkit/ui/UifStd.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cwctype>
#include <optional>

namespace {

const bool registeredByName = GlobManager::registerWidget<HTMLRenderer>("HTMLRenderer");

bool isSpace(wchar_t c)
{
    return c == L' ' || c == L'\t' || c == L'\n' || c == L'\r' || c == L'\f';
}

bool isAsciiLetter(wchar_t c)
{
    return (c >= L'a' && c <= L'z') || (c >= L'A' && c <= L'Z');
}

wchar_t lower(wchar_t c)
{
    return (c >= L'A' && c <= L'Z') ? static_cast<wchar_t>(c - L'A' + L'a') : c;
}

int hexDigit(wchar_t c)
{
    if (c >= L'0' && c <= L'9')
        return c - L'0';
    c = lower(c);
    if (c >= L'a' && c <= L'f')
        return c - L'a' + 10;
    return -1;
}

// "#rrggbb" or "#rgb"; nothing for anything else.
std::optional<Colour> parseColour(std::wstring_view text)
{
    if (text.empty() || text.front() != L'#')
        return std::nullopt;
    text.remove_prefix(1);
    if (text.size() != 6 && text.size() != 3)
        return std::nullopt;
    std::array<int, 6> digits {};
    for (size_t i = 0; i < text.size(); ++i) {
        digits[i] = hexDigit(text[i]);
        if (digits[i] < 0)
            return std::nullopt;
    }
    if (text.size() == 3)
        return Colour::fromBytes(static_cast<uint8_t>(digits[0] * 17), static_cast<uint8_t>(digits[1] * 17),
                                 static_cast<uint8_t>(digits[2] * 17));
    return Colour::fromBytes(static_cast<uint8_t>(digits[0] * 16 + digits[1]),
                             static_cast<uint8_t>(digits[2] * 16 + digits[3]),
                             static_cast<uint8_t>(digits[4] * 16 + digits[5]));
}

struct Tag {
    std::wstring name; // lower case
    bool closing = false;
    std::vector<std::pair<std::wstring, std::wstring>> attributes; // names lower case

    std::wstring attribute(std::wstring_view wanted) const
    {
        for (const auto& [name, value] : attributes)
            if (name == wanted)
                return value;
        return {};
    }
};

// Reads the tag between '<' and '>' (exclusive). Attribute values may be quoted with either quote or bare.
Tag readTag(std::wstring_view body)
{
    Tag tag;
    size_t i = 0;
    if (i < body.size() && body[i] == L'/') {
        tag.closing = true;
        ++i;
    }
    while (i < body.size() && (isAsciiLetter(body[i]) || (i > 0 && std::iswdigit(static_cast<wint_t>(body[i])))))
        tag.name.push_back(lower(body[i++]));
    while (i < body.size()) {
        while (i < body.size() && (isSpace(body[i]) || body[i] == L'/'))
            ++i;
        std::wstring name;
        while (i < body.size() && !isSpace(body[i]) && body[i] != L'=' && body[i] != L'/')
            name.push_back(lower(body[i++]));
        while (i < body.size() && isSpace(body[i]))
            ++i;
        std::wstring value;
        if (i < body.size() && body[i] == L'=') {
            ++i;
            while (i < body.size() && isSpace(body[i]))
                ++i;
            if (i < body.size() && (body[i] == L'"' || body[i] == L'\'')) {
                const wchar_t quote = body[i++];
                const size_t end = body.find(quote, i);
                const size_t stop = end == std::wstring_view::npos ? body.size() : end;
                value.assign(body.substr(i, stop - i));
                i = stop == body.size() ? stop : stop + 1;
            } else {
                while (i < body.size() && !isSpace(body[i]))
                    value.push_back(body[i++]);
            }
        }
        if (!name.empty())
            tag.attributes.emplace_back(std::move(name), std::move(value));
        else if (i < body.size() && body[i] != L'/' && !isSpace(body[i]))
            ++i; // a stray '=' or the like: step over it
    }
    return tag;
}

// The character an entity stands for, and how many characters the entity takes; nothing for an unknown one.
std::optional<std::pair<wchar_t, size_t>> readEntity(std::wstring_view at)
{
    static constexpr std::pair<std::wstring_view, wchar_t> named[] = {
        {L"&amp;", L'&'}, {L"&lt;", L'<'}, {L"&gt;", L'>'}, {L"&quot;", L'"'}};
    for (const auto& [name, c] : named)
        if (at.starts_with(name))
            return std::pair<wchar_t, size_t>(c, name.size());
    if (at.size() >= 4 && at[1] == L'#') {
        const bool hex = at[2] == L'x' || at[2] == L'X';
        size_t i = hex ? 3 : 2;
        uint32_t value = 0;
        const size_t first = i;
        while (i < at.size() && i < first + 8) {
            const int d = hex ? hexDigit(at[i]) : (std::iswdigit(static_cast<wint_t>(at[i])) ? at[i] - L'0' : -1);
            if (d < 0)
                break;
            value = value * (hex ? 16u : 10u) + static_cast<uint32_t>(d);
            ++i;
        }
        const bool valid = i > first && i < at.size() && at[i] == L';' && value >= 0x20 && value <= 0x10ffff &&
                           !(value >= 0xd800 && value <= 0xdfff) && value != 0x7f;
        if (valid)
            return std::pair<wchar_t, size_t>(static_cast<wchar_t>(value), i + 1);
    }
    return std::nullopt;
}

// Attribute values may hold entities too ("?a=1&amp;b=2").
std::wstring decodeEntities(std::wstring_view text)
{
    std::wstring out;
    for (size_t i = 0; i < text.size();) {
        if (text[i] == L'&') {
            if (const auto entity = readEntity(text.substr(i))) {
                out.push_back(entity->first);
                i += entity->second;
                continue;
            }
        }
        out.push_back(text[i++]);
    }
    return out;
}

// Builds the run list: merges text of one look, collapses spaces, keeps breaks tidy.
class DocumentBuilder {
public:
    explicit DocumentBuilder(HtmlDocument& doc) : m_doc(doc) {}

    void addChar(wchar_t c, uint8_t style, const Colour& colour, const std::wstring& href)
    {
        if (isSpace(c)) {
            if (m_lastWasSpace || atLineStart())
                return;
            c = L' ';
            m_lastWasSpace = true;
        } else {
            m_lastWasSpace = false;
        }
        if (m_doc.runs.empty() || m_doc.runs.back().kind != HtmlRun::Text || m_doc.runs.back().style != style ||
            !(m_doc.runs.back().colour == colour) || m_doc.runs.back().href != href) {
            HtmlRun run;
            run.style = style;
            run.colour = colour;
            run.href = href;
            m_doc.runs.push_back(std::move(run));
        }
        m_doc.runs.back().text.push_back(c);
    }

    void lineBreak()
    {
        trimTrailingSpace();
        HtmlRun run;
        run.kind = HtmlRun::LineBreak;
        m_doc.runs.push_back(run);
        m_lastWasSpace = false;
    }

    // A paragraph starts: nothing at the very start, and never two blank lines in a row.
    void paragraph()
    {
        trimTrailingSpace();
        if (m_doc.runs.empty())
            return;
        HtmlRun& last = m_doc.runs.back();
        if (last.kind == HtmlRun::ParagraphBreak)
            return;
        if (last.kind == HtmlRun::LineBreak) {
            last.kind = HtmlRun::ParagraphBreak;
            return;
        }
        HtmlRun run;
        run.kind = HtmlRun::ParagraphBreak;
        m_doc.runs.push_back(run);
        m_lastWasSpace = false;
    }

    // A paragraph ends: the next text starts a new line.
    void endParagraph()
    {
        trimTrailingSpace();
        if (!m_doc.runs.empty() && m_doc.runs.back().kind == HtmlRun::Text)
            lineBreak();
    }

    void finish()
    {
        trimTrailingSpace();
        // A break at the very end would only add an empty line.
        while (!m_doc.runs.empty() && m_doc.runs.back().kind != HtmlRun::Text)
            m_doc.runs.pop_back();
    }

private:
    bool atLineStart() const { return m_doc.runs.empty() || m_doc.runs.back().kind != HtmlRun::Text; }
    void trimTrailingSpace()
    {
        if (!m_doc.runs.empty() && m_doc.runs.back().kind == HtmlRun::Text && !m_doc.runs.back().text.empty() &&
            m_doc.runs.back().text.back() == L' ') {
            m_doc.runs.back().text.pop_back();
            if (m_doc.runs.back().text.empty())
                m_doc.runs.pop_back();
        }
        m_lastWasSpace = false;
    }

    HtmlDocument& m_doc;
    bool m_lastWasSpace = false;
};

const Pictor::Font& fontFor(const Pictor::FontDesc& base, uint8_t style, std::array<Cv::Ptr<Pictor::Font>, 4>& cache)
{
    const size_t i = style & 3u;
    if (!cache[i])
        cache[i] = Pictor::loadFont(base.withStyle(static_cast<uint8_t>(i)));
    return *cache[i];
}

// A word: the characters between two spaces, possibly in several runs ("<b>bo</b>ld").
struct WordPiece {
    size_t run;
    std::wstring text;
    double width;
};

} // namespace

// ---------------------------------------------------------------------------------------------------------
// The document

std::wstring HtmlDocument::plainText() const
{
    std::wstring out;
    for (const HtmlRun& run : runs) {
        if (run.kind == HtmlRun::Text)
            out += run.text;
        else
            out += run.kind == HtmlRun::LineBreak ? L"\n" : L"\n\n";
    }
    return out;
}

HtmlDocument HTMLRenderer::parse(std::wstring_view markup, const Palette& colourScheme)
{
    HtmlDocument doc;
    DocumentBuilder builder(doc);
    int bold = 0;
    int italic = 0;
    std::vector<Colour> colours {colourScheme.text()};
    std::wstring href;
    // Past the last '>' no '<' can open a tag: knowing it keeps a text full of '<' linear to read.
    const size_t lastClose = markup.rfind(L'>');

    auto style = [&] {
        return static_cast<uint8_t>((bold > 0 ? Pictor::fontStyleBold : 0) | (italic > 0 ? Pictor::fontStyleItalic : 0));
    };
    auto colour = [&] { return href.empty() ? colours.back() : colourScheme.highlight(); };

    size_t i = 0;
    while (i < markup.size()) {
        const wchar_t c = markup[i];
        if (c == L'&') {
            if (const auto entity = readEntity(markup.substr(i))) {
                builder.addChar(entity->first, style(), colour(), href);
                i += entity->second;
                continue;
            }
            builder.addChar(c, style(), colour(), href);
            ++i;
            continue;
        }
        if (c == L'<' && markup.substr(i).starts_with(L"<!--")) {
            // A comment: everything to its end is left out (an unclosed one, to the end of the text).
            const size_t end = markup.find(L"-->", i + 4);
            i = end == std::wstring_view::npos ? markup.size() : end + 3;
            continue;
        }
        const bool opensTag = c == L'<' && lastClose != std::wstring_view::npos && i < lastClose &&
                              i + 1 < markup.size() &&
                              (isAsciiLetter(markup[i + 1]) || markup[i + 1] == L'!' ||
                               (markup[i + 1] == L'/' && i + 2 < markup.size() && isAsciiLetter(markup[i + 2])));
        if (!opensTag) {
            builder.addChar(c, style(), colour(), href);
            ++i;
            continue;
        }
        const size_t close = markup.find(L'>', i);
        const Tag tag = readTag(markup.substr(i + 1, close - i - 1));
        i = close + 1;
        if (tag.name == L"b") {
            bold = tag.closing ? std::max(0, bold - 1) : bold + 1;
        } else if (tag.name == L"i") {
            italic = tag.closing ? std::max(0, italic - 1) : italic + 1;
        } else if (tag.name == L"br") {
            builder.lineBreak();
        } else if (tag.name == L"p") {
            if (tag.closing)
                builder.endParagraph();
            else
                builder.paragraph();
        } else if (tag.name == L"font") {
            if (tag.closing) {
                if (colours.size() > 1)
                    colours.pop_back();
            } else {
                // A colour that cannot be read keeps the one in force, so that its </font> still pairs.
                colours.push_back(parseColour(tag.attribute(L"color")).value_or(colours.back()));
            }
        } else if (tag.name == L"a") {
            href = tag.closing ? std::wstring() : decodeEntities(tag.attribute(L"href"));
        }
        // Any other tag is left out; its text content is shown.
    }
    builder.finish();
    return doc;
}

std::vector<HTMLRenderer::Line> HTMLRenderer::layout(const HtmlDocument& doc, double width,
                                                      const Pictor::FontDesc& font)
{
    std::array<Cv::Ptr<Pictor::Font>, 4> fonts;
    width = std::max(width, 1.0);
    std::vector<Line> lines(1);
    double x = 0.0;
    // A space waiting to be placed before the next word on the same line.
    std::optional<WordPiece> pendingSpace;
    std::vector<WordPiece> word;
    double wordWidth = 0.0;

    auto newLine = [&] {
        lines.emplace_back();
        x = 0.0;
        pendingSpace.reset();
    };
    auto place = [&](const WordPiece& piece) {
        lines.back().push_back(Fragment {piece.run, piece.text, x, piece.width});
        x += piece.width;
    };
    auto flushWord = [&] {
        if (word.empty())
            return;
        const double spaceWidth = pendingSpace ? pendingSpace->width : 0.0;
        if (x > 0.0 && x + spaceWidth + wordWidth > width)
            newLine();
        else if (pendingSpace && x > 0.0)
            place(*pendingSpace);
        pendingSpace.reset();
        if (wordWidth <= width - x) {
            for (const WordPiece& piece : word)
                place(piece);
        } else {
            // Wider than a whole line: broken between characters, as much on each line as fits.
            for (const WordPiece& piece : word) {
                const Pictor::Font& f = fontFor(font, doc.runs[piece.run].style, fonts);
                size_t from = 0;
                while (from < piece.text.size()) {
                    size_t take = 0;
                    double taken = 0.0;
                    // Character widths are summed (kerning across a forced break matters little), which
                    // keeps a very long word linear to lay out.
                    while (from + take < piece.text.size()) {
                        const double w = taken + f.measureWidth(std::wstring_view(piece.text).substr(from + take, 1));
                        if (x + w > width && (take > 0 || x > 0.0))
                            break;
                        taken = w;
                        ++take;
                    }
                    if (take == 0) {
                        newLine();
                        continue;
                    }
                    place(WordPiece {piece.run, piece.text.substr(from, take), taken});
                    from += take;
                    if (from < piece.text.size())
                        newLine();
                }
            }
        }
        word.clear();
        wordWidth = 0.0;
    };

    for (size_t r = 0; r < doc.runs.size(); ++r) {
        const HtmlRun& run = doc.runs[r];
        if (run.kind != HtmlRun::Text) {
            flushWord();
            newLine();
            if (run.kind == HtmlRun::ParagraphBreak)
                newLine();
            continue;
        }
        const Pictor::Font& f = fontFor(font, run.style, fonts);
        size_t i = 0;
        while (i < run.text.size()) {
            if (run.text[i] == L' ') {
                flushWord();
                if (!lines.back().empty())
                    pendingSpace = WordPiece {r, L" ", f.measureWidth(std::wstring_view(L" "))};
                ++i;
                continue;
            }
            size_t end = run.text.find(L' ', i);
            if (end == std::wstring::npos)
                end = run.text.size();
            WordPiece piece {r, run.text.substr(i, end - i), 0.0};
            piece.width = f.measureWidth(std::wstring_view(piece.text));
            wordWidth += piece.width;
            word.push_back(std::move(piece));
            i = end;
        }
    }
    flushWord();
    return lines;
}

int HTMLRenderer::calcNumDisplayLines(const HtmlDocument& doc, int width, const Pictor::FontDesc& font)
{
    return static_cast<int>(layout(doc, width, font).size());
}

// ---------------------------------------------------------------------------------------------------------
// The widget

HTMLRenderer::InitArgs::InitArgs(const GlobCreationInfo& info) : GlobCreationInfo(info)
{
    markup = SettingsReader(info.config).text("markup").value_or(markup);
}

HTMLRenderer::HTMLRenderer(const InitArgs& args)
    : Glob(args)
    , FontUser(args.font)
    , m_doc(parse(args.markup.view(), args.palette))
    , m_gap(args.gap >= 0 ? args.gap : UifStd::getWidgetGap())
{
}

HTMLRenderer::HTMLRenderer(uint16_t width, uint16_t height, const Palette& palette, Canvas* canvas)
    : Glob(width, height, palette, canvas), m_gap(UifStd::getWidgetGap())
{
}

HTMLRenderer::~HTMLRenderer() = default;

LightweightString<char> HTMLRenderer::idstring() const
{
    return "HTMLRenderer";
}

void HTMLRenderer::setText(const LightweightString<wchar_t>& markup)
{
    setDocument(parse(markup.view(), getPalette()));
}

void HTMLRenderer::setDocument(HtmlDocument doc)
{
    m_doc = std::move(doc);
    m_linesValid = false;
    m_pressedLink.reset();
    redraw();
}

int HTMLRenderer::calcNumDisplayLines(int width) const
{
    return calcNumDisplayLines(m_doc, width, getFontDesc());
}

void HTMLRenderer::setFont(const Pictor::FontDesc& desc)
{
    FontUser::setFont(desc);
    m_linesValid = false;
    redraw();
}

void HTMLRenderer::reshape()
{
    Glob::reshape();
    m_linesValid = false;
}

const std::vector<HTMLRenderer::Line>& HTMLRenderer::lines() const
{
    if (!m_linesValid) {
        m_lines = layout(m_doc, getWidth(), getFontDesc());
        m_linesValid = true;
    }
    return m_lines;
}

double HTMLRenderer::topMargin() const
{
    return m_gap / 2.0;
}

std::wstring HTMLRenderer::linkAt(XY<int> local) const
{
    const double lineHeight = getFont().lineHeight();
    const double fromTop = getHeight() - topMargin() - local.y;
    if (fromTop < 0.0 || lineHeight <= 0.0)
        return {};
    const size_t index = static_cast<size_t>(fromTop / lineHeight);
    const std::vector<Line>& all = lines();
    if (index >= all.size())
        return {};
    for (const Fragment& f : all[index])
        if (local.x >= f.x && local.x < f.x + f.width)
            return m_doc.runs[f.run].href;
    return {};
}

bool HTMLRenderer::isLinkMsg(const LightweightString<char>& message)
{
    const std::string_view prefix(linkClickedMsg);
    return message.size() > prefix.size() && message.startsWith(prefix) && message[prefix.size()] == ' ';
}

LightweightString<wchar_t> HTMLRenderer::linkFromMsg(const LightweightString<char>& message)
{
    if (!isLinkMsg(message))
        return {};
    return fromUTF8(message.view().substr(std::string_view(linkClickedMsg).size() + 1));
}

int HTMLRenderer::contextCursor(const XY<int>& local)
{
    if (!linkAt(local).empty())
        return CursorHand;
    return Glob::contextCursor(local);
}

bool HTMLRenderer::react(const Event& event)
{
    if (event.type == Event::MouseDown && event.button == Event::LeftButton) {
        *m_pressedLink = linkAt(event.pos);
        return !m_pressedLink->empty();
    }
    if (event.type == Event::MouseUp && event.button == Event::LeftButton && !m_pressedLink->empty()) {
        const std::wstring pressed = std::move(*m_pressedLink);
        m_pressedLink.reset();
        // Only a release on the link pressed opens it: sliding off is how a user changes their mind.
        if (linkAt(event.pos) == pressed) {
            LightweightString<char> msg(linkClickedMsg);
            msg += " ";
            msg += toUTF8(pressed);
            callMsg(msg);
        }
        return true;
    }
    return Glob::react(event);
}

void HTMLRenderer::drawText()
{
    Pictor::Painter& p = painter();
    const bool enabled = isEnabledInTree();
    const Palette& pal = getPalette();
    std::array<Cv::Ptr<Pictor::Font>, 4> fonts;
    const Pictor::Font& base = getFont();
    const double lineHeight = base.lineHeight();
    double baseline = getHeight() - topMargin() - base.ascent();
    for (const Line& line : lines()) {
        if (baseline + base.ascent() < 0.0)
            break;
        for (const Fragment& f : line) {
            const HtmlRun& run = m_doc.runs[f.run];
            const Colour ink = enabled ? run.colour : pal.disabledText();
            p.drawText(std::wstring_view(f.text), fontFor(getFontDesc(), run.style, fonts), ink, f.x, baseline);
            if (!run.href.empty()) {
                const double y = std::floor(baseline - 2.0);
                p.fillRect(Pictor::PaintRect(f.x, y, f.x + f.width, y + 1.0), ink);
            }
        }
        baseline -= lineHeight;
    }
}
