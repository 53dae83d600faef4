#include "toolkit/support/CookieJar.h"

#include <chrono>
#include <cstdio>
#include <random>
#include <unistd.h>

// Why each part is there: the sequence separates cookies of one process; the process id separates processes
// that run at the same time; the time separates runs; the salt covers a clock set back between two runs that
// happen to get the same process id. The process id is read per cookie, so a forked child differs too.

LightweightString<char> Cookie::asString() const
{
    if (isNull())
        return {};
    char buffer[128];
    const int length = std::snprintf(buffer, sizeof buffer, "t%x-v%x-a%x-%013llx-%x-%08x-%llx",
        static_cast<unsigned>(m_type), static_cast<unsigned>(m_version), static_cast<unsigned>(m_variant),
        static_cast<unsigned long long>(m_time), static_cast<unsigned>(m_process), static_cast<unsigned>(m_salt),
        static_cast<unsigned long long>(m_sequence));
    return LightweightString<char>(buffer, static_cast<size_t>(length));
}

LightweightString<wchar_t> Cookie::asWString() const
{
    return fromUTF8(asString().view());
}

CookieJar& CookieJar::instance()
{
    static CookieJar jar;
    return jar;
}

CookieJar::CookieJar()
    : m_salt(std::random_device{}())
{
}

Cookie CookieJar::makeCookie(int type, int version, int variant)
{
    using namespace std::chrono;
    Cookie cookie;
    cookie.m_type = type;
    cookie.m_version = version;
    cookie.m_variant = variant;
    const auto micros = duration_cast<microseconds>(system_clock::now().time_since_epoch()).count();
    cookie.m_time = micros > 0 ? static_cast<uint64_t>(micros) : 1;
    cookie.m_process = static_cast<uint32_t>(::getpid());
    cookie.m_salt = m_salt;
    cookie.m_sequence = m_sequence.fetch_add(1, std::memory_order_relaxed);
    return cookie;
}
