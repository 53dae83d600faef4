#include "toolkit/support/LightweightString.h"

#include <cstdint>
#include <cstring>
#include <string>

namespace {

constexpr wchar_t replacementCharacter = 0xFFFD;

// The valid range of the second byte depends on the lead byte; the rest are always 80..BF.
struct LeadByte {
    int length;
    unsigned char secondLow;
    unsigned char secondHigh;
};

LeadByte classify(unsigned char lead)
{
    if (lead >= 0xC2 && lead <= 0xDF) return {2, 0x80, 0xBF};
    if (lead == 0xE0) return {3, 0xA0, 0xBF};
    if (lead == 0xED) return {3, 0x80, 0x9F}; // excludes the surrogates
    if (lead >= 0xE1 && lead <= 0xEF) return {3, 0x80, 0xBF};
    if (lead == 0xF0) return {4, 0x90, 0xBF};
    if (lead >= 0xF1 && lead <= 0xF3) return {4, 0x80, 0xBF};
    if (lead == 0xF4) return {4, 0x80, 0x8F}; // nothing above U+10FFFF
    return {0, 0, 0};
}

} // namespace

LightweightString<wchar_t> fromUTF8(std::string_view utf8)
{
    // Never more characters than bytes: size once, write in place, trim at the end.
    std::wstring out(utf8.size(), L'\0');
    wchar_t* write = out.data();
    const auto* bytes = reinterpret_cast<const unsigned char*>(utf8.data());
    const size_t size = utf8.size();
    size_t i = 0;
    while (i < size) {
        // Plain ASCII, the common case, eight bytes at a time.
        while (i + 8 <= size) {
            uint64_t word;
            std::memcpy(&word, bytes + i, 8);
            if (word & 0x8080808080808080ULL)
                break;
            for (int k = 0; k < 8; ++k)
                *write++ = static_cast<wchar_t>(bytes[i + k]);
            i += 8;
        }
        if (i >= size)
            break;
        const unsigned char lead = bytes[i];
        if (lead < 0x80) {
            *write++ = static_cast<wchar_t>(lead);
            ++i;
            continue;
        }
        const LeadByte kind = classify(lead);
        if (kind.length == 0) {
            *write++ = replacementCharacter;
            ++i;
            continue;
        }
        char32_t code = lead & (0xFF >> (kind.length + 1));
        size_t consumed = 1;
        bool complete = true;
        for (int k = 1; k < kind.length; ++k) {
            if (i + consumed >= size) {
                complete = false;
                break;
            }
            const unsigned char next = bytes[i + consumed];
            const unsigned char low = k == 1 ? kind.secondLow : 0x80;
            const unsigned char high = k == 1 ? kind.secondHigh : 0xBF;
            if (next < low || next > high) {
                complete = false;
                break;
            }
            code = (code << 6) | (next & 0x3F);
            ++consumed;
        }
        // A broken sequence yields one replacement for its valid prefix; decoding resumes at the offending byte.
        *write++ = complete ? static_cast<wchar_t>(code) : replacementCharacter;
        i += consumed;
    }
    out.resize(static_cast<size_t>(write - out.data()));
    return LightweightString<wchar_t>(std::move(out));
}

LightweightString<char> toUTF8(std::wstring_view wide)
{
    std::string out;
    out.reserve(wide.size());
    for (const wchar_t c : wide) {
        auto code = static_cast<char32_t>(c);
        if (code < 0x80) {
            out.push_back(static_cast<char>(code));
            continue;
        }
        if ((code >= 0xD800 && code <= 0xDFFF) || code > 0x10FFFF)
            code = replacementCharacter;
        if (code < 0x800) {
            out.push_back(static_cast<char>(0xC0 | (code >> 6)));
        } else if (code < 0x10000) {
            out.push_back(static_cast<char>(0xE0 | (code >> 12)));
            out.push_back(static_cast<char>(0x80 | ((code >> 6) & 0x3F)));
        } else {
            out.push_back(static_cast<char>(0xF0 | (code >> 18)));
            out.push_back(static_cast<char>(0x80 | ((code >> 12) & 0x3F)));
            out.push_back(static_cast<char>(0x80 | ((code >> 6) & 0x3F)));
        }
        out.push_back(static_cast<char>(0x80 | (code & 0x3F)));
    }
    return LightweightString<char>(std::move(out));
}
