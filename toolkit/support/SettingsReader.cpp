#include "toolkit/support/SettingsReader.h"

#include "toolkit/support/StringConversions.h"

#include <cmath>

namespace {

bool equalsIgnoringCase(std::string_view text, std::string_view lowerWord)
{
    if (text.size() != lowerWord.size())
        return false;
    for (size_t i = 0; i < text.size(); ++i) {
        const char c = text[i] >= 'A' && text[i] <= 'Z' ? static_cast<char>(text[i] - 'A' + 'a') : text[i];
        if (c != lowerWord[i])
            return false;
    }
    return true;
}

} // namespace

std::optional<LightweightString<char>> SettingsReader::raw(std::string_view key) const
{
    LightweightString<char> value;
    if (m_config.in(key, value) != 0)
        return std::nullopt;
    return value;
}

std::optional<LightweightString<wchar_t>> SettingsReader::text(std::string_view key) const
{
    const auto value = raw(key);
    if (!value)
        return std::nullopt;
    return fromUTF8(value->view());
}

std::optional<int> SettingsReader::integer(std::string_view key) const
{
    const auto value = raw(key);
    int out = 0;
    if (!value || !IntegerFromString(value->view(), out))
        return std::nullopt;
    return out;
}

std::optional<double> SettingsReader::number(std::string_view key) const
{
    const auto value = raw(key);
    double out = 0.0;
    if (!value || !FloatFromString(value->view(), out) || !std::isfinite(out))
        return std::nullopt;
    return out;
}

std::optional<bool> SettingsReader::boolean(std::string_view key) const
{
    const auto value = raw(key);
    if (!value)
        return std::nullopt;
    return parseBoolean(value->view());
}

std::optional<SettingsReader::List> SettingsReader::list(std::string_view key) const
{
    const auto value = raw(key);
    if (!value)
        return std::nullopt;
    return splitList(value->view());
}

std::optional<bool> SettingsReader::parseBoolean(std::string_view text)
{
    const std::string_view word = trimmedBlanks(text);
    for (std::string_view yes : {"1", "true", "yes"})
        if (equalsIgnoringCase(word, yes))
            return true;
    for (std::string_view no : {"0", "false", "no"})
        if (equalsIgnoringCase(word, no))
            return false;
    return std::nullopt;
}

SettingsReader::List SettingsReader::splitList(std::string_view text)
{
    List items;
    while (true) {
        const size_t comma = text.find(',');
        const std::string_view item = trimmedBlanks(text.substr(0, comma));
        if (!item.empty())
            items.push_back(fromUTF8(item));
        if (comma == std::string_view::npos)
            return items;
        text.remove_prefix(comma + 1);
    }
}
