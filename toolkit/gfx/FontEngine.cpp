#include "toolkit/gfx/detail/FontEngine.h"

#include <glib.h>
#include <hb.h>
#include <pango/pangocairo.h>

#include <algorithm>
#include <bit>
#include <cstring>
#include <limits>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace Pictor {

namespace {

// One shaper context for every font: the same rendering options for measuring and drawing. Hinting of advance
// widths is off and glyph positions are not rounded, so widths are fractional and do not depend on position;
// outlines get light (vertical only) hinting and grayscale antialiasing so that text stays crisp.
PangoContext* sharedContext()
{
    static PangoContext* context = [] {
        PangoFontMap* fontMap = pango_cairo_font_map_new();
        PangoContext* created = pango_font_map_create_context(fontMap);
        g_object_unref(fontMap);
        cairo_font_options_t* options = cairo_font_options_create();
        cairo_font_options_set_antialias(options, CAIRO_ANTIALIAS_GRAY);
        cairo_font_options_set_hint_style(options, CAIRO_HINT_STYLE_SLIGHT);
        cairo_font_options_set_hint_metrics(options, CAIRO_HINT_METRICS_OFF);
        pango_cairo_context_set_font_options(created, options);
        cairo_font_options_destroy(options);
        pango_context_set_round_glyph_positions(created, FALSE);
        pango_context_set_language(created, pango_language_get_default());
        return created;
    }();
    return context;
}

hb_language_t shapingLanguage()
{
    static const hb_language_t language =
        hb_language_from_string(pango_language_to_string(pango_context_get_language(sharedContext())), -1);
    return language;
}

BreakClass breakClassOf(GUnicodeBreakType type)
{
    switch (type) {
    case G_UNICODE_BREAK_ALPHABETIC:
    case G_UNICODE_BREAK_AMBIGUOUS: // resolved as alphabetic outside East Asian text
        return BreakClass::AL;
    case G_UNICODE_BREAK_NUMERIC:
        return BreakClass::NU;
    case G_UNICODE_BREAK_SPACE:
        return BreakClass::SP;
    case G_UNICODE_BREAK_INFIX_SEPARATOR:
        return BreakClass::IS;
    case G_UNICODE_BREAK_EXCLAMATION:
        return BreakClass::EX;
    case G_UNICODE_BREAK_QUOTATION:
        return BreakClass::QU;
    case G_UNICODE_BREAK_OPEN_PUNCTUATION:
        return BreakClass::OP;
    case G_UNICODE_BREAK_CLOSE_PARANTHESIS:
        return BreakClass::CP;
    case G_UNICODE_BREAK_CLOSE_PUNCTUATION:
        return BreakClass::CL;
    case G_UNICODE_BREAK_SYMBOL:
        return BreakClass::SY;
    case G_UNICODE_BREAK_HYPHEN:
        return BreakClass::HY;
    case G_UNICODE_BREAK_PREFIX:
        return BreakClass::PR;
    case G_UNICODE_BREAK_POSTFIX:
        return BreakClass::PO;
    case G_UNICODE_BREAK_AFTER:
        return BreakClass::BA;
    case G_UNICODE_BREAK_NON_BREAKING_GLUE:
        return BreakClass::GL;
    default:
        return BreakClass::Other;
    }
}

uint32_t codepointOfSlot(int slot)
{
    if (slot < 0x250)
        return static_cast<uint32_t>(slot);
    if (slot < 0x2A0)
        return 0x2010 + static_cast<uint32_t>(slot - 0x250);
    if (slot < 0x2C0)
        return 0x20A0 + static_cast<uint32_t>(slot - 0x2A0);
    if (slot < 0x310)
        return 0x2100 + static_cast<uint32_t>(slot - 0x2C0);
    return 0x2190 + static_cast<uint32_t>(slot - 0x310);
}

std::array<CharInfo, FontEngine::kTableSize> buildCharInfo()
{
    std::array<CharInfo, FontEngine::kTableSize> table{};
    for (int slot = 0; slot < FontEngine::kTableSize; ++slot) {
        CharInfo& info = table[slot];
        const gunichar c = codepointOfSlot(slot);
        info.codepoint = c;
        const GUnicodeType type = g_unichar_type(c);
        const GUnicodeScript script = g_unichar_get_script(c);
        const bool excluded = type == G_UNICODE_CONTROL || type == G_UNICODE_FORMAT
            || type == G_UNICODE_UNASSIGNED || type == G_UNICODE_PRIVATE_USE || type == G_UNICODE_SURROGATE
            || type == G_UNICODE_NON_SPACING_MARK || type == G_UNICODE_SPACING_MARK
            || type == G_UNICODE_ENCLOSING_MARK || type == G_UNICODE_LINE_SEPARATOR
            || type == G_UNICODE_PARAGRAPH_SEPARATOR
            || (script != G_UNICODE_SCRIPT_LATIN && script != G_UNICODE_SCRIPT_COMMON);
        if (excluded)
            continue;
        uint8_t flags = charInTables;
        if (g_unichar_isspace(c))
            flags |= charWhite;
        if (script == G_UNICODE_SCRIPT_LATIN) {
            flags |= charLatin;
            if (g_unichar_isalpha(c))
                flags |= charLatinLetter;
        }
        if (g_unichar_isalpha(c) || g_unichar_isdigit(c) || type == G_UNICODE_CONNECT_PUNCTUATION)
            flags |= charWordPart;
        info.breakClass = breakClassOf(g_unichar_break_type(c));
        // The hyphenation point turns into a hyphen when a line breaks after it: left to the shaper.
        if (info.breakClass != BreakClass::Other && c != 0x2027)
            flags |= charWrapSimple;
        info.flags = flags;
    }
    return table;
}

const std::array<CharInfo, FontEngine::kTableSize>& charTable()
{
    static const auto table = buildCharInfo();
    return table;
}

// Decodes one UTF-8 sequence; answers false for anything malformed (overlong, surrogate, out of range).
bool decodeUtf8(const unsigned char*& p, const unsigned char* end, uint32_t& out)
{
    const unsigned char c = *p;
    if (c < 0x80) {
        out = c;
        ++p;
        return true;
    }
    int extra;
    uint32_t value;
    uint32_t minimum;
    if ((c & 0xE0) == 0xC0) {
        extra = 1;
        value = c & 0x1F;
        minimum = 0x80;
    } else if ((c & 0xF0) == 0xE0) {
        extra = 2;
        value = c & 0x0F;
        minimum = 0x800;
    } else if ((c & 0xF8) == 0xF0) {
        extra = 3;
        value = c & 0x07;
        minimum = 0x10000;
    } else {
        return false;
    }
    if (end - p <= extra)
        return false;
    for (int i = 1; i <= extra; ++i) {
        if ((p[i] & 0xC0) != 0x80)
            return false;
        value = (value << 6) | (p[i] & 0x3F);
    }
    if (value < minimum || value > 0x10FFFF || (value >= 0xD800 && value <= 0xDFFF))
        return false;
    out = value;
    p += extra + 1;
    return true;
}

// The shaper wants valid UTF-8 without NUL characters; anything else becomes U+FFFD.
std::string sanitisedUtf8(std::string_view text)
{
    std::string out;
    out.reserve(text.size());
    auto p = reinterpret_cast<const unsigned char*>(text.data());
    const auto end = p + text.size();
    while (p < end) {
        const unsigned char* start = p;
        uint32_t c;
        if (decodeUtf8(p, end, c) && c != 0)
            out.append(reinterpret_cast<const char*>(start), static_cast<size_t>(p - start));
        else {
            out.append("\xEF\xBF\xBD");
            if (p == start)
                ++p;
        }
    }
    return out;
}

bool isValidShaperText(std::string_view text)
{
    return g_utf8_validate(text.data(), static_cast<gssize>(text.size()), nullptr)
        && std::memchr(text.data(), 0, text.size()) == nullptr;
}

// Copies bytes of printable ASCII (0x20 to 0x7E) to `out` as slots until another byte or the end; answers how
// many. Sixteen at a time where the processor has the instructions, so `out` must have room for `available`
// slots: past the answer it may hold anything.
size_t copyPrintableAscii(const unsigned char* p, size_t available, uint16_t* out)
{
    size_t i = 0;
#if defined(__SSE2__)
    // Signed bytes: everything from 0x80 up is negative, so one pair of comparisons bounds the range.
    const __m128i belowPrintable = _mm_set1_epi8(0x1F);
    const __m128i pastPrintable = _mm_set1_epi8(0x7F);
    const __m128i zero = _mm_setzero_si128();
    for (; i + 16 <= available; i += 16) {
        const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p + i));
        const __m128i printable =
            _mm_and_si128(_mm_cmpgt_epi8(bytes, belowPrintable), _mm_cmplt_epi8(bytes, pastPrintable));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(out + i), _mm_unpacklo_epi8(bytes, zero));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(out + i + 8), _mm_unpackhi_epi8(bytes, zero));
        const auto mask = static_cast<unsigned>(_mm_movemask_epi8(printable));
        if (mask != 0xFFFF)
            return i + static_cast<size_t>(std::countr_one(mask));
    }
