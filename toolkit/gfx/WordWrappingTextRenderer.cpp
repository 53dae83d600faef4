#include "toolkit/gfx/WordWrappingTextRenderer.h"

#include "toolkit/gfx/FontEngine.h"
#include "toolkit/gfx/LineBreaking.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <type_traits>

using Pictor::FontEngine;

namespace {

// Breaks one paragraph (no newlines) into lines, greedily, as the text shaper does in its word-then-character
// mode:
//
//   1. If the rest of the paragraph fits, it is the last line. One space at its end does not count.
//   2. Otherwise try each word-break position in turn. The first one is kept even if it does not fit; each
//      later one replaces it if it fits (or is narrower). A space before the position does not count; a hyphen
//      shown there does.
//   3. If the kept position still does not fit, repeat with every character boundary as a position.
//   4. The line ends at the kept position; the next line starts there.
//
// Widths are exact shaper widths of the line's text alone (no kerning across the break), from prefix sums of
// advances and kerning. A word in which the font forms ligatures has its true width folded into the prefix sums,
// and a line boundary that cuts such a word is measured by shaping the piece.
class ParagraphWrapper {
public:
    ParagraphWrapper(FontEngine& engine, const uint16_t* slots, size_t count, const std::vector<uint8_t>& breaks,
                     const std::vector<uint32_t>& wordBreaks, int64_t width, Pictor::WrapScratch& scratch)
        : m_engine(engine), m_slots(slots), m_count(count), m_breaks(breaks), m_wordBreaks(wordBreaks),
          m_width(width),
          m_info(&FontEngine::charInfo(0)), m_kernNext(scratch.kernNext), m_logWidth(scratch.logWidth),
          m_prefix(scratch.prefix), m_cutsComplexWord(scratch.cutsComplexWord)
    {
        m_latin = FontEngine::isLatinRun(slots, count);
        m_safeDistance = int64_t(engine.approximateCharWidth()) * 3;
        buildPrefixSums();
    }

    template <typename Emit>
    void run(Emit&& emit)
    {
        size_t start = 0;
        if (m_count == 0) {
            emit(0, 0, false);
            return;
        }
        while (true) {
            if (m_count - start == 1 || restFits(start)) {
                emit(start, m_count, false);
                return;
            }
            Candidate best = findBreak(start, false);
            if (best.width > m_width)
                best = findBreak(start, true);
            const bool hyphen = best.position < m_count && (m_breaks[best.position] & Pictor::breakHyphen);
            emit(start, best.position, hyphen);
            start = best.position;
            if (start >= m_count)
                return;
        }
    }

private:
    struct Candidate {
        size_t position;
        int64_t width;
    };

    bool white(size_t i) const { return m_info[m_slots[i]].flags & Pictor::charWhite; }

    void buildPrefixSums()
    {
        m_kernNext.resize(m_count);
        m_logWidth.resize(m_count);
        m_cutsComplexWord.assign(m_count + 1, 0);
        bool anyComplex = false;
        for (size_t i = 0; i < m_count; ++i) {
            int k = 0;
            if (i + 1 < m_count) {
                k = m_engine.kern(m_latin, m_slots[i], m_slots[i + 1]);
                if (k == FontEngine::kKernComplex) {
                    anyComplex = true;
                    k = 0;
                    m_cutsComplexWord[i + 1] = 1;
                }
            }
            m_kernNext[i] = k;
            m_logWidth[i] = m_engine.advance(m_slots[i]) + k;
        }
        if (anyComplex)
            foldComplexWords();
        m_prefix.resize(m_count + 1);
        m_prefix[0] = 0;
        for (size_t i = 0; i < m_count; ++i)
            m_prefix[i + 1] = m_prefix[i] + m_logWidth[i];
    }

    // Gives the characters of each word holding a ligature the shaper's share of the word's width, and marks
    // every position inside such a word.
    void foldComplexWords()
    {
        size_t i = 0;
        while (i < m_count) {
            if (white(i)) {
                ++i;
                continue;
            }
            size_t j = i;
            bool complex = false;
            while (j < m_count && !white(j)) {
                complex |= j > i && m_cutsComplexWord[j];
                ++j;
            }
            if (complex) {
                const auto& word = m_engine.complexWord(m_slots + i, j - i, m_latin);
                for (size_t k = i; k < j; ++k)
                    m_logWidth[k] = word.logicalWidths[k - i];
                m_logWidth[j - 1] += m_kernNext[j - 1];
                for (size_t k = i + 1; k < j; ++k)
                    m_cutsComplexWord[k] = 1;
            }
            i = j;
        }
    }

