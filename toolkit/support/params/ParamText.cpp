#include "toolkit/support/params/ParamText.h"

#include <charconv>
#include <cmath>
#include <limits>
#include <string>
#include <string_view>

namespace GenericParam::ParamText {

namespace {

bool isSpace(wchar_t c)
{
    return c == L' ' || c == L'\t' || c == L'\r' || c == L'\n';
}

std::wstring_view trimmed(const LightweightString<wchar_t>& text)
{
    std::wstring_view v = text.view();
    while (!v.empty() && isSpace(v.front()))
        v.remove_prefix(1);
    while (!v.empty() && isSpace(v.back()))
        v.remove_suffix(1);
    return v;
}

// Numbers are plain ASCII; any other character makes the text unreadable rather than being guessed at.
std::optional<std::string> asciiOf(std::wstring_view v)
{
    std::string out;
    out.reserve(v.size());
    for (wchar_t c : v) {
        if (c <= 0 || c >= 0x80)
            return std::nullopt;
        out.push_back(static_cast<char>(c));
    }
    return out;
}

LightweightString<wchar_t> widen(std::string_view ascii)
{
    return LightweightString<wchar_t>(std::wstring(ascii.begin(), ascii.end()));
}

} // namespace

std::optional<int64_t> readInteger(const LightweightString<wchar_t>& text)
{
    std::wstring_view v = trimmed(text);
    bool negative = false;
    if (!v.empty() && (v.front() == L'+' || v.front() == L'-')) {
        negative = v.front() == L'-';
        v.remove_prefix(1);
    }
    if (v.empty())
        return std::nullopt;
    // Accumulated as a negative number: its range is one larger, so INT64_MIN reads exactly.
    int64_t value = 0;
    bool saturated = false;
    constexpr int64_t lowest = std::numeric_limits<int64_t>::min();
    for (wchar_t c : v) {
        if (c < L'0' || c > L'9')
            return std::nullopt;
        const int digit = static_cast<int>(c - L'0');
        if (saturated)
            continue;
        if (value < (lowest + digit) / 10) {
            saturated = true;
            continue;
        }
        value = value * 10 - digit;
    }
    if (saturated)
        return negative ? lowest : std::numeric_limits<int64_t>::max();
    if (!negative)
        return value == lowest ? std::numeric_limits<int64_t>::max() : -value;
    return value;
}

std::optional<double> readDouble(const LightweightString<wchar_t>& text)
{
    std::wstring_view v = trimmed(text);
    // from_chars takes no leading plus sign; a second sign after it is still refused.
    if (!v.empty() && v.front() == L'+') {
        v.remove_prefix(1);
        if (!v.empty() && (v.front() == L'+' || v.front() == L'-'))
            return std::nullopt;
    }
    const std::optional<std::string> ascii = asciiOf(v);
    if (!ascii || ascii->empty())
        return std::nullopt;
    double value = 0.0;
    const char* first = ascii->data();
    const char* last = first + ascii->size();
    const auto [end, error] = std::from_chars(first, last, value, std::chars_format::general);
    if (error != std::errc() || end != last || !std::isfinite(value))
        return std::nullopt;
    return value;
}

std::optional<bool> readBool(const LightweightString<wchar_t>& text)
{
    const std::wstring_view v = trimmed(text);
    const auto equalsNoCase = [v](std::wstring_view word) {
        if (v.size() != word.size())
            return false;
        for (size_t i = 0; i < v.size(); ++i) {
            wchar_t c = v[i];
            if (c >= L'A' && c <= L'Z')
                c = static_cast<wchar_t>(c - L'A' + L'a');
            if (c != word[i])
                return false;
        }
        return true;
    };
    if (v == L"1" || equalsNoCase(L"true"))
        return true;
    if (v == L"0" || equalsNoCase(L"false"))
        return false;
    return std::nullopt;
}

LightweightString<wchar_t> writeInteger(int64_t value)
{
    char buffer[24];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
    return widen(std::string_view(buffer, static_cast<size_t>(result.ptr - buffer)));
}

LightweightString<wchar_t> writeDouble(double value)
{
    char buffer[32];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
    return widen(std::string_view(buffer, static_cast<size_t>(result.ptr - buffer)));
}

} // namespace GenericParam::ParamText
