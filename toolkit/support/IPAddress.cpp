#include "toolkit/support/IPAddress.h"

#include <string>

namespace {

// Reads a decimal number of 1..maxDigits digits without a leading zero (a lone "0" is fine) from the front of
// `text`, consuming it. Answers nullopt when there is no such number.
template <typename CharT>
std::optional<unsigned> takeNumber(std::basic_string_view<CharT>& text, size_t maxDigits)
{
    size_t digits = 0;
    unsigned value = 0;
    while (digits < text.size() && text[digits] >= CharT('0') && text[digits] <= CharT('9')) {
        if (++digits > maxDigits)
            return std::nullopt;
        value = value * 10 + static_cast<unsigned>(text[digits - 1] - CharT('0'));
    }
    if (digits == 0 || (digits > 1 && text[0] == CharT('0')))
        return std::nullopt;
    text.remove_prefix(digits);
    return value;
}

template <typename CharT>
std::optional<IPAddress> parse(std::basic_string_view<CharT> text)
{
    uint8_t octets[4] = {};
    for (int i = 0; i < 4; ++i) {
        if (i > 0) {
            if (text.empty() || text.front() != CharT('.'))
                return std::nullopt;
            text.remove_prefix(1);
        }
        const std::optional<unsigned> octet = takeNumber(text, 3);
        if (!octet || *octet > 255)
            return std::nullopt;
        octets[i] = static_cast<uint8_t>(*octet);
    }
    uint16_t port = 0;
    if (!text.empty()) {
        if (text.front() != CharT(':'))
            return std::nullopt;
        text.remove_prefix(1);
        const std::optional<unsigned> value = takeNumber(text, 5);
        if (!value || *value < 1 || *value > 65535 || !text.empty())
            return std::nullopt;
        port = static_cast<uint16_t>(*value);
    }
    return IPAddress(octets[0], octets[1], octets[2], octets[3], port);
}

} // namespace

std::optional<IPAddress> IPAddress::fromString(std::string_view text)
{
    return parse(text);
}

std::optional<IPAddress> IPAddress::fromString(std::wstring_view text)
{
    return parse(text);
}

LightweightString<wchar_t> IPAddress::toString() const
{
    std::wstring out;
    for (int i = 0; i < 4; ++i) {
        if (i > 0)
            out += L'.';
        out += std::to_wstring(m_octets[static_cast<size_t>(i)]);
    }
    if (m_port != 0)
        out += L':' + std::to_wstring(m_port);
    return LightweightString<wchar_t>(std::move(out));
}
