#include "toolkit/support/AttribValuePair.h"

#include "toolkit/support/StringConversions.h"

namespace Cv {

AttribValuePair::AttribValuePair(std::string_view text, char separator)
{
    const size_t at = text.find(separator);
    if (at == std::string_view::npos) {
        m_name = LightweightString<char>(trimmedBlanks(text));
        return;
    }
    m_name = LightweightString<char>(trimmedBlanks(text.substr(0, at)));
    m_value = LightweightString<char>(trimmedBlanks(text.substr(at + 1)));
    m_valid = !m_name.empty();
}

AttribValuePair::AttribValuePair(std::string_view name, std::string_view value)
    : m_name(trimmedBlanks(name))
    , m_value(trimmedBlanks(value))
    , m_valid(!m_name.empty())
{
}

std::vector<AttribValuePair> AttribValuePair::vecFromString(std::string_view text, char separator, char listSeparator)
{
    std::vector<AttribValuePair> pairs;
    while (true) {
        const size_t end = text.find(listSeparator);
        AttribValuePair pair(text.substr(0, end), separator);
        if (pair.valid())
            pairs.push_back(std::move(pair));
        if (end == std::string_view::npos)
            break;
        text.remove_prefix(end + 1);
    }
    return pairs;
}

} // namespace Cv
