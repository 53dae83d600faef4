#pragma once
// HTMLUtils: turning plain text into HTML that shows exactly that text.
//
// Escaping replaces every character that markup gives a meaning to: & < > " and ' become entities, so the
// result is safe between tags and inside quoted attribute values alike. Control characters other than tab,
// line feed and carriage return cannot appear in an HTML document at all (not even as references), so each
// becomes U+FFFD, the replacement character. Everything else is kept as it is.
//
// Styles are numbered: 1 bold, 2 italic, 3 bold italic; any other number adds no tags.

#include "toolkit/support/Colour.h"

#include <string>
#include <string_view>

namespace HTMLUtils {

// Appends the escaped form of UTF-8 text to `out` (invalid UTF-8 is passed through byte for byte; the
// export that writes it is UTF-8 and readers show such bytes as replacement characters).
void appendEscaped(std::string& out, std::string_view utf8);
std::string escape(std::string_view utf8);

// "#RRGGBB" of a colour, channels rounded to bytes.
std::string colourCode(const Colour& colour);
// Escaped text inside a colour tag.
std::string addColourTags(std::string_view utf8, const Colour& colour);
// Escaped text inside the tags of a style.
std::string addStyleTags(std::string_view utf8, int style);

} // namespace HTMLUtils
