#include "toolkit/gfx/WordWrappingTextRenderer.h"

#include "toolkit/gfx/detail/FontEngine.h"
#include "toolkit/gfx/detail/LineBreaking.h"

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

// The common case, exactly as ParagraphWrapper decides it, without classifying most of the text.
//
// Widths are summed over the whole paragraph first, a tight loop over table look-ups. Break positions are then
// classified only in a small window per line: from the last space before the edge of the width to the first
// character past it. That is enough because
//
//   - with widths that only grow along the text, no position after the first character past the edge fits, and
//     a position that does not fit only matters when none does;
//   - every earlier position fits too, so none stops the search for a later one, and the last one that fits
//     wins over all of them.
//
// When the window holds no fitting position, the line is searched from its start as ParagraphWrapper does.
// The answer is false (nothing emitted) whenever the general wrapper must decide: a word wider than the line,
// a considered break inside a word the font joins into a ligature, a character outside the scanner's classes,
// or a ligature next to a space.
class FastParagraphWrapper {
public:
    FastParagraphWrapper(FontEngine& engine, Pictor::WrapScratch& scratch)
        : m_engine(engine), m_scratch(scratch), m_info(&FontEngine::charInfo(0)),
          m_safeDistance(int64_t(engine.approximateCharWidth()) * 3),
          m_hyphensPossible(Pictor::LineBreakScanner::wordBreaksMayShowHyphen())
    {
    }

    template <typename Emit>
    bool run(const uint16_t* slots, size_t count, int64_t width, Emit&& emit)
    {
        if (count < 2 || !measure(slots, count))
            return false;
        m_slots = slots;
        m_count = count;
        m_width = width;
        const int64_t* prefix = m_scratch.fastPrefix.data();
        // Lines are collected first, so that nothing is emitted when the general wrapper has to take over.
        auto& lines = m_scratch.lines;
        lines.clear();
        size_t start = 0;
        while (true) {
            if (count - start == 1 || prefix[count] - prefix[start] - m_trailingSpace <= width) {
                lines.emplace_back(static_cast<uint32_t>(start), static_cast<uint32_t>(count));
                break;
            }
            const size_t end = lineEnd(start);
            if (end == kGeneral)
                return false;
            lines.emplace_back(static_cast<uint32_t>(start), static_cast<uint32_t>(end));
            start = end;
            if (start >= count)
                break;
        }
        for (const auto& line : lines)
            emit(line.first, line.second, false);
        return true;
    }

private:
    static constexpr size_t kGeneral = 0;            // the general wrapper must decide
    static constexpr size_t kWholeLine = ~size_t(0); // the window did not settle it: search the whole line

    // Sums advances and kerning into fastPrefix[0..count], folds in the shaped width of each word holding a
    // ligature, and decides whether widths only grow along the text (needed for the windows).
    bool measure(const uint16_t* slots, size_t count)
    {
        m_latin = FontEngine::isLatinRun(slots, count);
        auto& prefixes = m_scratch.fastPrefix;
        if (prefixes.size() < count + 1)
            prefixes.resize(count + 1);
        m_scratch.complexPairs.clear();
        if (!sumWidths(slots, count))
            return false;
        const uint16_t last = slots[count - 1];
        m_trailingSpace = (m_info[last].flags & Pictor::charWhite) ? m_engine.advance(last) : 0;
        // Every pair summed has been through the engine's check once, when it was first met.
        m_windows = m_engine.wrapStepsNonNegative() && m_engine.advancesNonNegative() && !m_hyphensPossible;
        m_scratch.complexWords.clear();
        m_wordCursor = 0;
        return m_scratch.complexPairs.empty() || foldComplexWords(slots, count, m_latin);
    }

    // The prefix sums; false when a character is one the line-break scanner does not know.
    bool sumWidths(const uint16_t* slots, size_t count)
    {
        // Locals only, and everything rare out of line, so that the loop keeps all it needs in registers. The
        // step table holds only pairs whose second character the scanner knows; the first character of the
        // paragraph is checked here.
        const int16_t* const* stepRows = m_engine.wrapSteps(m_latin);
        int64_t* out = m_scratch.fastPrefix.data();
        m_allKnown = (m_info[slots[0]].flags & Pictor::charWrapSimple) != 0;
        int64_t prefix = 0;
        unsigned a = slots[0];
        for (size_t i = 1; i < count; ++i) {
            const unsigned b = slots[i];
            out[i - 1] = prefix;
            int step = FontEngine::kKernUnknown;
            if (b < FontEngine::kWrapStepColumns)
                step = stepRows[a][b];
            if (step <= FontEngine::kKernComplex) [[unlikely]]
                step = unusualPair(static_cast<uint16_t>(a), static_cast<uint16_t>(b), i, step);
            prefix += step;
            a = b;
        }
        out[count - 1] = prefix;
        out[count] = prefix + m_engine.advance(static_cast<uint16_t>(a));
        return m_allKnown;
    }

