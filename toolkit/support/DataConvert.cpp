#include "toolkit/support/DataConvert.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <limits>
#include <string>

namespace {

template <typename CharT>
bool isDigit(CharT c)
{
    return c >= CharT('0') && c <= CharT('9');
}

template <typename CharT>
bool isSpace(CharT c)
{
    return c == CharT(' ') || c == CharT('\t') || c == CharT('\n') || c == CharT('\r') || c == CharT('\f')
        || c == CharT('\v');
}

template <typename CharT>
size_t skipSpace(std::basic_string_view<CharT> text)
{
    size_t i = 0;
    while (i < text.size() && isSpace(text[i]))
        ++i;
    return i;
}

template <typename CharT>
bool convertUnsigned(std::basic_string_view<CharT> text, unsigned& out)
{
    out = 0;
    size_t i = skipSpace(text);
    bool negative = false;
    if (i < text.size() && (text[i] == CharT('+') || text[i] == CharT('-'))) {
        negative = text[i] == CharT('-');
        ++i;
    }
    if (i >= text.size() || !isDigit(text[i]))
        return false;

    constexpr unsigned largest = std::numeric_limits<unsigned>::max();
    unsigned value = 0;
    bool overflow = false;
    for (; i < text.size() && isDigit(text[i]); ++i) {
        const auto digit = static_cast<unsigned>(text[i] - CharT('0'));
        if (value > (largest - digit) / 10)
            overflow = true;
        else
            value = value * 10 + digit;
    }
    out = negative ? 0 : overflow ? largest : value;
    return true;
}

// The decimal exponent of the first significant digit, to tell overflow from underflow when the value is out of
// range. Saturates instead of overflowing on absurd exponents.
int64_t decimalMagnitude(const std::string& number)
{
    constexpr int64_t limit = 1'000'000'000;
    int64_t magnitude = 0;
    bool seenPoint = false;
    bool seenSignificant = false;
    int64_t leadingFractionZeros = 0;
    size_t i = 0;
    if (i < number.size() && number[i] == '-')
        ++i;
    for (; i < number.size() && number[i] != 'e' && number[i] != 'E'; ++i) {
        const char c = number[i];
        if (c == '.') {
            seenPoint = true;
        } else if (!seenPoint) {
            if (seenSignificant || c != '0') {
                seenSignificant = true;
                ++magnitude;
            }
        } else if (!seenSignificant) {
            if (c == '0')
                ++leadingFractionZeros;
            else
                seenSignificant = true;
        }
    }
    magnitude = magnitude > 0 ? magnitude - 1 : -(leadingFractionZeros + 1);
    if (i < number.size()) {
        ++i;
        bool negativeExponent = false;
        if (i < number.size() && (number[i] == '+' || number[i] == '-'))
            negativeExponent = number[i++] == '-';
        int64_t exponent = 0;
        for (; i < number.size(); ++i)
            exponent = std::min(limit, exponent * 10 + (number[i] - '0'));
        magnitude += negativeExponent ? -exponent : exponent;
    }
    return magnitude;
}

template <typename CharT>
bool convertDouble(std::basic_string_view<CharT> text, double& out)
{
    out = 0;
    size_t i = skipSpace(text);
    std::string number;
    if (i < text.size() && (text[i] == CharT('+') || text[i] == CharT('-'))) {
        if (text[i] == CharT('-'))
            number += '-';
        ++i;
    }

    bool anyDigit = false;
    for (; i < text.size() && isDigit(text[i]); ++i, anyDigit = true)
        number += static_cast<char>(text[i]);
    if (i < text.size() && text[i] == CharT('.')) {
        number += '.';
        for (++i; i < text.size() && isDigit(text[i]); ++i, anyDigit = true)
            number += static_cast<char>(text[i]);
    }
    if (!anyDigit)
        return false;

    // The exponent belongs to the number only when at least one digit follows its marker and sign.
    if (i < text.size() && (text[i] == CharT('e') || text[i] == CharT('E'))) {
        size_t j = i + 1;
        std::string exponent = "e";
        if (j < text.size() && (text[j] == CharT('+') || text[j] == CharT('-')))
            exponent += static_cast<char>(text[j++]);
        if (j < text.size() && isDigit(text[j])) {
            for (; j < text.size() && isDigit(text[j]); ++j)
                exponent += static_cast<char>(text[j]);
            number += exponent;
        }
    }

    double value = 0;
    const auto result = std::from_chars(number.data(), number.data() + number.size(), value);
    if (result.ec == std::errc::result_out_of_range) {
        const bool negative = number.front() == '-';
        if (decimalMagnitude(number) > 0)
            value = negative ? -std::numeric_limits<double>::max() : std::numeric_limits<double>::max();
        else
            value = 0;
    } else if (result.ec != std::errc()) {
        value = 0;
    }
    out = value;
    return true;
}

} // namespace

namespace DataConvert {

bool convert(std::wstring_view text, unsigned& out) { return convertUnsigned(text, out); }
bool convert(std::wstring_view text, double& out) { return convertDouble(text, out); }
bool convert(std::string_view text, unsigned& out) { return convertUnsigned(text, out); }
bool convert(std::string_view text, double& out) { return convertDouble(text, out); }

} // namespace DataConvert
