#pragma once
// FontEngine: the machinery behind one Pictor::Font, shared by the measuring, wrapping and drawing code of the
// graphics layer. Not for use outside toolkit/gfx.
//
// Widths are kept in shaper units (1/1024 pixel) so that sums are exact integers, identical to what the text
// shaper adds up when it lays out the same text.
//
// The fast tables cover the characters of Latin text: Latin letters, digits, ASCII and Latin-1 punctuation and
// symbols, general punctuation, currency signs, letter-like symbols and arrows. Each character is first checked
// against the font: it must have its own glyph that shapes to itself. Pair kerning is measured by shaping the
// pair, the first time the pair is met. A pair that the font turns into something else (a ligature such as
// "fi") is marked complex; such a pair is measured by shaping it with its neighbour on one side and then on
// the other, and those small windows are remembered, so what is kept grows with the letters met, not with
// the words.
//
// The shaper applies different kerning to a run of Latin text and to a run with no letters at all (digits and
// punctuation only), so there are two sets of kerning tables, chosen per text.

#include "toolkit/gfx/Font.h"
#include "toolkit/gfx/FontDesc.h"
#include "toolkit/gfx/detail/ShapedTextCache.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

struct _cairo;
struct _PangoLayout;
struct _PangoFont;
struct _PangoFontDescription;
struct hb_font_t;
struct hb_buffer_t;

namespace Pictor {

constexpr int kShaperUnits = 1024;

// Line-breaking classes of the characters the fast wrapper handles; anything else is `Other`.
enum class BreakClass : uint8_t { AL, NU, SP, IS, EX, QU, OP, CP, CL, SY, HY, PR, PO, BA, GL, Other };

enum CharFlags : uint8_t {
    charInTables = 1,   // a character the tables may hold (the font decides whether they do)
    charWhite = 2,      // a space of any width
    charLatin = 4,      // of the Latin script: its presence makes a text a Latin run
    charLatinLetter = 8,
    charWordPart = 16,  // letter, digit or connector: continues a word
    charWrapSimple = 32 // the fast wrapper knows its line-breaking behaviour
};

struct CharInfo {
    uint32_t codepoint = 0;
    uint8_t flags = 0;
    BreakClass breakClass = BreakClass::Other;
};

// Working memory of the word wrapper, kept with each font (fonts belong to one thread) so that wrapping
// allocates nothing once warmed up.
struct WrapScratch {
    std::vector<uint16_t> slots;
    std::vector<uint32_t> offsets;
    std::vector<uint32_t> newlines;
    std::vector<uint8_t> breaks;
    std::vector<uint32_t> wordBreaks;
    // The general wrapper's per-character arrays.
    std::vector<int32_t> kernNext;
    std::vector<int64_t> logWidth;
    std::vector<int64_t> prefix;
    std::vector<uint8_t> cutsComplexWord;
    // The fast wrapper's widths, words holding a ligature, and lines.
    std::vector<int64_t> fastPrefix; // shaper width of everything before each position
    struct ComplexSpan {
        uint32_t begin;      // first character of the word
        uint32_t end;        // one past its last
        int64_t widestInner; // the prefix at the widest point inside the word, as the general wrapper shares it
        int64_t delta;       // what shaping the word whole changes in its width
    };
    std::vector<ComplexSpan> complexWords;
    std::vector<uint32_t> complexPairs;
    std::vector<std::pair<uint32_t, uint32_t>> lines;
};

class FontEngine {
public:
    static constexpr int kTableSize = 0x380;
    static constexpr int16_t kKernUnknown = INT16_MIN;
    static constexpr int16_t kKernComplex = INT16_MIN + 1;

    // The table slot of a character, or -1 when the tables do not cover it.
    static int tableIndex(uint32_t codepoint);
    static const CharInfo& charInfo(int index);

    explicit FontEngine(const FontDesc& desc);
    ~FontEngine();
    FontEngine(const FontEngine&) = delete;
    FontEngine& operator=(const FontEngine&) = delete;

    double ascent() const { return m_ascent; }
    double descent() const { return m_descent; }
    double lineHeight() const { return m_lineHeight; }

    // ---- Measuring (shaper units)
    int64_t measure(std::string_view utf8);
    int64_t measure(std::wstring_view text);
    TextExtents extents(std::string_view utf8);
    TextExtents extents(std::wstring_view text);