#endif
    while (i < available && p[i] - 0x20u < 0x5Fu) {
        out[i] = p[i];
        ++i;
    }
    return i;
}

} // namespace

int FontEngine::tableIndex(uint32_t c)
{
    if (c < 0x250)
        return static_cast<int>(c);
    if (c >= 0x2010 && c < 0x2060)
        return 0x250 + static_cast<int>(c - 0x2010);
    if (c >= 0x20A0 && c < 0x20C0)
        return 0x2A0 + static_cast<int>(c - 0x20A0);
    if (c >= 0x2100 && c < 0x2150)
        return 0x2C0 + static_cast<int>(c - 0x2100);
    if (c >= 0x2190 && c < 0x2200)
        return 0x310 + static_cast<int>(c - 0x2190);
    return -1;
}

const CharInfo& FontEngine::charInfo(int index)
{
    return charTable()[static_cast<size_t>(index)];
}

FontEngine::FontEngine(const FontDesc& desc) : m_desc(desc), m_info(charTable().data())
{
    PangoContext* context = sharedContext();
    m_pangoDesc = pango_font_description_new();
    const LightweightString<char> family = desc.name.empty() ? getDefaultFontName() : desc.name;
    pango_font_description_set_family(m_pangoDesc, family.c_str());
    pango_font_description_set_absolute_size(m_pangoDesc, std::clamp(desc.size, 1, 1000) * double(PANGO_SCALE));
    pango_font_description_set_weight(m_pangoDesc, desc.bold() ? PANGO_WEIGHT_BOLD : PANGO_WEIGHT_NORMAL);
    pango_font_description_set_style(m_pangoDesc, desc.italic() ? PANGO_STYLE_ITALIC : PANGO_STYLE_NORMAL);

    m_font = pango_context_load_font(context, m_pangoDesc);
    if (m_font)
        m_hbFont = pango_font_get_hb_font(m_font);
    m_buffer = hb_buffer_create();

    PangoLayout* lay = layout();
    pango_layout_set_text(lay, "", 0);
    PangoRectangle logical;
    pango_layout_get_extents(lay, nullptr, &logical);
    m_lineHeight = logical.height / double(PANGO_SCALE);
    m_baselineUnits = pango_layout_get_baseline(lay);
    m_ascent = m_baselineUnits / double(PANGO_SCALE);
    m_descent = m_lineHeight - m_ascent;

    if (m_font) {
        m_scaledFont = pango_cairo_font_get_scaled_font(PANGO_CAIRO_FONT(m_font));
        PangoFontMetrics* metrics = pango_font_get_metrics(m_font, pango_context_get_language(context));
        m_approximateCharWidth = pango_font_metrics_get_approximate_char_width(metrics);
        pango_font_metrics_unref(metrics);
    }

    for (auto& table : m_asciiKern)
        table.assign(96 * 96, kKernUnknown);
    for (auto& rows : m_kernRows)
        rows.resize(kTableSize);
    static const std::array<int16_t, kWrapStepColumns> unknownRow = [] {
        std::array<int16_t, kWrapStepColumns> row;
        row.fill(kKernUnknown);
        return row;
    }();
    for (auto& rows : m_wrapSteps)
        rows.fill(unknownRow.data());
    for (auto& rows : m_ownWrapSteps)
        rows.resize(kTableSize);

    if (!m_hbFont)
        return; // no font at all: everything goes through the full shaper, which draws placeholder boxes

    // Each character the tables may hold must have its own glyph that shapes to itself, alone.
    for (int slot = 0; slot < kTableSize; ++slot) {
        const CharInfo& info = charInfo(slot);
        hb_codepoint_t glyph;
        if (!(info.flags & charInTables) || !hb_font_get_nominal_glyph(m_hbFont, info.codepoint, &glyph))
            continue;
        shape(&info.codepoint, 1, (info.flags & charLatin) != 0);
        unsigned count = 0;
        const hb_glyph_info_t* glyphs = hb_buffer_get_glyph_infos(m_buffer, &count);
        const hb_glyph_position_t* positions = hb_buffer_get_glyph_positions(m_buffer, &count);
        if (count != 1 || glyphs[0].codepoint != glyph || positions[0].x_offset != 0 || positions[0].y_offset != 0
            || positions[0].y_advance != 0)
            continue;
        m_glyph[slot] = glyph;
        m_advance[slot] = positions[0].x_advance;
        m_usable[slot] = true;
    }
    m_printableAsciiUsable = true;
    for (int c = 0; c < 128; ++c) {
        m_asciiUsable[c] = m_usable[c];
        m_asciiLatin[c] = (m_info[c].flags & charLatin) != 0;
        if (c >= 0x20 && c < 0x7F)
            m_printableAsciiUsable &= m_usable[c];
    }

    for (int slot = 0; slot < kTableSize; ++slot)
        m_advancesNonNegative &= !m_usable[slot] || m_advance[slot] >= 0;

    hb_codepoint_t glyph;
    if (!hb_font_get_nominal_glyph(m_hbFont, 0x2010, &glyph))
        m_hyphenCodepoint = '-';
    const int hyphenSlot = tableIndex(m_hyphenCodepoint);
    m_hyphenSlot = m_usable[hyphenSlot] ? hyphenSlot : -1;
}