    int64_t exactWidth(size_t start, size_t end, bool withHyphen)
    {
        if (m_cutsComplexWord[start] || m_cutsComplexWord[end])
            return m_engine.shapeWidth(m_slots + start, end - start, m_latin, withHyphen);
        int64_t width = m_prefix[end] - m_prefix[start] - m_kernNext[end - 1];
        if (withHyphen)
            width += m_engine.hyphenWidth(m_latin, m_slots[end - 1]);
        return width;
    }

    bool restFits(size_t start)
    {
        const int64_t spare = white(m_count - 1) ? m_logWidth[m_count - 1] : 0;
        if (m_prefix[m_count] - m_prefix[start] - spare > m_width)
            return false;
        return exactWidth(start, m_count, false) - spare <= m_width;
    }

    int64_t candidateWidth(size_t start, size_t position)
    {
        if (position == m_count)
            return exactWidth(start, position, false); // a space at the very end is not given back
        const bool hyphen = m_breaks[position] & Pictor::breakHyphen;
        int64_t width = exactWidth(start, position, hyphen);
        if (white(position - 1))
            width -= m_logWidth[position - 1];
        return width;
    }

    // Tries the break positions after `start` in order (word breaks, or every character boundary).
    Candidate findBreak(size_t start, bool anyCharacter)
    {
        Candidate best{m_count, 0};
        bool haveBest = false;
        auto consider = [&](size_t p) {
            // Past the edge by more than the look-ahead margin, no later position can do better.
            const int64_t logical = m_prefix[p] - m_prefix[start];
            const int64_t adjust = p < m_count && white(p - 1) ? -m_logWidth[p - 1] : 0;
            if (haveBest && best.position < m_count && std::min(logical + adjust, logical) > m_width + m_safeDistance)
                return false;
            const int64_t width = candidateWidth(start, p);
            if (!haveBest || width <= m_width || width < best.width) {
                best = {p, width};
                haveBest = true;
            }
            return true;
        };
        if (anyCharacter) {
            for (size_t p = start + 1; p <= m_count && consider(p);)
                ++p;
            return best;
        }
        while (m_wordBreaks[m_nextWordBreak] <= start)
            ++m_nextWordBreak;
        for (size_t i = m_nextWordBreak; i < m_wordBreaks.size() && consider(m_wordBreaks[i]);)
            ++i;
        return best;
    }

    FontEngine& m_engine;
    const uint16_t* m_slots;
    size_t m_count;
    const std::vector<uint8_t>& m_breaks;
    const std::vector<uint32_t>& m_wordBreaks; // ascending, ending with m_count
    size_t m_nextWordBreak = 0;                // first entry that may lie after the current line's start
    int64_t m_width;
    const Pictor::CharInfo* m_info;
    bool m_latin = false;
    int64_t m_safeDistance = 0;
    std::vector<int32_t>& m_kernNext;
    std::vector<int64_t>& m_logWidth;
    std::vector<int64_t>& m_prefix;
    std::vector<uint8_t>& m_cutsComplexWord;
};

// The common case in one pass over the paragraph, keeping only the word-break positions: every line breaks at a
// word break, and no word that the font joins into a ligature has a break inside it. It follows exactly the
// steps of ParagraphWrapper restricted to that case, and answers false (having emitted nothing) as soon as the
// paragraph needs more: a word wider than the line, or a break inside a ligature word.
class FastParagraphWrapper {
public:
    using Candidate = Pictor::WrapScratch::Candidate;

    FastParagraphWrapper(FontEngine& engine, Pictor::WrapScratch& scratch)
        : m_engine(engine), m_scratch(scratch), m_info(&FontEngine::charInfo(0)),
          m_safeDistance(int64_t(engine.approximateCharWidth()) * 3)
    {
    }

