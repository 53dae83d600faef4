#include "toolkit/gfx/detail/LineBreaking.h"

#include "toolkit/gfx/detail/FontEngine.h"

#include <pango/pango.h>

#include <array>
#include <initializer_list>
#include <string>

namespace Pictor {

namespace {

using BC = BreakClass;

// Where a run of digits stands, for the rule that keeps numbers such as "1,000.50", "(12)%" and "-3" whole;
// the same values as LineBreakScanner::advanceNumberState.
enum class NumberState : uint8_t { None, Numeric, NumericClose };

bool isAny(BC c, std::initializer_list<BC> set)
{
    for (BC s : set) {
        if (c == s)
            return true;
    }
    return false;
}

// Whether a line may break between `a` and `b`. The rules are those of Unicode line breaking in their order
// of precedence; `beforeSpaces` is the class of the last character before any run of spaces ending at `a`,
// and `number` the digit-run state up to and including `a`.
bool mayBreak(BC a, BC b, BC beforeSpaces, NumberState number, BC afterB)
{
    if (b == BC::SP)
        return false; // never before a space
    if (a == BC::GL)
        return false;
    if (b == BC::GL && !isAny(a, {BC::SP, BC::BA, BC::HY}))
        return false;
    if (isAny(b, {BC::CL, BC::CP, BC::EX, BC::IS, BC::SY}))
        return false; // closing punctuation stays with what it closes, even after spaces
    if (beforeSpaces == BC::OP)
        return false; // nor does anything leave an opening bracket, even across spaces
    if (beforeSpaces == BC::QU && b == BC::OP)
        return false;
    if (a == BC::SP)
        return true; // after spaces
    if (a == BC::QU || b == BC::QU)
        return false;
    if (b == BC::BA || b == BC::HY)
        return false;
    // Numbers, with their prefixes and suffixes.
    if (b == BC::NU) {
        if (isAny(a, {BC::PR, BC::PO, BC::OP, BC::HY}))
            return false;
        if (number == NumberState::Numeric)
            return false;
    }
    if (isAny(b, {BC::PO, BC::PR}) && number != NumberState::None)
        return false;
    if (isAny(a, {BC::PR, BC::PO}) && b == BC::OP && afterB == BC::NU)
        return false;
    if ((a == BC::AL && b == BC::NU) || (a == BC::NU && b == BC::AL))
        return false;
    if ((isAny(a, {BC::PR, BC::PO}) && b == BC::AL) || (a == BC::AL && isAny(b, {BC::PR, BC::PO})))
        return false;
    if (a == BC::AL && b == BC::AL)
        return false;
    if (a == BC::IS && b == BC::AL)
        return false;
    if ((a == BC::AL || a == BC::NU) && b == BC::OP)
        return false;
    if (a == BC::CP && (b == BC::AL || b == BC::NU))
        return false;
    return true;
}


} // namespace

static_assert(LineBreakScanner::kClasses == static_cast<int>(BC::Other) + 1);

const LineBreakScanner::Tables& LineBreakScanner::tables()
{
    static const Tables built = [] {
        Tables t{};
        for (int x = 0; x < kClasses; ++x) {
            const BC cx = static_cast<BC>(x);
            for (int b = 0; b < kClasses; ++b) {
                const BC cb = static_cast<BC>(b);
                for (int n = 0; n < kNumberStates; ++n) {
                    const bool lookAhead = isAny(cx, {BC::PR, BC::PO}) && cb == BC::OP;
                    t.pair[(n * kClasses + x) * kClasses + b] =
                        lookAhead ? kLookAhead : mayBreak(cx, cb, cx, static_cast<NumberState>(n), BC::Other);
                }
                t.pair[(kNumberStates * kClasses + x) * kClasses + b] =
                    mayBreak(BC::SP, cb, cx, NumberState::None, BC::Other);
            }
        }
        return t;
    }();
    return built;
}

bool LineBreakScanner::decideWithLookAhead(uint8_t left, uint8_t right, uint8_t numberState, uint8_t afterRight)
{
    return mayBreak(static_cast<BC>(left), static_cast<BC>(right), static_cast<BC>(left),
                    static_cast<NumberState>(numberState), static_cast<BC>(afterRight));
}

LineBreakScanner LineBreakScanner::resumeAt(const uint16_t* slots, size_t at)
{
    static const CharInfo* const info = &FontEngine::charInfo(0);
    const auto classOf = [&](size_t i) { return static_cast<uint8_t>(info[slots[i]].breakClass); };
    constexpr uint8_t sp = static_cast<uint8_t>(BC::SP);
    uint8_t beforeSpaces = classOf(0);
    for (size_t i = at - 1; i > 0; --i) {
        if (classOf(i) != sp) {
            beforeSpaces = classOf(i);
            break;
        }
    }
    // Separators and closing brackets carry the state on; any other class sets it outright. From the paragraph's
    // first character the state starts as the constructor starts it.
    size_t settled = at - 1;
    while (settled > 0 && ((kNumberRoles >> (2 * classOf(settled))) & 3) >= 2)
        --settled;
    uint8_t number = advanceNumberState(0, classOf(settled));
    for (size_t i = settled + 1; i < at; ++i)
        number = advanceNumberState(number, classOf(i));
    return LineBreakScanner(beforeSpaces, number);
}

bool LineBreakScanner::wordBreaksMayShowHyphen()
{
    static const bool possible = [] {
        bool letter[kClasses] = {};
        bool wordPart[kClasses] = {};
        for (int slot = 0; slot < FontEngine::kTableSize; ++slot) {
            const CharInfo& info = FontEngine::charInfo(slot);
            if (!(info.flags & charWrapSimple))
                continue;
            const int cls = static_cast<int>(info.breakClass);
            letter[cls] |= (info.flags & charLatinLetter) != 0;
            wordPart[cls] |= (info.flags & charWordPart) != 0;
        }
        const Tables& t = tables();
        for (int n = 0; n < kNumberStates; ++n) {
            for (int a = 0; a < kClasses; ++a) {
                for (int b = 0; b < kClasses; ++b) {
                    if (letter[a] && wordPart[b] && t.pair[(n * kClasses + a) * kClasses + b] != 0)
                        return true;
                }
            }
        }
        return false;
    }();
    return possible;
}

bool computeBreakFlags(const uint16_t* slots, size_t count, std::vector<uint8_t>& flags,
                       std::vector<uint32_t>* wordBreaks)
{
    flags.resize(count + 1);
    flags[0] = 0;
    flags[count] = breakLine;
    if (wordBreaks)
        wordBreaks->clear();
    if (count == 0) {
        if (wordBreaks)
            wordBreaks->push_back(0);
        return true;
    }
    const CharInfo* info = &FontEngine::charInfo(0);
    const CharInfo* prev = &info[slots[0]];
    uint8_t allSimple = prev->flags;
    LineBreakScanner scanner(static_cast<uint8_t>(prev->breakClass));
    for (size_t p = 1; p < count; ++p) {
        const CharInfo* here = &info[slots[p]];
        allSimple &= here->flags;
        const uint8_t f = scanner.step(*prev, *here, p + 1 < count ? info[slots[p + 1]].breakClass : BC::Other);
        flags[p] = f;
        if (wordBreaks && (f & breakLine))
            wordBreaks->push_back(static_cast<uint32_t>(p));
        prev = here;
    }
    if (wordBreaks)
        wordBreaks->push_back(static_cast<uint32_t>(count));
    return (allSimple & charWrapSimple) != 0;
}

bool computeBreakFlagsWithShaper(const uint16_t* slots, size_t count, std::vector<uint8_t>& flags)
{
    std::string utf8;
    for (size_t i = 0; i < count; ++i) {
        char bytes[6];
        const int n = g_unichar_to_utf8(FontEngine::charInfo(slots[i]).codepoint, bytes);
        utf8.append(bytes, static_cast<size_t>(n));
    }
    std::vector<PangoLogAttr> attrs(count + 1);
    pango_get_log_attrs(utf8.data(), static_cast<int>(utf8.size()), -1, pango_language_get_default(), attrs.data(),
                        static_cast<int>(attrs.size()));
    flags.assign(count + 1, 0);
    for (size_t p = 0; p <= count; ++p) {
        if (p > 0 && p < count && !attrs[p].is_char_break)
            return false; // a cluster of several characters: the fast wrapper cannot split it correctly
        uint8_t f = 0;
        if (attrs[p].is_line_break)
            f |= breakLine;
        if (attrs[p].break_inserts_hyphen)
            f |= breakHyphen;
        flags[p] = f;
    }
    flags[0] = 0;
    flags[count] = breakLine;
    return true;
}

} // namespace Pictor
