#pragma once
// AttribValuePair: "name=value" texts, as written in conditions of parameter descriptions ("mode=2") and in
// lists of them ("mode=2,quality=high").
//
// Rules:
//  - The text is split at the first separator; later separators belong to the value ("a=b=c" is a, "b=c").
//  - Spaces and tabs around the name and around the value are removed ("mode = 2" is mode, "2").
//  - valid() is true only when the separator was found and the name is not empty: "=5" and "mode" are not
//    valid pairs. An empty value is allowed ("mode=" is mode, "").

#include "toolkit/support/LightweightString.h"

#include <string_view>
#include <vector>

namespace Cv {

class AttribValuePair {
public:
    AttribValuePair() = default;
    AttribValuePair(std::string_view text, char separator);
    AttribValuePair(std::string_view name, std::string_view value);

    const LightweightString<char>& name() const { return m_name; }
    const LightweightString<char>& value() const { return m_value; }
    bool valid() const { return m_valid; }

    // Splits text at each listSeparator, then every item at its first separator. Only valid pairs are kept, in
    // their order: "a=1,,b" gives one pair. A list separator inside a value cannot be written; read such a text
    // as one pair instead.
    static std::vector<AttribValuePair> vecFromString(std::string_view text, char separator, char listSeparator);

    bool operator==(const AttribValuePair&) const = default;

private:
    LightweightString<char> m_name;
    LightweightString<char> m_value;
    bool m_valid = false;
};

} // namespace Cv