FontEngine::~FontEngine()
{
    if (m_layout)
        g_object_unref(m_layout);
    if (m_buffer)
        hb_buffer_destroy(m_buffer);
    if (m_font)
        g_object_unref(m_font);
    if (m_pangoDesc)
        pango_font_description_free(m_pangoDesc);
}

PangoLayout* FontEngine::layout()
{
    if (!m_layout) {
        m_layout = pango_layout_new(sharedContext());
        pango_layout_set_font_description(m_layout, m_pangoDesc);
    }
    return m_layout;
}

void FontEngine::shape(const uint32_t* codepoints, size_t count, bool latin)
{
    hb_buffer_clear_contents(m_buffer);
    hb_buffer_add_utf32(m_buffer, codepoints, static_cast<int>(count), 0, static_cast<int>(count));
    hb_buffer_set_direction(m_buffer, HB_DIRECTION_LTR);
    hb_buffer_set_script(m_buffer, latin ? HB_SCRIPT_LATIN : HB_SCRIPT_COMMON);
    hb_buffer_set_language(m_buffer, shapingLanguage());
    hb_shape(m_hbFont, m_buffer, nullptr, 0);
}

int16_t* FontEngine::slowKernCell(bool latin, uint16_t first, uint16_t second)
{
    std::unique_ptr<int16_t[]>& row = m_kernRows[latin][first];
    if (!row) {
        row = std::make_unique<int16_t[]>(kTableSize);
        std::fill_n(row.get(), kTableSize, kKernUnknown);
    }
    return &row[second];
}

int FontEngine::fillWrapStep(bool latin, uint16_t first, uint16_t second)
{
    const int k = kern(latin, first, second);
    const int step = m_advance[first] + (k == kKernComplex ? 0 : k);
    m_wrapStepsNonNegative &= step >= 0;
    if (second >= kWrapStepColumns || !(m_info[second].flags & charWrapSimple))
        return k;
    const int entry = k == kKernComplex ? kKernComplex : step;
    if (entry != kKernComplex && (entry <= kKernComplex || entry > std::numeric_limits<int16_t>::max()))
        return k;
    std::unique_ptr<int16_t[]>& row = m_ownWrapSteps[latin][first];
    if (!row) {
        row = std::make_unique<int16_t[]>(kWrapStepColumns);
        std::fill_n(row.get(), kWrapStepColumns, kKernUnknown);
        m_wrapSteps[latin][first] = row.get();
    }
    row[second] = static_cast<int16_t>(entry);
    return k;
}

