#pragma once
// Where a paragraph may break, for the word wrapper. Internal to toolkit/gfx.
//
// flags[p] describes the position before character p (p = 0 .. count): breakLine when a line may end there in
// word mode, breakHyphen when a break there splits a word and shows a hyphen. Every position between two
// characters may break in character mode, since the wrapper's characters are each a whole grapheme.

#include "toolkit/gfx/FontEngine.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace Pictor {

class FontEngine;
struct CharInfo;

enum BreakFlags : uint8_t {
    breakLine = 1,
    breakHyphen = 2,
};

// The Unicode line-breaking rules for the classes the fast wrapper knows (letters, digits, spaces and the
// common punctuation), as tables, so that the per-character loop has almost no branches to mispredict.
// A position's answer depends on its two neighbours and one piece of context: after spaces, the class before
// the spaces; otherwise where a run of digits stands (numbers such as "1,000.50", "(12)%" and "-3" stay whole).
class LineBreakScanner {
public:
    static constexpr int kClasses = 16;
    static constexpr int kNumberStates = 3;
    static constexpr uint8_t kLookAhead = 2;

    struct Tables {
        // [context][left][right]: context 0..2 is the digit-run state and left the left neighbour's class;
        // context 3 is "after spaces" and left the class before the spaces. kLookAhead marks the one rule that
        // also needs the class after the right neighbour.
        uint8_t pair[(kNumberStates + 1) * kClasses * kClasses];
        uint8_t nextNumber[kNumberStates * kClasses];
    };
    static const Tables& tables();
    // The rare case kLookAhead defers to.
    static bool decideWithLookAhead(uint8_t left, uint8_t right, uint8_t numberState, uint8_t afterRight);

    explicit LineBreakScanner(uint8_t firstClass)
        : m_tables(tables()), m_beforeSpaces(firstClass), m_number(m_tables.nextNumber[firstClass])
    {
    }

    // Flags (breakLine, breakHyphen) of the position between `prev` and `here`, then moves past `here`.
    // `afterHere` is the class of the character after `here`, or Other at the end.
    template <typename AfterHere>
    uint8_t step(const CharInfo& prev, const CharInfo& here, AfterHere&& afterHere);

private:
    const Tables& m_tables;
    uint8_t m_beforeSpaces;
    uint8_t m_number;
};

// Fills flags[0..count] for the paragraph. Answers false, leaving flags undefined, when a character is outside
// the classes the scanner knows. `wordBreaks`, when given, receives the positions with breakLine in ascending
// order (count, the end, always last).
bool computeBreakFlags(const uint16_t* slots, size_t count, std::vector<uint8_t>& flags,
                       std::vector<uint32_t>* wordBreaks = nullptr);

// The same answer from the full text shaper, for any characters of the tables.
bool computeBreakFlagsWithShaper(const uint16_t* slots, size_t count, std::vector<uint8_t>& flags);

} // namespace Pictor

template <typename AfterHere>
inline uint8_t Pictor::LineBreakScanner::step(const CharInfo& prev, const CharInfo& here, AfterHere&& afterHere)
{
    constexpr uint8_t sp = static_cast<uint8_t>(BreakClass::SP);
    const uint8_t a = static_cast<uint8_t>(prev.breakClass);
    const uint8_t b = static_cast<uint8_t>(here.breakClass);
    const bool afterSpace = a == sp;
    const int context = afterSpace ? kNumberStates : m_number;
    const int left = afterSpace ? m_beforeSpaces : a;
    uint8_t rule = m_tables.pair[(context * kClasses + left) * kClasses + b];
    if (rule == kLookAhead)
        rule = decideWithLookAhead(a, b, m_number, static_cast<uint8_t>(afterHere()));
    // A break inside a word of letters shows a hyphen: after a Latin letter, before a letter, digit or
    // connector.
    const uint8_t hyphen = ((prev.flags & charLatinLetter) && (here.flags & charWordPart)) ? breakHyphen : 0;
    m_beforeSpaces = b == sp ? m_beforeSpaces : b;
    m_number = m_tables.nextNumber[m_number * kClasses + b];
    return static_cast<uint8_t>(rule | hyphen);
}
