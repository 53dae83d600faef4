#pragma once
// IPAddress: an IPv4 address (four octets) with an optional port, as typed by users and pasted from other
// programs.
//
// fromString is strict: exactly four decimal octets of 0-255 separated by ".", optionally followed by ":" and
// a port of 1-65535. Nothing else is allowed: no blanks, signs, empty parts, leading zeros ("010" could be
// read as octal by other programs, so it is refused rather than guessed at) or trailing text. A text that
// breaks any rule gives no address at all, never a partly filled one.

#include "toolkit/support/LightweightString.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

class IPAddress {
public:
    IPAddress() = default;
    IPAddress(uint8_t a, uint8_t b, uint8_t c, uint8_t d, uint16_t port = 0) : m_octets{a, b, c, d}, m_port(port) {}

    static std::optional<IPAddress> fromString(std::string_view text);
    static std::optional<IPAddress> fromString(std::wstring_view text);

    // Octet i of 0-3, the leftmost first; 0 for any other i.
    uint8_t getPart(int i) const { return i >= 0 && i < 4 ? m_octets[static_cast<size_t>(i)] : 0; }
    // 0: no port.
    uint16_t getPort() const { return m_port; }
    bool hasPort() const { return m_port != 0; }
    // "a.b.c.d", and ":port" when there is one; fromString reads it back unchanged.
    LightweightString<wchar_t> toString() const;

    bool operator==(const IPAddress&) const = default;

private:
    std::array<uint8_t, 4> m_octets{};
    uint16_t m_port = 0;
};