int16_t FontEngine::measurePair(bool latin, uint16_t first, uint16_t second)
{
    const uint32_t pair[2] = {charInfo(first).codepoint, charInfo(second).codepoint};
    shape(pair, 2, latin);
    unsigned count = 0;
    const hb_glyph_info_t* glyphs = hb_buffer_get_glyph_infos(m_buffer, &count);
    const hb_glyph_position_t* positions = hb_buffer_get_glyph_positions(m_buffer, &count);
    if (count != 2 || glyphs[0].codepoint != m_glyph[first] || glyphs[1].codepoint != m_glyph[second]
        || glyphs[0].cluster != 0 || glyphs[1].cluster != 1)
        return kKernComplex;
    for (unsigned i = 0; i < 2; ++i) {
        if (positions[i].x_offset != 0 || positions[i].y_offset != 0 || positions[i].y_advance != 0)
            return kKernComplex;
    }
    m_kernOnFirstGlyph &= positions[1].x_advance == m_advance[second];
    const int kern = positions[0].x_advance + positions[1].x_advance - m_advance[first] - m_advance[second];
    if (kern <= kKernComplex || kern > std::numeric_limits<int16_t>::max())
        return kKernComplex; // too large for the table: let the shaper handle this pair
    return static_cast<int16_t>(kern);
}

bool FontEngine::isLatinRun(const uint16_t* slots, size_t count)
{
    static const CharInfo* const info = charTable().data();
    for (size_t i = 0; i < count; ++i) {
        if (info[slots[i]].flags & charLatin)
            return true;
    }
    return false;
}

bool FontEngine::toSlots(std::string_view utf8, std::vector<uint16_t>& slots, std::vector<uint32_t>* offsets,
                         std::vector<uint32_t>* newlines) const
{
    const auto* s = reinterpret_cast<const unsigned char*>(utf8.data());
    const size_t size = utf8.size();
    slots.resize(size);
    if (offsets)
        offsets->resize(size + 1);
    if (newlines)
        newlines->clear();

    auto p = s;
    const auto end = p + size;
    size_t n = 0;
    while (p < end) {
        // Runs of printable ASCII, by far the most common text, go through in blocks.
        if (m_printableAsciiUsable) {
            const size_t run = copyPrintableAscii(p, static_cast<size_t>(end - p), slots.data() + n);
            if (offsets) {
                const auto at = static_cast<uint32_t>(p - s);
                for (size_t i = 0; i < run; ++i)
                    (*offsets)[n + i] = at + static_cast<uint32_t>(i);
            }
            p += run;
            n += run;
            if (p == end)
                break;
        }
        if (offsets)
            (*offsets)[n] = static_cast<uint32_t>(p - s);
        int slot;
        if (*p < 0x80) {
            slot = *p++;
            if (slot == '\n' && newlines) {
                newlines->push_back(static_cast<uint32_t>(n));
                slots[n++] = '\n';
                continue;
            }
        } else {
            uint32_t c;
            if (!decodeUtf8(p, end, c))
                return false;
            slot = tableIndex(c);
            if (slot < 0)
                return false;
        }
        if (!m_usable[slot])
            return false;
        slots[n++] = static_cast<uint16_t>(slot);
    }
    slots.resize(n);
    if (offsets) {
        (*offsets)[n] = static_cast<uint32_t>(size);
        offsets->resize(n + 1);
    }
    return true;
}

bool FontEngine::toSlots(std::wstring_view text, std::vector<uint16_t>& slots, std::vector<uint32_t>* offsets,
                         std::vector<uint32_t>* newlines) const
{
    slots.resize(text.size());
    if (newlines)
        newlines->clear();
    for (size_t i = 0; i < text.size(); ++i) {
        const int slot = tableIndex(static_cast<uint32_t>(text[i]));
        if (slot == '\n' && newlines)
            newlines->push_back(static_cast<uint32_t>(i));
        else if (slot < 0 || !m_usable[slot])
            return false;
        slots[i] = static_cast<uint16_t>(slot);
    }
    if (offsets) {
        offsets->resize(text.size() + 1);
        for (size_t i = 0; i <= text.size(); ++i)
            (*offsets)[i] = static_cast<uint32_t>(i);
    }
    return true;
}

int64_t FontEngine::shapeWidth(const uint16_t* slots, size_t count, bool latin, bool withHyphen)
{
    if (!m_hbFont)
        return 0;
    m_scratchCodepoints.clear();
    for (size_t i = 0; i < count; ++i)
        m_scratchCodepoints.push_back(m_info[slots[i]].codepoint);
    if (withHyphen)
        m_scratchCodepoints.push_back(m_hyphenCodepoint);
    shape(m_scratchCodepoints.data(), m_scratchCodepoints.size(), latin);
    unsigned n = 0;
    const hb_glyph_position_t* positions = hb_buffer_get_glyph_positions(m_buffer, &n);
    int64_t width = 0;
    for (unsigned i = 0; i < n; ++i)
        width += positions[i].x_advance;
    return width;
}

