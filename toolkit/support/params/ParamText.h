#pragma once
// Reading and writing the text forms of parameter values. Numbers use the C locale whatever the user's
// locale is, because the text is also the saved form and must read back the same everywhere.

#include "toolkit/support/LightweightString.h"

#include <cstdint>
#include <optional>

namespace GenericParam::ParamText {

// Decimal integer with an optional sign, surrounded by optional white space. Values beyond 64 bits
// saturate. Anything else (a fraction, a trailing unit, an empty text) is unreadable.
std::optional<int64_t> readInteger(const LightweightString<wchar_t>& text);
// Decimal or scientific notation with an optional sign and white space around. Infinities, NaN and values
// beyond the double range are unreadable: no parameter may hold them.
std::optional<double> readDouble(const LightweightString<wchar_t>& text);
// "true"/"false" in any letter case, or "1"/"0".
std::optional<bool> readBool(const LightweightString<wchar_t>& text);

LightweightString<wchar_t> writeInteger(int64_t value);
// The shortest text that reads back as exactly the same double ("0.1", "2", "1e-07").
LightweightString<wchar_t> writeDouble(double value);

} // namespace GenericParam::ParamText