    template <typename Emit>
    bool run(const uint16_t* slots, size_t count, int64_t width, Emit&& emit)
    {
        if (count < 2 || !scan(slots, count))
            return false;
        const Candidate* candidates = m_scratch.candidates.data();
        // Lines are collected first, so that nothing is emitted when the general wrapper has to take over.
        auto& lines = m_scratch.lines;
        lines.clear();
        size_t cursor = 0;
        uint32_t start = 0;
        int64_t startPrefix = 0;
        while (true) {
            if (count - start == 1 || m_total - startPrefix - m_trailingSpace <= width) {
                lines.push_back({start, static_cast<uint32_t>(count)});
                break;
            }
            while (candidates[cursor].position <= start)
                ++cursor;
            const Candidate* best = nullptr;
            int64_t bestWidth = 0;
            for (size_t i = cursor; i < m_candidateCount; ++i) {
                const Candidate& c = candidates[i];
                const int64_t logical = c.prefix - startPrefix;
                const bool atEnd = c.position == count;
                // One space before the break does not count against the line.
                const int64_t space = !atEnd && (m_info[slots[c.position - 1]].flags & Pictor::charWhite)
                    ? m_engine.advance(slots[c.position - 1]) + c.kernBefore
                    : 0;
                if (best && best->position < count && std::min(logical - space, logical) > width + m_safeDistance)
                    break;
                const int64_t w = atEnd ? logical : logical - c.kernBefore - space;
                if (!best || w <= width || w < bestWidth) {
                    best = &c;
                    bestWidth = w;
                }
            }
            if (bestWidth > width)
                return false; // needs breaking between characters
            lines.push_back({start, best->position});
            start = best->position;
            startPrefix = best->prefix;
            if (start >= count)
                break;
        }
        for (const auto& line : lines)
            emit(line.first, line.second, false);
        return true;
    }

private:
    // Gathers the word breaks with their prefix widths. False when a ligature word holds a break, a break would
    // show a hyphen, or a character is outside the scanner's classes.
    bool scan(const uint16_t* slots, size_t count)
    {
        // Everything the loop touches is held in locals (stores through byte-sized pointers would otherwise
        // force members to be reloaded at every character), and it has no branch that depends on the text
        // except the rare ones: a pair met for the first time, a ligature, a look-ahead rule.
        FontEngine& engine = m_engine;
        const Pictor::CharInfo* info = m_info;
        const bool latin = FontEngine::isLatinRun(slots, count);
        const int16_t* asciiKern = engine.asciiKern(latin);
        if (m_scratch.candidates.size() < count + 1)
            m_scratch.candidates.resize(count + 1);
        Candidate* out = m_scratch.candidates.data();
        m_scratch.complexPairs.clear();
        size_t n = 0;
        uint8_t badBreak = 0;
        const Pictor::CharInfo* prev = &info[slots[0]];
        const Pictor::CharInfo* here = &info[slots[1]];
        uint8_t allFlags = prev->flags;
        Pictor::LineBreakScanner scanner(static_cast<uint8_t>(prev->breakClass));
        int64_t prefix = 0;
        for (size_t p = 1; p < count; ++p) {
            // The next character is fetched one step ahead, for the one rule that looks past a pair; slot 0
            // (never a table character) stands for the end.
            const Pictor::CharInfo* next = &info[p + 1 < count ? slots[p + 1] : 0];
            const uint16_t a = slots[p - 1];
            const uint16_t b = slots[p];
            allFlags &= here->flags;
            int k = (a | b) < 128 ? asciiKern[FontEngine::asciiPair(a, b)] : FontEngine::kKernUnknown;
            if (k <= FontEngine::kKernComplex) {
                k = engine.kern(latin, a, b);
                if (k == FontEngine::kKernComplex) {
                    m_scratch.complexPairs.push_back(static_cast<uint32_t>(p));
                    k = 0;
                }
            }
            prefix += engine.advance(a) + k;
            const uint8_t f = scanner.step(*prev, *here, next->breakClass);
            out[n] = {prefix, static_cast<uint32_t>(p), k};
            n += f & Pictor::breakLine;
            badBreak |= f & (f >> 1); // a break that would show a hyphen
            prev = here;
            here = next;
        }
        if (!(allFlags & Pictor::charWrapSimple) || badBreak)
            return false;
        prefix += engine.advance(slots[count - 1]);
        out[n++] = {prefix, static_cast<uint32_t>(count), 0};
        m_candidateCount = n;
        m_total = prefix;
        m_trailingSpace = (prev->flags & Pictor::charWhite) ? engine.advance(slots[count - 1]) : 0;
        return m_scratch.complexPairs.empty() || foldComplexWords(slots, count, latin);
    }

