// Arbitrary log entries exported as a web page. The input is split into entries at 0xFF bytes; each entry's
// first byte picks its kind (0 to 11), the rest is its text. The page must hold exactly the text that was
// logged: with the export's own tags taken out and the entities read back, it must equal what the kinds say
// is exported, and no '<' or '&' of the logged text may survive unescaped.
#include "FuzzChecks.h"
#include "logging/Logger.h"
#include "toolkit/support/TaskLog.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace {

// What the page shows of a text: control characters other than tab, line feed and return cannot appear.
std::string visible(std::string_view text)
{
    std::string out;
    for (char c : text) {
        const unsigned char u = static_cast<unsigned char>(c);
        if ((u < 0x20 && c != '\t' && c != '\n' && c != '\r') || u == 0x7F)
            out += "\xEF\xBF\xBD";
        else
            out += c;
    }
    return out;
}

std::string expectedFor(int kind, std::string_view text)
{
    switch (kind) {
    case 0:
    case 2:
    case 3:
    case 4:
    case 7:
    case 9: return visible(text) + "\n";
    case 5:
    case 8: return "\n" + visible(text) + "\n";
    default: return "\n";
    }
}

// Takes out the tags the export adds; any other '<' is a fault.
std::string withoutTags(const std::string& page)
{
    static const char* const tags[] = { "<b>", "</b>", "<i>", "</i>", "</font>", "<p>" };
    std::string out;
    for (size_t i = 0; i < page.size();) {
        if (page[i] != '<') {
            out += page[i++];
            continue;
        }
        bool known = false;
        for (const char* tag : tags) {
            if (page.compare(i, std::char_traits<char>::length(tag), tag) == 0) {
                i += std::char_traits<char>::length(tag);
                known = true;
                break;
            }
        }
        if (!known && page.compare(i, 13, "<font color=\"") == 0 && i + 22 <= page.size()
            && page.compare(i + 20, 2, "\">") == 0) {
            i += 22;
            known = true;
        }
        check(known, "a '<' that is not one of the export's tags");
    }
    return out;
}

std::string unescaped(const std::string& text)
{
    static const std::pair<const char*, char> entities[] = {
        { "&amp;", '&' }, { "&lt;", '<' }, { "&gt;", '>' }, { "&quot;", '"' }, { "&#39;", '\'' }
    };
    std::string out;
    for (size_t i = 0; i < text.size();) {
        check(text[i] != '>' && text[i] != '"' && text[i] != '\'', "a markup character left unescaped");
        if (text[i] != '&') {
            out += text[i++];
            continue;
        }
        bool known = false;
        for (const auto& [entity, character] : entities) {
            if (text.compare(i, std::char_traits<char>::length(entity), entity) == 0) {
                out += character;
                i += std::char_traits<char>::length(entity);
                known = true;
                break;
            }
        }
        check(known, "an '&' that starts no entity");
    }
    return out;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    TaskLog log;
    std::string expected = "\n"; // after "<pre>"
    size_t from = 0;
    for (size_t i = 0; i <= bytes.size(); ++i) {
        if (i < bytes.size() && data[i] != 0xFF)
            continue;
        const std::string_view entry = bytes.substr(from, i - from);
        from = i + 1;
        if (entry.empty())
            continue;
        const int kind = static_cast<unsigned char>(entry[0]) % 12;
        const std::string_view text = entry.substr(1);
        log.add(TaskLog::Entry { LightweightString<char>(text), kind, 0 });
        // An empty ordinary line is a paragraph tag, which leaves only its line break once tags are out.
        expected += expectedFor(kind, text);
    }
    const std::string page = Logger::makeHtml(log);
    check(page.rfind("<pre>\n", 0) == 0, "the page does not start with <pre>");
    check(page.size() >= 13 && page.compare(page.size() - 7, 7, "</pre>\n") == 0, "the page does not end with </pre>");
    const std::string body = page.substr(5, page.size() - 5 - 7);
    check(unescaped(withoutTags(body)) == expected, "the page does not hold exactly the logged text");
    return 0;
}
