// Arbitrary bytes as the stored form of a link row. Whatever link the text gives must be written back as one
// line that reads as the same link. And links built from arbitrary fields (the bytes split at zero bytes: the
// first field the description, the rest targets) must come back exactly, whatever characters they hold.
#include "FuzzChecks.h"
#include "logging/LoggerBase.h"

#include <cstdint>
#include <string_view>
#include <vector>

namespace {

void checkRoundTrip(const LoggerBase::HyperLink& link)
{
    const LightweightString<wchar_t> text = link.toString();
    check(text.find(L'\n') == LightweightString<wchar_t>::npos, "a line feed in the string form");
    check(text.find(L'\r') == LightweightString<wchar_t>::npos, "a carriage return in the string form");
    check(LoggerBase::HyperLink::fromString(text) == link, "the string form read back differently");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const LightweightString<wchar_t> text = fromUTF8(bytes);
    const LoggerBase::HyperLink parsed = LoggerBase::HyperLink::fromString(text);
    checkRoundTrip(parsed);

    std::vector<LightweightString<wchar_t>> fields;
    size_t from = 0;
    for (size_t i = 0; i <= bytes.size(); ++i) {
        if (i == bytes.size() || bytes[i] == '\0') {
            fields.push_back(fromUTF8(bytes.substr(from, i - from)));
            from = i + 1;
        }
    }
    const LightweightString<wchar_t> description = fields.front();
    fields.erase(fields.begin());
    const bool internal = size > 0 && (data[0] & 1);
    checkRoundTrip(LoggerBase::HyperLink(fields, description, internal));
    return 0;
}