    // Each word holding a ligature takes its shaped width: the difference moves every later position.
    bool foldComplexWords(const uint16_t* slots, size_t count, bool latin)
    {
        const auto white = [&](size_t i) { return (m_info[slots[i]].flags & Pictor::charWhite) != 0; };
        Candidate* candidates = m_scratch.candidates.data();
        size_t wordEnd = 0;
        for (const uint32_t pair : m_scratch.complexPairs) {
            if (pair < wordEnd)
                continue; // same word as the previous pair
            size_t wordStart = pair - 1;
            while (wordStart > 0 && !white(wordStart - 1))
                --wordStart;
            wordEnd = pair;
            while (wordEnd < count && !white(wordEnd))
                ++wordEnd;
            int64_t plain = 0;
            for (size_t i = wordStart; i < wordEnd; ++i) {
                plain += m_engine.advance(slots[i]);
                if (i + 1 < wordEnd) {
                    const int k = m_engine.kern(latin, slots[i], slots[i + 1]);
                    plain += k == FontEngine::kKernComplex ? 0 : k;
                }
            }
            const int64_t delta = m_engine.complexWord(slots + wordStart, wordEnd - wordStart, latin).width - plain;
            for (size_t i = 0; i < m_candidateCount; ++i) {
                if (candidates[i].position > wordStart && candidates[i].position < wordEnd)
                    return false;
                if (candidates[i].position >= wordEnd)
                    candidates[i].prefix += delta;
            }
            m_total += delta;
        }
        return true;
    }

