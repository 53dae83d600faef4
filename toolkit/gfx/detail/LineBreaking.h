#pragma once
// Where a paragraph may break, for the word wrapper. Internal to toolkit/gfx.
//
// flags[p] describes the position before character p (p = 0 .. count): breakLine when a line may end there in
// word mode, breakHyphen when a break there splits a word and shows a hyphen. Every position between two
// characters may break in character mode, since the wrapper's characters are each a whole grapheme.

#include "toolkit/gfx/detail/FontEngine.h"

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
// Each class's part in a number, two bits a class: 0 none, 1 digit, 2 infix separator or symbol
// ("1,000", "1/2"), 3 closing bracket ("(12)%").
constexpr uint32_t numberRoles()
{
    uint32_t bits = 0;
    bits |= 1u << (2 * static_cast<int>(BreakClass::NU));
    bits |= 2u << (2 * static_cast<int>(BreakClass::SY));
    bits |= 2u << (2 * static_cast<int>(BreakClass::IS));
    bits |= 3u << (2 * static_cast<int>(BreakClass::CL));
    bits |= 3u << (2 * static_cast<int>(BreakClass::CP));
    return bits;
}
constexpr uint32_t kNumberRoles = numberRoles();
// The next digit-run state for each role (six bits a role) and state (two bits a state).
constexpr uint32_t kNumberTransitions = (0u << 0) | (0u << 2) | (0u << 4) // none: back to no number
    | (1u << 6) | (1u << 8) | (1u << 10)                                   // digit: in a number
    | (0u << 12) | (1u << 14) | (0u << 16)                                 // separator: stays in a number
    | (0u << 18) | (2u << 20) | (0u << 22);                                // closing: closes a number

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
    };
    static const Tables& tables();
    // The rare case kLookAhead defers to.
    static bool decideWithLookAhead(uint8_t left, uint8_t right, uint8_t numberState, uint8_t afterRight);

    explicit LineBreakScanner(uint8_t firstClass)
        : m_tables(tables()), m_beforeSpaces(firstClass), m_number(advanceNumberState(0, firstClass))
    {
    }

    // A scanner ready for the position before character `at` (0 < at <= count) of a paragraph of table slots,
    // as if it had stepped over everything before. Its context comes from a short look back: the class before
    // the last spaces, and the digit-run state, which the last character that is neither a separator nor a
    // closing bracket settles whatever came before.
    static LineBreakScanner resumeAt(const uint16_t* slots, size_t at);

    // Whether, among the characters the scanner knows, a word-break position can ever lie between a Latin
    // letter and a letter or digit (where it would show a hyphen). The rules allow none; a wrapper that relies
    // on that asks here.
    static bool wordBreaksMayShowHyphen();

    // Flags (breakLine, breakHyphen) of the position between `prev` and `here`, then moves past `here`.
    // `afterHere` is the class of the character after `here`, or Other at the end.
    uint8_t step(const CharInfo& prev, const CharInfo& here, BreakClass afterHere);

private:
    // The digit-run state is the one value carried from character to character, so it is computed with a few
    // shifts of two constants rather than a table look-up, which would put a memory load in the loop's
    // critical path. States: 0 none, 1 in a number, 2 just closed a bracket after a number.
    static uint8_t advanceNumberState(uint8_t state, uint8_t cls)
    {
        const uint32_t role = (kNumberRoles >> (2 * cls)) & 3;
        return static_cast<uint8_t>((kNumberTransitions >> (role * 6 + state * 2)) & 3);
    }

    LineBreakScanner(uint8_t beforeSpaces, uint8_t numberState)
        : m_tables(tables()), m_beforeSpaces(beforeSpaces), m_number(numberState)
    {
    }

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

inline uint8_t Pictor::LineBreakScanner::step(const CharInfo& prev, const CharInfo& here, BreakClass afterHere)
{
    constexpr uint8_t sp = static_cast<uint8_t>(BreakClass::SP);
    const uint8_t a = static_cast<uint8_t>(prev.breakClass);
    const uint8_t b = static_cast<uint8_t>(here.breakClass);
    const bool afterSpace = a == sp;
    const int context = afterSpace ? kNumberStates : m_number;
    const int left = afterSpace ? m_beforeSpaces : a;
    uint8_t rule = m_tables.pair[(context * kClasses + left) * kClasses + b];
    if (rule == kLookAhead)
        rule = decideWithLookAhead(a, b, m_number, static_cast<uint8_t>(afterHere));
    // A break inside a word of letters shows a hyphen: after a Latin letter, before a letter, digit or
    // connector.
    const uint8_t hyphen = ((prev.flags & charLatinLetter) && (here.flags & charWordPart)) ? breakHyphen : 0;
    m_beforeSpaces = b == sp ? m_beforeSpaces : b;
    m_number = advanceNumberState(m_number, b);
    return static_cast<uint8_t>(rule | hyphen);
}