const std::vector<int32_t>& FontEngine::ligatureWindow(const uint16_t* slots, size_t count, bool latin)
{
    auto& windows = m_ligatureWindows[latin];
    const std::u16string_view key(reinterpret_cast<const char16_t*>(slots), count);
    if (auto found = windows.find(key); found != windows.end())
        return found->second;
    if (windows.size() >= kMaxLigatureWindows / 2)
        windows.clear(); // only an unusual alphabet gets here: Latin text meets a few hundred windows

    std::vector<int32_t> logicalWidths(count, 0);
    if (m_hbFont) {
        m_scratchCodepoints.clear();
        for (size_t i = 0; i < count; ++i)
            m_scratchCodepoints.push_back(m_info[slots[i]].codepoint);
        shape(m_scratchCodepoints.data(), count, latin);
        unsigned n = 0;
        const hb_glyph_info_t* glyphs = hb_buffer_get_glyph_infos(m_buffer, &n);
        const hb_glyph_position_t* positions = hb_buffer_get_glyph_positions(m_buffer, &n);
        // Left-to-right text: clusters ascend. Each cluster's width is shared evenly by its characters, the
        // remainder going to the first.
        unsigned g = 0;
        while (g < n) {
            const unsigned cluster = glyphs[g].cluster;
            int64_t clusterWidth = 0;
            while (g < n && glyphs[g].cluster == cluster)
                clusterWidth += positions[g++].x_advance;
            const unsigned next = g < n ? glyphs[g].cluster : static_cast<unsigned>(count);
            const unsigned chars = next > cluster ? next - cluster : 1;
            const int64_t share = clusterWidth / chars;
            for (unsigned c = cluster; c < cluster + chars && c < count; ++c)
                logicalWidths[c] = static_cast<int32_t>(share);
            if (cluster < count)
                logicalWidths[cluster] += static_cast<int32_t>(clusterWidth - share * chars);
        }
    }
    return windows.emplace(std::u16string(key), std::move(logicalWidths)).first->second;
}

const FontEngine::ComplexWord& FontEngine::complexWord(const uint16_t* slots, size_t count, bool latin)
{
    // A joined pair changes the word only around itself: the joined glyph's own width and its kerning with
    // the characters on either side. So the word is summed pair by pair from the tables, and each run of
    // joined characters is shaped twice in small windows that the font shapes exactly as inside the word:
    // with the character before it, for that character's kerning against the joined glyph, and with the
    // character after it, for the run's own widths. Windows are pairs of a neighbour and a run, so how many a
    // text can meet is bounded by its alphabet, however many words it uses. (A window before a run and one
    // after never look alike: only the second starts with a joined pair.)
    ComplexWord& word = m_complexWord;
    word.logicalWidths.assign(count, 0);
    const auto joined = [&](size_t i) { return kern(latin, slots[i], slots[i + 1]) == kKernComplex; };
    size_t i = 0;
    while (i < count) {
        if (i + 1 == count || !joined(i)) {
            word.logicalWidths[i] = m_advance[slots[i]] + (i + 1 < count ? kern(latin, slots[i], slots[i + 1]) : 0);
            ++i;
            continue;
        }
        // The joined run from i to last; a run that starts right after it joins it, since its first character
        // is no plain neighbour.
        size_t last = i + 1;
        for (;;) {
            while (last + 1 < count && joined(last))
                ++last;
            if (last + 2 < count && joined(last + 1)) {
                last += 2;
                continue;
            }
            break;
        }
        if (i > 0)
            word.logicalWidths[i - 1] = ligatureWindow(slots + i - 1, last + 2 - i, latin)[0];
        const size_t end = std::min(last + 2, count);
        const std::vector<int32_t>& after = ligatureWindow(slots + i, end - i, latin);
        for (size_t c = i; c <= last; ++c)
            word.logicalWidths[c] = after[c - i];
        i = last + 1;
    }
    word.width = 0;
    for (const int32_t w : word.logicalWidths)
        word.width += w;
    return word;
}

int64_t FontEngine::hyphenWidth(bool latin, uint16_t last)
{
    if (m_hyphenSlot < 0)
        return 0;
    const auto hyphen = static_cast<uint16_t>(m_hyphenSlot);
    int k = kern(latin, last, hyphen);
    if (k == kKernComplex)
        return shapeWidth(&last, 1, latin, true) - m_advance[last];
    return m_advance[hyphen] + k;
}

int64_t FontEngine::measureByWords(const uint16_t* slots, size_t count, bool latin)
{
    int64_t width = 0;
    size_t i = 0;
    while (i < count) {
        if (m_info[slots[i]].flags & charWhite) {
            width += m_advance[slots[i]];
            if (i + 1 < count) {
                const int k = kern(latin, slots[i], slots[i + 1]);
                if (k == kKernComplex)
                    return shapeWidth(slots, count, latin, false);
                width += k;
            }
            ++i;
            continue;
        }
        size_t j = i;
        bool complex = false;
        int64_t plain = 0;
        while (j < count && !(m_info[slots[j]].flags & charWhite)) {
            plain += m_advance[slots[j]];
            if (j + 1 < count && !(m_info[slots[j + 1]].flags & charWhite)) {
                const int k = kern(latin, slots[j], slots[j + 1]);
                if (k == kKernComplex)
                    complex = true;
                else
                    plain += k;
            }
            ++j;
        }
        width += complex ? complexWord(slots + i, j - i, latin).width : plain;
        if (j < count) {
            const int k = kern(latin, slots[j - 1], slots[j]);
            if (k == kKernComplex)
                return shapeWidth(slots, count, latin, false);
            width += k;
        }
        i = j;
    }
    return width;
}

