#pragma once
// Cookies: names that no other cookie ever had, in this process, in another one running beside it, or in an
// earlier run, so that they can name new files without asking the file system first.

#include "toolkit/support/LightweightString.h"

#include <atomic>
#include <cstdint>

class Cookie {
public:
    Cookie() = default;

    bool isNull() const { return m_time == 0; }
    int type() const { return m_type; }
    int version() const { return m_version; }
    int variant() const { return m_variant; }

    // Only lower-case letters, digits and '-', so the text is a valid file name on every file system, also
    // ones that ignore case: "t54-v0-a0-" then creation time, process, a random salt and a sequence number,
    // in hexadecimal. The null cookie has an empty text.
    LightweightString<wchar_t> asWString() const;
    LightweightString<char> asString() const;

    bool operator==(const Cookie&) const = default;

private:
    friend class CookieJar;

    int m_type = 0;
    int m_version = 0;
    int m_variant = 0;
    uint64_t m_time = 0; // microseconds since the epoch
    uint32_t m_process = 0;
    uint32_t m_salt = 0;
    uint64_t m_sequence = 0;
};

class CookieJar {
public:
    static CookieJar& instance();

    // Thread-safe. The type, version and variant are the caller's and are carried in the cookie's text.
    Cookie makeCookie(int type, int version, int variant);

private:
    CookieJar();

    uint32_t m_salt;
    std::atomic<uint64_t> m_sequence{0};
};
