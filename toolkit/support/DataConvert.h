#pragma once
// DataConvert: reading numbers out of text typed by users or found in descriptions, with one forgiving rule,
// so that "2 ", "2px" and "2" all mean 2 and nothing ever fails.
//
// The rule, for both overloads:
//  - Leading white space (space, tab, newline, carriage return, form feed, vertical tab) is skipped.
//  - The longest prefix that forms a number is used; whatever follows it is ignored ("12abc" is 12).
//  - Only ASCII digits count, and the decimal point is always '.', whatever the locale ("1,5" is 1).
//  - When no digit starts the text, the result is 0 and convert answers false; otherwise it answers true.
//
// Unsigned: an optional '+', then decimal digits; a fraction is not part of the prefix ("2.7" is 2). A negative
// number ("-3") gives 0, and a number beyond the largest unsigned value gives that largest value.
//
// Double: an optional sign, digits with an optional '.' and fraction (".5" and "5." are numbers), and an
// optional exponent ('e' or 'E', optional sign, digits) that counts only when it has a digit ("1e" is 1).
// Hexadecimal, "inf" and "nan" are not numbers here. A number too large for a double gives the largest
// finite double of its sign; one too small to represent gives 0.

#include <string_view>

namespace DataConvert {

bool convert(std::wstring_view text, unsigned& out);
bool convert(std::wstring_view text, double& out);
bool convert(std::string_view text, unsigned& out);
bool convert(std::string_view text, double& out);

} // namespace DataConvert