    FontEngine& m_engine;
    Pictor::WrapScratch& m_scratch;
    const Pictor::CharInfo* m_info;
    int64_t m_safeDistance;
    size_t m_candidateCount = 0;
    int64_t m_total = 0;
    int64_t m_trailingSpace = 0;
};

int64_t toShaperUnits(double width)
{
    if (!(width > 0.0))
        return 0;
    return static_cast<int64_t>(std::min(width, 1e9) * Pictor::kShaperUnits);
}

// Encodes wide text as UTF-8 and remembers where each wide character starts, so that positions the shaper
// answers in bytes can be turned back into wide positions.
std::string wideToUtf8(std::wstring_view text, std::vector<size_t>& byteToWide)
{
    std::string out;
    byteToWide.clear();
    for (size_t i = 0; i < text.size(); ++i) {
        auto c = static_cast<uint32_t>(text[i]);
        if (c > 0x10FFFF || (c >= 0xD800 && c <= 0xDFFF) || c == 0)
            c = 0xFFFD;
        char bytes[4];
        size_t n;
        if (c < 0x80) {
            bytes[0] = static_cast<char>(c);
            n = 1;
        } else if (c < 0x800) {
            bytes[0] = static_cast<char>(0xC0 | (c >> 6));
            bytes[1] = static_cast<char>(0x80 | (c & 0x3F));
            n = 2;
        } else if (c < 0x10000) {
            bytes[0] = static_cast<char>(0xE0 | (c >> 12));
            bytes[1] = static_cast<char>(0x80 | ((c >> 6) & 0x3F));
            bytes[2] = static_cast<char>(0x80 | (c & 0x3F));
            n = 3;
        } else {
            bytes[0] = static_cast<char>(0xF0 | (c >> 18));
            bytes[1] = static_cast<char>(0x80 | ((c >> 12) & 0x3F));
            bytes[2] = static_cast<char>(0x80 | ((c >> 6) & 0x3F));
            bytes[3] = static_cast<char>(0x80 | (c & 0x3F));
            n = 4;
        }
        out.append(bytes, n);
        byteToWide.insert(byteToWide.end(), n, i);
    }
    byteToWide.push_back(text.size());
    return out;
}

// Wraps text whose characters are all in the font's tables. Answers false when the shaper must do it all.
template <typename Emit>
bool wrapWithTables(FontEngine& engine, const std::vector<uint16_t>& slots, const std::vector<uint32_t>& newlines,
                    int64_t width, Emit&& emit)
{
    Pictor::WrapScratch& scratch = engine.wrapScratch();
    std::vector<uint8_t>& breaks = scratch.breaks;
    std::vector<uint32_t>& wordBreaks = scratch.wordBreaks;
    FastParagraphWrapper fast(engine, scratch);
    size_t start = 0;
    for (size_t paragraph = 0; paragraph <= newlines.size(); ++paragraph) {
        const size_t end = paragraph < newlines.size() ? newlines[paragraph] : slots.size();
        const size_t count = end - start;
        const auto emitHere = [&](size_t b, size_t e, bool hyphen) { emit(start + b, start + e, hyphen); };
        if (fast.run(slots.data() + start, count, width, emitHere)) {
            start = end + 1;
            continue;
        }
        if (!Pictor::computeBreakFlags(slots.data() + start, count, breaks, &wordBreaks)) {
            if (!Pictor::computeBreakFlagsWithShaper(slots.data() + start, count, breaks))
                return false;
            wordBreaks.clear();
            for (size_t p = 1; p <= count; ++p) {
                if (breaks[p] & Pictor::breakLine)
                    wordBreaks.push_back(static_cast<uint32_t>(p));
            }
        }
        ParagraphWrapper wrapper(engine, slots.data() + start, count, breaks, wordBreaks, width, scratch);
        wrapper.run(emitHere);
        start = end + 1;
    }
    return true;
}

template <typename Text>
std::vector<WordWrappingTextRenderer::Line> breakLines(Text text, const Pictor::Font& font, double width)
{
    FontEngine& engine = font.engine();
    std::vector<uint16_t>& slots = engine.wrapScratch().slots;
    std::vector<uint32_t>& offsets = engine.wrapScratch().offsets;
    std::vector<uint32_t>& newlines = engine.wrapScratch().newlines;
    const int64_t units = toShaperUnits(width);
    std::vector<WordWrappingTextRenderer::Line> lines;
    if (engine.toSlots(text, slots, &offsets, &newlines)) {
        const bool done = wrapWithTables(engine, slots, newlines, units, [&](size_t b, size_t e, bool hyphen) {
            lines.push_back({offsets[b], offsets[e], hyphen});
        });
        if (done)
            return lines;
        lines.clear();
    }
    if constexpr (std::is_same_v<Text, std::string_view>) {
        for (const auto& line : engine.wrapWithPango(text, static_cast<int>(std::min<int64_t>(units, INT32_MAX))))
            lines.push_back({line.begin, line.end, line.hyphen});
    } else {
        std::vector<size_t> byteToWide;
        const std::string utf8 = wideToUtf8(text, byteToWide);
        for (const auto& line : engine.wrapWithPango(utf8, static_cast<int>(std::min<int64_t>(units, INT32_MAX))))
            lines.push_back({byteToWide[line.begin], byteToWide[line.end], line.hyphen});
    }
    return lines;
}

template <typename Text>
int countLines(Text text, const Pictor::Font& font, double width)
{
    FontEngine& engine = font.engine();
    std::vector<uint16_t>& slots = engine.wrapScratch().slots;
    std::vector<uint32_t>& newlines = engine.wrapScratch().newlines;
    const int64_t units = toShaperUnits(width);
    if (engine.toSlots(text, slots, nullptr, &newlines)) {
        int count = 0;
        if (wrapWithTables(engine, slots, newlines, units, [&](size_t, size_t, bool) { ++count; }))
            return count;
    }
    return static_cast<int>(breakLines(text, font, width).size());
}

} // namespace

int WordWrappingTextRenderer::calcNumDisplayLines(std::wstring_view text, int width, const Pictor::FontDesc& font)
{
    return countLines(text, *Pictor::loadFont(font), width);
}

int WordWrappingTextRenderer::calcNumDisplayLines(std::wstring_view text, const Pictor::FontDesc& font, double width)
{
    return countLines(text, *Pictor::loadFont(font), width);
}

int WordWrappingTextRenderer::calcNumDisplayLines(std::wstring_view text, const Pictor::Font& font, double width)
{
    return countLines(text, font, width);
}

int WordWrappingTextRenderer::calcNumDisplayLines(std::string_view utf8, const Pictor::Font& font, double width)
{
    return countLines(utf8, font, width);
}

std::vector<WordWrappingTextRenderer::Line>
WordWrappingTextRenderer::calcLineBreaks(std::wstring_view text, const Pictor::Font& font, double width)
{
    return breakLines(text, font, width);
}

std::vector<WordWrappingTextRenderer::Line>
WordWrappingTextRenderer::calcLineBreaks(std::string_view utf8, const Pictor::Font& font, double width)
{
    return breakLines(utf8, font, width);
}
