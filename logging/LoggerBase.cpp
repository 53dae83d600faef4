#include "logging/LoggerBase.h"

#include <string_view>

// The string form: "link:" then "e" (external) or "i" (internal), then ';' and the description, then ';' and
// each target. In the fields, '%', ';', line feed and carriage return are written %25, %3B, %0A and %0D, so
// the separators are unambiguous and a link stays one line of the log.

namespace {

constexpr std::wstring_view prefix = L"link:";

void appendField(std::wstring& out, std::wstring_view field)
{
    for (wchar_t c : field) {
        switch (c) {
        case L'%': out += L"%25"; break;
        case L';': out += L"%3B"; break;
        case L'\n': out += L"%0A"; break;
        case L'\r': out += L"%0D"; break;
        default: out += c;
        }
    }
}

// Undoes appendField; false for a '%' not followed by one of the four codes.
bool decodeField(std::wstring_view field, std::wstring& out)
{
    out.clear();
    for (size_t i = 0; i < field.size(); ++i) {
        if (field[i] != L'%') {
            out += field[i];
            continue;
        }
        const std::wstring_view code = field.substr(i + 1, 2);
        if (code == L"25")
            out += L'%';
        else if (code == L"3B")
            out += L';';
        else if (code == L"0A")
            out += L'\n';
        else if (code == L"0D")
            out += L'\r';
        else
            return false;
        i += 2;
    }
    return true;
}

} // namespace

LoggerBase::HyperLink::HyperLink(std::vector<LightweightString<wchar_t>> targets,
                                 LightweightString<wchar_t> description, bool internal)
    : m_targets(std::move(targets))
    , m_description(std::move(description))
    , m_internal(internal)
{
}

LightweightString<wchar_t> LoggerBase::HyperLink::toString() const
{
    std::wstring out(prefix);
    out += m_internal ? L'i' : L'e';
    out += L';';
    appendField(out, m_description.view());
    for (const auto& target : m_targets) {
        out += L';';
        appendField(out, target.view());
    }
    return LightweightString<wchar_t>(std::move(out));
}

LoggerBase::HyperLink LoggerBase::HyperLink::fromString(const LightweightString<wchar_t>& text)
{
    std::wstring_view rest = text.view();
    if (!rest.starts_with(prefix) || rest.size() < prefix.size() + 2)
        return {};
    rest.remove_prefix(prefix.size());
    const wchar_t form = rest[0];
    if ((form != L'e' && form != L'i') || rest[1] != L';')
        return {};
    rest.remove_prefix(2);

    HyperLink link;
    link.m_internal = form == L'i';
    std::wstring field;
    bool first = true;
    while (true) {
        const size_t end = rest.find(L';');
        if (!decodeField(rest.substr(0, end), field))
            return {};
        if (first)
            link.m_description = LightweightString<wchar_t>(field);
        else
            link.m_targets.emplace_back(field);
        first = false;
        if (end == std::wstring_view::npos)
            break;
        rest.remove_prefix(end + 1);
    }
    return link;
}