int64_t FontEngine::measureSlots(const uint16_t* slots, size_t count)
{
    if (count == 0)
        return 0;
    const bool latin = isLatinRun(slots, count);
    uint32_t pairs[kMaxComplexPairs];
    size_t pairCount = 0;
    int64_t width = m_advance[slots[0]];
    for (size_t i = 1; i < count; ++i) {
        int k = kern(latin, slots[i - 1], slots[i]);
        if (k == kKernComplex) {
            if (pairCount == kMaxComplexPairs)
                return measureByWords(slots, count, latin);
            pairs[pairCount++] = static_cast<uint32_t>(i);
            k = 0;
        }
        width += m_advance[slots[i]] + k;
    }
    if (pairCount > 0)
        width += complexWordsDelta(slots, count, latin, pairs, pairCount);
    return width;
}

int64_t FontEngine::measure(std::string_view utf8)
{
    const auto* s = reinterpret_cast<const unsigned char*>(utf8.data());
    const size_t n = utf8.size();
    if (n == 0)
        return 0;

    // Plain ASCII is by far the most common text: measured straight from the bytes.
    bool latin = false;
    size_t i = 0;
    for (; i < n; ++i) {
        const unsigned char c = s[i];
        if (c >= 128 || !m_asciiUsable[c])
            break;
        latin |= m_asciiLatin[c];
    }
    if (i == n) {
        const int16_t* table = m_asciiKern[latin].data();
        uint32_t pairs[kMaxComplexPairs];
        size_t pairCount = 0;
        int64_t width = m_advance[s[0]];
        for (size_t j = 1; j < n; ++j) {
            int k = table[asciiPair(s[j - 1], s[j])];
            if (k <= kKernComplex) {
                k = kern(latin, s[j - 1], s[j]);
                if (k == kKernComplex) {
                    if (pairCount == kMaxComplexPairs) {
                        m_scratchSlots.assign(s, s + n);
                        return measureByWords(m_scratchSlots.data(), n, latin);
                    }
                    pairs[pairCount++] = static_cast<uint32_t>(j);
                    k = 0;
                }
            }
            width += m_advance[s[j]] + k;
        }
        if (pairCount > 0)
            width += complexWordsDelta(s, n, latin, pairs, pairCount);
        return width;
    }
    // Mostly ASCII with some accented letters: decoded and measured in the same pass, when an ASCII letter
    // before the first other character has already made this a Latin run.
    if (latin) {
        int64_t width = 0;
        if (measureDecoding(utf8, width))
            return width;
    }
    if (toSlots(utf8, m_scratchSlots, nullptr))
        return measureSlots(m_scratchSlots.data(), m_scratchSlots.size());
    return shapeWithPango(utf8).width;
}

bool FontEngine::measureDecoding(std::string_view utf8, int64_t& width)
{
    auto p = reinterpret_cast<const unsigned char*>(utf8.data());
    const auto end = p + utf8.size();
    m_scratchSlots.resize(utf8.size());
    uint16_t* slots = m_scratchSlots.data();
    uint32_t pairs[kMaxComplexPairs];
    size_t pairCount = 0;
    size_t n = 0;
    int64_t sum = 0;
    while (p < end) {
        int slot;
        if (*p < 0x80) {
            slot = *p++;
        } else {
            uint32_t c;
            if (!decodeUtf8(p, end, c))
                return false;
            slot = tableIndex(c);
            if (slot < 0)
                return false;
        }
        if (!m_usable[slot])
            return false;
        sum += m_advance[slot];
        if (n > 0) {
            int k = kern(true, slots[n - 1], static_cast<uint16_t>(slot));
            if (k == kKernComplex) {
                if (pairCount == kMaxComplexPairs)
                    return false;
                pairs[pairCount++] = static_cast<uint32_t>(n);
                k = 0;
            }
            sum += k;
        }
        slots[n++] = static_cast<uint16_t>(slot);
    }
    if (pairCount > 0)
        sum += complexWordsDelta(slots, n, true, pairs, pairCount);
    width = sum;
    return true;
}

template <typename Slot>
int64_t FontEngine::complexWordsDelta(const Slot* slots, size_t count, bool latin, const uint32_t* pairs,
                                      size_t pairCount)
{
    const auto white = [&](size_t i) { return (m_info[slots[i]].flags & charWhite) != 0; };
    int64_t delta = 0;
    size_t wordEnd = 0;
    for (size_t i = 0; i < pairCount; ++i) {
        const size_t pair = pairs[i];
        if (pair < wordEnd)
            continue; // in the word already corrected
        if (white(pair - 1) || white(pair)) {
            // Not a ligature inside a word: the word-by-word correction does not apply.
            m_wordSlots.assign(slots, slots + count);
            int64_t plain = 0;
            for (size_t j = 0; j < count; ++j) {
                plain += m_advance[slots[j]];
                if (j + 1 < count) {
                    const int k = kern(latin, slots[j], slots[j + 1]);
                    plain += k == kKernComplex ? 0 : k;
                }
            }
            return shapeWidth(m_wordSlots.data(), count, latin, false) - plain;
        }
        size_t wordStart = pair - 1;
        while (wordStart > 0 && !white(wordStart - 1))
            --wordStart;
        wordEnd = pair;
        while (wordEnd < count && !white(wordEnd))
            ++wordEnd;
        m_wordSlots.assign(slots + wordStart, slots + wordEnd);
        int64_t plain = 0;
        for (size_t j = 0; j < m_wordSlots.size(); ++j) {
            plain += m_advance[m_wordSlots[j]];
            if (j + 1 < m_wordSlots.size()) {
                const int k = kern(latin, m_wordSlots[j], m_wordSlots[j + 1]);
                plain += k == kKernComplex ? 0 : k;
            }
        }
        delta += complexWord(m_wordSlots.data(), m_wordSlots.size(), latin).width - plain;
    }
    return delta;
}