    // The step of a pair not in the table, or of one the font joins (noted, and counted as no kerning): out of
    // the loop.
    [[gnu::noinline]] int unusualPair(uint16_t a, uint16_t b, size_t position, int known)
    {
        m_allKnown &= (m_info[b].flags & Pictor::charWrapSimple) != 0;
        const int k = known == FontEngine::kKernUnknown ? m_engine.fillWrapStep(m_latin, a, b) : known;
        if (k != FontEngine::kKernComplex)
            return m_engine.advance(a) + k;
        m_scratch.complexPairs.push_back(static_cast<uint32_t>(position));
        return m_engine.advance(a);
    }

    // Each word holding a ligature takes its shaped width: the difference moves every later position.
    bool foldComplexWords(const uint16_t* slots, size_t count, bool latin)
    {
        const auto isWhite = [&](size_t i) { return (m_info[slots[i]].flags & Pictor::charWhite) != 0; };
        int64_t* prefix = m_scratch.fastPrefix.data();
        auto& words = m_scratch.complexWords;
        // The differences are measured on the plain sums (where only distances count), then all added in one
        // pass: the positions after each word move by the differences of that word and all before it.
        int64_t shift = 0;
        size_t wordEnd = 0;
        for (const uint32_t pair : m_scratch.complexPairs) {
            if (pair < wordEnd)
                continue; // same word as the previous pair
            if (isWhite(pair - 1) || isWhite(pair))
                return false; // not inside a word: the shaper measures such a line as a whole
            size_t wordStart = pair - 1;
            while (wordStart > 0 && !isWhite(wordStart - 1))
                --wordStart;
            wordEnd = pair;
            while (wordEnd < count && !isWhite(wordEnd))
                ++wordEnd;
            const auto& word = m_engine.complexWord(slots + wordStart, wordEnd - wordStart, latin);
            const int64_t lastAdvance = m_engine.advance(slots[wordEnd - 1]);
            const int64_t plain = prefix[wordEnd - 1] + lastAdvance - prefix[wordStart];
            // The general wrapper gives the characters of the word their shares of its width; the windows need
            // those never to be negative, and the widest point inside the word.
            int64_t inner = 0;
            int64_t widest = 0;
            for (size_t i = 0; i + 1 < word.logicalWidths.size(); ++i) {
                m_windows &= word.logicalWidths[i] >= 0;
                inner += word.logicalWidths[i];
                widest = std::max(widest, inner);
            }
            const int64_t delta = word.width - plain;
            // Widths must still grow at the word's end once it is shaped.
            m_windows &= prefix[wordEnd] - prefix[wordEnd - 1] + delta >= 0;
            words.push_back({static_cast<uint32_t>(wordStart), static_cast<uint32_t>(wordEnd),
                             prefix[wordStart] + shift + widest, delta});
            shift += delta;
        }
        shift = 0;
        for (size_t w = 0; w < words.size(); ++w) {
            shift += words[w].delta;
            const size_t to = w + 1 < words.size() ? words[w + 1].end : count + 1;
            for (size_t i = words[w].end; i < to; ++i)
                prefix[i] += shift;
        }
        return true;
    }

    bool insideComplexWord(size_t position) const
    {
        for (const auto& word : m_scratch.complexWords) {
            if (position > word.begin && position < word.end)
                return true;
        }
        return false;
    }

