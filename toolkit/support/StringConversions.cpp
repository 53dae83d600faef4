#include "toolkit/support/StringConversions.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace {

constexpr int maxDecimals = 30;

// to_chars writes "-0.00" for small negatives; a figure that is all zeros should not look negative.
void dropMinusOfZero(std::string& text)
{
    if (text.size() > 1 && text.front() == '-'
        && std::all_of(text.begin() + 1, text.end(), [](char c) { return c == '0' || c == '.'; }))
        text.erase(0, 1);
}

template <typename Number>
bool parseWhole(std::string_view text, Number& out)
{
    text = trimmedBlanks(text);
    // from_chars takes no '+', and "+-5" must stay invalid.
    if (text.size() > 1 && text.front() == '+' && text[1] != '-')
        text.remove_prefix(1);
    Number value{};
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    if (text.empty() || result.ec != std::errc() || result.ptr != text.data() + text.size())
        return false;
    out = value;
    return true;
}

} // namespace

bool IntegerFromString(std::string_view text, int& out)
{
    return parseWhole(text, out);
}

bool FloatFromString(std::string_view text, double& out)
{
    return parseWhole(text, out);
}

LightweightString<char> StringFromSigned(int64_t value)
{
    std::array<char, 24> buffer{};
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value);
    return LightweightString<char>(buffer.data(), static_cast<size_t>(result.ptr - buffer.data()));
}

LightweightString<char> StringFromUnsigned(uint64_t value)
{
    std::array<char, 24> buffer{};
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value);
    return LightweightString<char>(buffer.data(), static_cast<size_t>(result.ptr - buffer.data()));
}

LightweightString<char> StringFromFloat(double value, int decimals)
{
    if (std::isnan(value))
        return "nan";
    if (std::isinf(value))
        return value < 0 ? "-inf" : "inf";
    if (value == 0)
        value = 0; // turns -0.0 into 0.0

    // Fixed notation of the largest double has 309 integer digits.
    std::array<char, 400> buffer{};
    char* const first = buffer.data();
    char* const last = first + buffer.size();
    const auto result = decimals < 0
        ? std::to_chars(first, last, value)
        : std::to_chars(first, last, value, std::chars_format::fixed, std::min(decimals, maxDecimals));
    std::string text(first, result.ptr);
    dropMinusOfZero(text);
    return LightweightString<char>(std::move(text));
}

std::string_view trimmedBlanks(std::string_view text, std::string_view blanks)
{
    const size_t first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos)
        return text.substr(text.size());
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}