int64_t FontEngine::measure(std::wstring_view text)
{
    if (toSlots(text, m_scratchSlots, nullptr))
        return measureSlots(m_scratchSlots.data(), m_scratchSlots.size());
    return shapeWithPango(toUTF8(text).view()).width;
}

TextExtents FontEngine::extents(std::string_view utf8)
{
    TextExtents e;
    e.ascent = m_ascent;
    e.descent = m_descent;
    e.lineHeight = m_lineHeight;
    if (toSlots(utf8, m_scratchSlots, nullptr)) {
        e.width = measureSlots(m_scratchSlots.data(), m_scratchSlots.size()) / double(kShaperUnits);
        e.height = m_lineHeight;
        return e;
    }
    const ShapedLines shaped = shapeWithPango(utf8);
    e.width = shaped.width / double(kShaperUnits);
    e.height = shaped.height / double(kShaperUnits);
    e.lines = shaped.lines;
    return e;
}

TextExtents FontEngine::extents(std::wstring_view text)
{
    if (toSlots(text, m_scratchSlots, nullptr)) {
        TextExtents e;
        e.ascent = m_ascent;
        e.descent = m_descent;
        e.lineHeight = m_lineHeight;
        e.width = measureSlots(m_scratchSlots.data(), m_scratchSlots.size()) / double(kShaperUnits);
        e.height = m_lineHeight;
        return e;
    }
    return extents(toUTF8(text).view());
}

FontEngine::ShapedLines FontEngine::shapeWithPango(std::string_view utf8)
{
    PangoLayout* lay = layout();
    pango_layout_set_width(lay, -1);
    if (isValidShaperText(utf8))
        pango_layout_set_text(lay, utf8.data(), static_cast<int>(utf8.size()));
    else {
        const std::string clean = sanitisedUtf8(utf8);
        pango_layout_set_text(lay, clean.data(), static_cast<int>(clean.size()));
    }
    PangoRectangle logical;
    pango_layout_get_extents(lay, nullptr, &logical);
    ShapedLines result;
    result.width = logical.width;
    result.height = logical.height;
    result.lines = pango_layout_get_line_count(lay);
    return result;
}

std::vector<FontEngine::PangoLine> FontEngine::wrapWithPango(std::string_view utf8, int widthUnits)
{
    std::string clean;
    if (!isValidShaperText(utf8)) {
        clean = sanitisedUtf8(utf8);
        utf8 = clean;
    }
    PangoLayout* lay = layout();
    pango_layout_set_width(lay, std::max(widthUnits, 0));
    pango_layout_set_wrap(lay, PANGO_WRAP_WORD_CHAR);
    pango_layout_set_text(lay, utf8.data(), static_cast<int>(utf8.size()));
    std::vector<PangoLine> lines;
    for (GSList* item = pango_layout_get_lines_readonly(lay); item; item = item->next) {
        const auto* line = static_cast<PangoLayoutLine*>(item->data);
        PangoLine out{static_cast<size_t>(line->start_index), static_cast<size_t>(line->start_index + line->length),
                      false};
        if (GSList* last = g_slist_last(line->runs)) {
            const auto* run = static_cast<PangoGlyphItem*>(last->data);
            out.hyphen = run && (run->item->analysis.flags & PANGO_ANALYSIS_FLAG_NEED_HYPHEN);
        }
        lines.push_back(out);
    }
    pango_layout_set_width(lay, -1);
    // Positions of the sanitised text map back one to one only when nothing was replaced; otherwise the
    // caller's text is not valid UTF-8 and approximate positions are the best answer there is.
    for (auto& line : lines) {
        line.begin = std::min(line.begin, utf8.size());
        line.end = std::min(line.end, utf8.size());
    }
    return lines;
}

void FontEngine::drawWithLayout(cairo_t* cr, std::string_view utf8, double x, double baseline)
{
    PangoLayout* lay = layout();
    pango_layout_set_width(lay, -1);
    if (isValidShaperText(utf8))
        pango_layout_set_text(lay, utf8.data(), static_cast<int>(utf8.size()));
    else {
        const std::string clean = sanitisedUtf8(utf8);
        pango_layout_set_text(lay, clean.data(), static_cast<int>(clean.size()));
    }
    cairo_move_to(cr, x, baseline - pango_layout_get_baseline(lay) / double(PANGO_SCALE));
    pango_cairo_show_layout(cr, lay);
}

void FontEngine::draw(cairo_t* cr, std::string_view utf8, double x, double baseline)
{
    if (!m_keepShapedText) {
        drawWithLayout(cr, utf8, x, baseline);
        return;
    }
    // Text the tables can place is placed afresh every time: that costs no more than finding it kept, and far
    // less than keeping it when the text is new, as every row is on a page of a long table scrolled through.
    if (shapeFromTables(utf8, m_drawnFromTables)) {
        drawShaped(cr, m_drawnFromTables, x, baseline);
        // One very long line drawn once must not keep its glyphs' room for the font's life.
        if (m_drawnFromTables.glyphs.capacity() > kReusedGlyphsLimit)
            m_drawnFromTables = ShapedText();
        return;
    }
    const ShapedText* shaped = m_shapedTexts.find(utf8);
    if (!shaped) {
        ShapedText laidOut;
        shapeWithLayout(utf8, laidOut);
        shaped = &m_shapedTexts.insert(utf8, std::move(laidOut));
    }
    if (shaped->needsLayout) {
        drawWithLayout(cr, utf8, x, baseline);
        return;
    }
    drawShaped(cr, *shaped, x, baseline);
}