    // Where the line starting at `start` ends, or kGeneral.
    size_t lineEnd(size_t start)
    {
        if (!m_windows)
            return searchLine(start, start + 1, m_count);
        const int64_t* prefix = m_scratch.fastPrefix.data();
        const int64_t limit = prefix[start] + m_width;
        // The first character reaching past the edge; the rest of the line does not fit, so there is one.
        // Both searches below end in a fixed run of eight steps without branches: where they stop varies from
        // line to line, and a mispredicted loop exit costs more than the few extra comparisons.
        size_t edge = start + 1;
        while (edge + 8 <= m_count && prefix[edge + 8] <= limit)
            edge += 8;
        const size_t span = std::min<size_t>(8, m_count - edge);
        size_t within = 0;
        for (size_t k = 0; k < span; ++k)
            within += prefix[edge + k] <= limit;
        edge += within;
        // The window starts after the last plain space before the edge. Any start would give the same answer,
        // since a window without a fitting position hands the line to the full search; this one nearly always
        // has one.
        size_t from = start + 1;
        for (size_t high = edge;;) {
            const size_t low = high > start + 9 ? high - 8 : start + 1;
            for (size_t j = low; j < high; ++j)
                from = m_slots[j] == ' ' ? j + 1 : from;
            if (from > start + 1 || low == start + 1)
                break;
            high = low;
        }
        size_t windowEnd = edge;
        if (!m_scratch.complexWords.empty()) {
            // Inside a ligature word the general wrapper measures differently: the window reaches over every
            // such word that begins before the search certainly stops, and a skipped one must not stop it.
            const int64_t stop = prefix[start] + m_width + m_safeDistance;
            const auto& words = m_scratch.complexWords;
            while (m_wordCursor < words.size() && words[m_wordCursor].end <= start + 1)
                ++m_wordCursor; // no position inside it is after this line's start
            for (size_t w = m_wordCursor; w < words.size() && prefix[words[w].begin] <= stop; ++w) {
                if (words[w].begin + 1 < from && words[w].widestInner > stop)
                    return searchLine(start, start + 1, m_count);
                windowEnd = std::max<size_t>(windowEnd, words[w].end - 1);
            }
        }
        const size_t end = searchLine(start, from, windowEnd);
        if (end != kWholeLine)
            return end;
        return searchLine(start, start + 1, m_count);
    }

    // Tries the break positions from `from` to `to` in order, as ParagraphWrapper::findBreak does from the
    // line's start; kWholeLine when positions were skipped and this window cannot settle the line.
    size_t searchLine(size_t start, size_t from, size_t to)
    {
        const bool skipped = from > start + 1;
        const int64_t* prefix = m_scratch.fastPrefix.data();
        const uint16_t* slots = m_slots;
        const Pictor::CharInfo* info = m_info;
        const size_t count = m_count;
        const int64_t base = prefix[start];
        const int64_t width = m_width;
        Pictor::LineBreakScanner scanner = Pictor::LineBreakScanner::resumeAt(slots, from);
        size_t best = 0;
        int64_t bestWidth = 0;
        bool haveBest = false;
        for (size_t p = from; p <= to; ++p) {
            uint8_t flags = Pictor::breakLine;
            if (p < count) {
                const auto after = p + 1 < count ? info[slots[p + 1]].breakClass : Pictor::BreakClass::Other;
                flags = scanner.step(info[slots[p - 1]], info[slots[p]], after);
                if (!(flags & Pictor::breakLine))
                    continue;
            }
            if ((flags & Pictor::breakHyphen) || insideComplexWord(p))
                return kGeneral;
            const bool atEnd = p == count;
            const int64_t logical = prefix[p] - base;
            int kernBefore = 0;
            if (!atEnd) {
                kernBefore = m_engine.kern(m_latin, slots[p - 1], slots[p]);
                if (kernBefore == FontEngine::kKernComplex)
                    kernBefore = 0;
            }
            // One space before the break does not count against the line.
            const int64_t space = !atEnd && (info[slots[p - 1]].flags & Pictor::charWhite)
                ? m_engine.advance(slots[p - 1]) + kernBefore
                : 0;
            if (std::min(logical - space, logical) > width + m_safeDistance) {
                if (haveBest)
                    break;
                if (skipped)
                    return kWholeLine; // an earlier position would have been kept before this one
            }
            const int64_t w = atEnd ? logical : logical - kernBefore - space;
            if (!haveBest || w <= width || w < bestWidth) {
                best = p;
                bestWidth = w;
                haveBest = true;
            }
        }
        if (!haveBest || bestWidth > width)
            return skipped ? kWholeLine : kGeneral; // from the line's start: it needs breaking between characters
        return best;
    }

    FontEngine& m_engine;
    Pictor::WrapScratch& m_scratch;
    const Pictor::CharInfo* m_info;
    int64_t m_safeDistance;
    bool m_hyphensPossible;
    // The paragraph being wrapped.
    const uint16_t* m_slots = nullptr;
    size_t m_count = 0;
    int64_t m_width = 0;
    bool m_latin = false;
    bool m_allKnown = false; // every character is one the line-break scanner knows
    bool m_windows = false; // widths only grow along the text, so the windows apply
    size_t m_wordCursor = 0; // the first ligature word that may reach past the current line's start
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
