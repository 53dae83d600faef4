#pragma once
// SettingsReader: the one way to read typed values out of a configb, so every widget made by type name reads
// its creation settings by the same rules. Each reader answers nothing (std::nullopt) when the key is absent or
// its text does not follow the rule, and the caller keeps its default:
//
//   reader     | accepts (surrounding spaces and tabs ignored)          | otherwise
//   -----------+--------------------------------------------------------+----------
//   text       | anything, UTF-8                                        | -
//   integer    | one decimal integer that fits an int: "12", "-3", "+4" | nothing
//   number     | one finite decimal number: "2.5", "-1e3"               | nothing
//   boolean    | "1", "true", "yes" -> true; "0", "false", "no" -> false | nothing
//              | (letters in any case)                                  |
//   list       | items separated by ','; each item trimmed; items left  | -
//              | empty are dropped: "a,,b" and "a, ,b" are {a, b}       |
//
// Dropping empty items means a stray or doubled comma never makes a blank menu entry or radio button.

#include "toolkit/support/Configb.h"
#include "toolkit/support/LightweightString.h"

#include <optional>
#include <string_view>
#include <vector>

class SettingsReader {
public:
    using List = std::vector<LightweightString<wchar_t>>;

    explicit SettingsReader(const configb& config) : m_config(config) {}

    std::optional<LightweightString<wchar_t>> text(std::string_view key) const;
    std::optional<int> integer(std::string_view key) const;
    std::optional<double> number(std::string_view key) const;
    std::optional<bool> boolean(std::string_view key) const;
    std::optional<List> list(std::string_view key) const;

    // The rules themselves, for text that did not come from a configb.
    static std::optional<bool> parseBoolean(std::string_view text);
    static List splitList(std::string_view text);

private:
    std::optional<LightweightString<char>> raw(std::string_view key) const;

    const configb& m_config;
};