    // ---- The tables, for the wrapper
    // Maps the text to table slots; false when some character is not in this font's tables. `offsets`, when
    // given, receives the code-unit position of each character and, last, the text's length. With `newlines`,
    // a newline is let through as its own slot (which no character of the tables uses) and its position noted
    // there, so that a wrapper can split paragraphs on it.
    bool toSlots(std::string_view utf8, std::vector<uint16_t>& slots, std::vector<uint32_t>* offsets,
                 std::vector<uint32_t>* newlines = nullptr) const;
    bool toSlots(std::wstring_view text, std::vector<uint16_t>& slots, std::vector<uint32_t>* offsets,
                 std::vector<uint32_t>* newlines = nullptr) const;
    static bool isLatinRun(const uint16_t* slots, size_t count);
    int32_t advance(uint16_t slot) const { return m_advance[slot]; }
    const int32_t* advances() const { return m_advance.data(); }
    // False when some character of the tables moves the pen backwards (no sane font has one).
    bool advancesNonNegative() const { return m_advancesNonNegative; }
    // Kerning between two neighbours, or kKernComplex.
    int kern(bool latin, uint16_t first, uint16_t second)
    {
        int16_t* cell = kernCell(latin, first, second);
        if (*cell == kKernUnknown)
            *cell = measurePair(latin, first, second);
        return *cell;
    }
    // The kerning of pairs of printable ASCII characters, at asciiPair(first, second), for inner loops;
    // kKernUnknown entries must go through kern() to be filled. Only the printable range is kept (18 KiB
    // rather than 32), so that more of it stays in the first-level cache.
    const int16_t* asciiKern(bool latin) const { return m_asciiKern[latin].data(); }
    static constexpr int asciiPair(int first, int second) { return (first - 32) * 96 + (second - 32); }
    // What the wrapper's inner loop adds for each pair of neighbours, the first one's advance plus their
    // kerning, one row per first character so that Latin text beyond ASCII needs no second path:
    // wrapSteps(latin)[first][second] for second < kWrapStepColumns (Latin-1 and Latin Extended-A). An entry is
    // kKernComplex for a pair the font joins, and kKernUnknown until fillWrapStep has measured the pair; it
    // stays so when the step does not fit the table or the line-break scanner does not know the second
    // character, so that such pairs always take the caller's slower path.
    static constexpr int kWrapStepColumns = 0x180;
    const int16_t* const* wrapSteps(bool latin) const { return m_wrapSteps[latin].data(); }
    // kern(), with its step remembered in those rows where it can be.
    int fillWrapStep(bool latin, uint16_t first, uint16_t second);
    // False once some pair measured through fillWrapStep moves the pen backwards (a step below zero).
    bool wrapStepsNonNegative() const { return m_wrapStepsNonNegative; }
    // The exact width of the slots as the shaper lays them out, with a hyphen after them if asked.
    int64_t shapeWidth(const uint16_t* slots, size_t count, bool latin, bool withHyphen);
    // A word that holds a complex pair, as the shaper lays it out: its width, and each character's share of it
    // the way the shaper hands out the width of a ligature (evenly over its characters). Valid until the next
    // call.
    struct ComplexWord {
        int64_t width = 0;
        std::vector<int32_t> logicalWidths;
    };
    const ComplexWord& complexWord(const uint16_t* slots, size_t count, bool latin);
    // How many ligature windows are remembered at most (see complexWord); then they are measured afresh.
    static constexpr size_t kMaxLigatureWindows = 16384;
    size_t ligatureWindowCount() const { return m_ligatureWindows[0].size() + m_ligatureWindows[1].size(); }
    // Added to a line's width when the line ends in a hyphen after `last`.
    int64_t hyphenWidth(bool latin, uint16_t last);
    WrapScratch& wrapScratch() { return m_wrapScratch; }
    // The shaper's rough width of one character, used as its look-ahead margin when breaking lines.
    int32_t approximateCharWidth() const { return m_approximateCharWidth; }