void FontEngine::drawShaped(cairo_t* cr, const ShapedText& shaped, double x, double baseline)
{
    // The layout renderer's own arithmetic, step by step, so that every glyph lands on the very same
    // fraction of a pixel: the pen goes to the line's top through the current point (Cairo keeps it in fixed
    // point), and each glyph is placed from there.
    cairo_move_to(cr, x, baseline - shaped.baseline / double(PANGO_SCALE));
    double left = 0.0;
    double top = 0.0;
    cairo_get_current_point(cr, &left, &top);
    const double baseY = top + double(shaped.baseline) / PANGO_SCALE;
    // Fonts belong to the user-interface thread, so one array serves them all.
    static std::vector<cairo_glyph_t> placed;
    placed.resize(shaped.glyphs.size());
    for (const ShapedRun& run : shaped.runs) {
        const double baseX = left + double(run.x) / PANGO_SCALE;
        cairo_glyph_t* out = placed.data();
        for (uint32_t i = 0; i < run.glyphCount; ++i) {
            const ShapedGlyph& glyph = shaped.glyphs[run.firstGlyph + i];
            out[i].index = glyph.index;
            out[i].x = baseX + double(glyph.x) / PANGO_SCALE;
            out[i].y = glyph.y == 0 ? baseY : baseY + double(glyph.y) / PANGO_SCALE;
        }
        cairo_set_scaled_font(cr, run.font);
        cairo_show_glyphs(cr, out, static_cast<int>(run.glyphCount));
    }
}

bool FontEngine::shapeFromTables(std::string_view utf8, ShapedText& shaped)
{
    if (!m_scaledFont || !m_kernOnFirstGlyph || cairo_scaled_font_status(m_scaledFont) != CAIRO_STATUS_SUCCESS
        || !toSlots(utf8, m_scratchSlots, nullptr))
        return false;
    const uint16_t* slots = m_scratchSlots.data();
    const size_t count = m_scratchSlots.size();
    const bool latin = isLatinRun(slots, count);
    shaped.glyphs.resize(count);
    int64_t pen = 0;
    for (size_t i = 0; i < count; ++i) {
        const int k = i + 1 < count ? kern(latin, slots[i], slots[i + 1]) : 0;
        if (k == kKernComplex || pen > std::numeric_limits<int32_t>::max())
            return false;
        shaped.glyphs[i] = {m_glyph[slots[i]], static_cast<int32_t>(pen), 0};
        pen += m_advance[slots[i]] + k;
    }
    shaped.baseline = m_baselineUnits;
    shaped.runs.assign(1, {m_scaledFont, 0, static_cast<uint32_t>(count), 0});
    shaped.needsLayout = false;
    return true;
}

void FontEngine::shapeWithLayout(std::string_view utf8, ShapedText& shaped)
{
    shaped = ShapedText();
    shaped.needsLayout = true;
    PangoLayout* lay = layout();
    pango_layout_set_width(lay, -1);
    std::string clean;
    if (!isValidShaperText(utf8)) {
        clean = sanitisedUtf8(utf8);
        utf8 = clean;
    }
    pango_layout_set_text(lay, utf8.data(), static_cast<int>(utf8.size()));
    if (pango_layout_get_line_count(lay) != 1)
        return;
    PangoLayoutIter* iter = pango_layout_get_iter(lay);
    PangoRectangle lineExtents;
    pango_layout_iter_get_line_extents(iter, nullptr, &lineExtents);
    pango_layout_iter_free(iter);
    const PangoLayoutLine* line = pango_layout_get_line_readonly(lay, 0);
    std::vector<ShapedRun> runs;
    int64_t runX = lineExtents.x;
    bool drawable = true;
    for (GSList* item = line->runs; item && drawable; item = item->next) {
        const auto* run = static_cast<const PangoGlyphItem*>(item->data);
        PangoGlyphString* glyphs = run->glyphs;
        cairo_scaled_font_t* font = pango_cairo_font_get_scaled_font(PANGO_CAIRO_FONT(run->item->analysis.font));
        if (!font || cairo_scaled_font_status(font) != CAIRO_STATUS_SUCCESS || run->y_offset != 0) {
            drawable = false;
            break;
        }
        ShapedRun out{cairo_scaled_font_reference(font), static_cast<uint32_t>(shaped.glyphs.size()), 0,
                      static_cast<int32_t>(runX)};
        runs.push_back(out);
        int64_t position = 0;
        for (int i = 0; i < glyphs->num_glyphs; ++i) {
            const PangoGlyphInfo& glyph = glyphs->glyphs[i];
            if (glyph.glyph & PANGO_GLYPH_UNKNOWN_FLAG && glyph.glyph != (0x20 | PANGO_GLYPH_UNKNOWN_FLAG)) {
                drawable = false; // a placeholder box, which the layout renderer draws itself
                break;
            }
            if (glyph.glyph != PANGO_GLYPH_EMPTY && !(glyph.glyph & PANGO_GLYPH_UNKNOWN_FLAG))
                shaped.glyphs.push_back({glyph.glyph, static_cast<int32_t>(position + glyph.geometry.x_offset),
                                         glyph.geometry.y_offset});
            position += glyph.geometry.width;
        }
        runs.back().glyphCount = static_cast<uint32_t>(shaped.glyphs.size()) - runs.back().firstGlyph;
        runX += pango_glyph_string_get_width(glyphs);
    }
    if (!drawable) {
        for (const ShapedRun& run : runs)
            cairo_scaled_font_destroy(run.font);
        shaped.glyphs.clear();
        return;
    }
    shaped.runs = std::move(runs);
    shaped.baseline = pango_layout_get_baseline(lay);
    shaped.needsLayout = false;
}

} // namespace Pictor
