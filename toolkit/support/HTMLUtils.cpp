#include "toolkit/support/HTMLUtils.h"

#include <cstdio>

namespace HTMLUtils {

void appendEscaped(std::string& out, std::string_view utf8)
{
    out.reserve(out.size() + utf8.size());
    size_t plainFrom = 0;
    const auto flush = [&](size_t upTo) { out.append(utf8.data() + plainFrom, upTo - plainFrom); };
    for (size_t i = 0; i < utf8.size(); ++i) {
        const unsigned char c = static_cast<unsigned char>(utf8[i]);
        const char* replacement = nullptr;
        switch (c) {
        case '&': replacement = "&amp;"; break;
        case '<': replacement = "&lt;"; break;
        case '>': replacement = "&gt;"; break;
        case '"': replacement = "&quot;"; break;
        case '\'': replacement = "&#39;"; break;
        case '\t':
        case '\n':
        case '\r': break;
        default:
            if (c < 0x20 || c == 0x7F)
                replacement = "\xEF\xBF\xBD";
        }
        if (!replacement)
            continue;
        flush(i);
        out += replacement;
        plainFrom = i + 1;
    }
    flush(utf8.size());
}

std::string escape(std::string_view utf8)
{
    std::string out;
    appendEscaped(out, utf8);
    return out;
}

std::string colourCode(const Colour& colour)
{
    char code[8];
    std::snprintf(code, sizeof code, "#%02X%02X%02X", colour.r8(), colour.g8(), colour.b8());
    return code;
}

std::string addColourTags(std::string_view utf8, const Colour& colour)
{
    std::string out = "<font color=\"" + colourCode(colour) + "\">";
    appendEscaped(out, utf8);
    out += "</font>";
    return out;
}

std::string addStyleTags(std::string_view utf8, int style)
{
    const char* open = "";
    const char* close = "";
    switch (style) {
    case 1: open = "<b>"; close = "</b>"; break;
    case 2: open = "<i>"; close = "</i>"; break;
    case 3: open = "<b><i>"; close = "</i></b>"; break;
    default: break;
    }
    std::string out = open;
    appendEscaped(out, utf8);
    out += close;
    return out;
}

} // namespace HTMLUtils