    // ---- The full shaper: fallback measuring, wrapping and drawing
    struct ShapedLines {
        int64_t width = 0;
        int64_t height = 0;
        int lines = 1;
    };
    ShapedLines shapeWithPango(std::string_view utf8);
    // Wraps as the fast wrapper does; each line as byte range plus a flag for a hyphen at its end.
    struct PangoLine {
        size_t begin;
        size_t end;
        bool hyphen;
    };
    std::vector<PangoLine> wrapWithPango(std::string_view utf8, int widthUnits);
    // Draws one line with its baseline at (x, baseline) in device pixels (y down). Text the tables cover is
    // placed from them; other text is shaped the first time and its glyphs kept, so that drawing it again only
    // places them.
    void draw(_cairo* cr, std::string_view utf8, double x, double baseline);
    // The same pixels by laying the text out in full every time, as draw() does for text whose glyphs cannot
    // be kept.
    void drawWithLayout(_cairo* cr, std::string_view utf8, double x, double baseline);
    // Off, draw() lays every text out in full, as drawWithLayout() does.
    void keepShapedText(bool keep) { m_keepShapedText = keep; }
    // What a font keeps of the texts the shaper laid out for drawing: at most this many bytes (see
    // ShapedTextCache).
    static constexpr size_t kShapedTextBudget = size_t(1) << 20;
    const ShapedTextCache& shapedTexts() const { return m_shapedTexts; }

private:
    int16_t* kernCell(bool latin, uint16_t first, uint16_t second)
    {
        if ((first | second) < 128 && first >= 32 && second >= 32)
            return &m_asciiKern[latin][asciiPair(first, second)];
        return slowKernCell(latin, first, second);
    }
    int16_t* slowKernCell(bool latin, uint16_t first, uint16_t second);
    int16_t measurePair(bool latin, uint16_t first, uint16_t second);
    void shape(const uint32_t* codepoints, size_t count, bool latin);
    int64_t measureSlots(const uint16_t* slots, size_t count);
    // A Latin run's width straight from its UTF-8; false when something needs the slower paths.
    bool measureDecoding(std::string_view utf8, int64_t& width);
    // Measuring sums plain advances and kerning and notes the pairs the font joins (at most this many per
    // text; more go the slow way). This is what the words holding those pairs add to that sum.
    static constexpr size_t kMaxComplexPairs = 16;
    template <typename Slot>
    int64_t complexWordsDelta(const Slot* slots, size_t count, bool latin, const uint32_t* pairs, size_t pairCount);
    int64_t measureByWords(const uint16_t* slots, size_t count, bool latin);
    _PangoLayout* layout();
    // Glyphs and positions straight from the tables, drawn with this font's own scaled font (which the runs
    // do not hold a reference to); false when the text needs the shaper.
    bool shapeFromTables(std::string_view utf8, ShapedText& shaped);
    void drawShaped(_cairo* cr, const ShapedText& shaped, double x, double baseline);
    void shapeWithLayout(std::string_view utf8, ShapedText& shaped);
    // The logical widths of the characters of a window around joined characters (see complexWord).
    const std::vector<int32_t>& ligatureWindow(const uint16_t* slots, size_t count, bool latin);

    FontDesc m_desc;
    _PangoFontDescription* m_pangoDesc = nullptr;
    _PangoFont* m_font = nullptr;
    hb_font_t* m_hbFont = nullptr; // owned by m_font
    hb_buffer_t* m_buffer = nullptr;
    _PangoLayout* m_layout = nullptr;
    double m_ascent = 0.0;
    double m_descent = 0.0;
    double m_lineHeight = 0.0;
    int32_t m_approximateCharWidth = 0;
    int32_t m_baselineUnits = 0;         // a one-line layout's baseline below its top, in shaper units
    _cairo_scaled_font* m_scaledFont = nullptr; // owned by m_font
    // Whether the shaper puts each pair's kerning on the first glyph's advance, as the tables assume when
    // they place glyphs for drawing (it does for every font we know).
    bool m_kernOnFirstGlyph = true;
    uint32_t m_hyphenCodepoint = 0x2010;
    int m_hyphenSlot = -1;

    std::array<uint32_t, kTableSize> m_glyph{};
    std::array<int32_t, kTableSize> m_advance{};
    std::array<bool, kTableSize> m_usable{};
    std::array<bool, 128> m_asciiUsable{};
    std::array<bool, 128> m_asciiLatin{};
    bool m_printableAsciiUsable = false;
    bool m_advancesNonNegative = true;
    bool m_wrapStepsNonNegative = true;
    const CharInfo* m_info = nullptr; // charInfo's table, at hand for the inner loops
    // [latin][asciiPair(first, second)] for printable ASCII pairs; rows per first slot for the rest.
    std::array<std::vector<int16_t>, 2> m_asciiKern;
    std::array<std::vector<std::unique_ptr<int16_t[]>>, 2> m_kernRows;
    // Rows not yet met point to one shared row of unknowns.
    std::array<std::array<const int16_t*, kTableSize>, 2> m_wrapSteps{};
    std::array<std::vector<std::unique_ptr<int16_t[]>>, 2> m_ownWrapSteps;

    struct WindowHash {
        using is_transparent = void;
        size_t operator()(std::u16string_view s) const { return std::hash<std::u16string_view>()(s); }
    };
    struct WindowEqual {
        using is_transparent = void;
        bool operator()(std::u16string_view a, std::u16string_view b) const { return a == b; }
    };
    // [latin]: joined characters with a neighbour before or after them, and each character's logical width
    // there.
    std::array<std::unordered_map<std::u16string, std::vector<int32_t>, WindowHash, WindowEqual>, 2>
        m_ligatureWindows;
    ComplexWord m_complexWord;
    ShapedTextCache m_shapedTexts{kShapedTextBudget};
    bool m_keepShapedText = true;
    // Reused by every drawing from the tables, up to this many glyphs' room (a line far longer than a row).
    static constexpr size_t kReusedGlyphsLimit = 4096;
    ShapedText m_drawnFromTables;
    std::vector<uint32_t> m_scratchCodepoints;
    std::vector<uint16_t> m_scratchSlots;
    std::vector<uint16_t> m_wordSlots;
    WrapScratch m_wrapScratch;
};

} // namespace Pictor
