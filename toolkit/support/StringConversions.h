#pragma once
// Numbers as narrow text, independent of the process locale (always '.' as the decimal point, no grouping),
// so that text written into preferences, keys and messages reads back the same everywhere.

#include "toolkit/support/LightweightString.h"

#include <concepts>
#include <cstdint>
#include <string_view>
#include <type_traits>

LightweightString<char> StringFromSigned(int64_t value);
LightweightString<char> StringFromUnsigned(uint64_t value);

// Plain decimal digits, with a '-' for negative values: 7 -> "7", -12 -> "-12".
template <std::integral T>
    requires(!std::same_as<T, bool>)
LightweightString<char> StringFromInteger(T value)
{
    if constexpr (std::is_signed_v<T>)
        return StringFromSigned(static_cast<int64_t>(value));
    else
        return StringFromUnsigned(static_cast<uint64_t>(value));
}

// With decimals >= 0: fixed notation with exactly that many digits after the point (at most 30), rounded to
// the nearest; 2.5 with 0 decimals is "2", as the binary value rounds. With decimals < 0: the shortest text
// that reads back as the same double ("0.1", "1e+300"). A result that shows only zeros loses its minus sign
// ("-0.001" with 2 decimals is "0.00"). Not-a-number is "nan"; infinities are "inf" and "-inf".
LightweightString<char> StringFromFloat(double value, int decimals = -1);

// The strict reverse, for settings files: the whole text, between optional spaces and tabs, must be one
// decimal number that fits ("12", " -3 ", "+4"; not "12px", "0x10" or ""). Answer false and leave out untouched
// otherwise. FloatFromString also takes what StringFromFloat writes for not-a-number and the infinities.
bool IntegerFromString(std::string_view text, int& out);
bool FloatFromString(std::string_view text, double& out);

// The text without the leading and trailing characters found in blanks (spaces and tabs by default).
std::string_view trimmedBlanks(std::string_view text, std::string_view blanks = " \t");
