#include "toolkit/support/Resources.h"

#include "toolkit/support/ContentLines.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <locale.h>
#include <mutex>
#include <wctype.h>

namespace {

constexpr const char* tableFileName = "strings.en.txt";

// Decodes the escapes of a table text; answers false for an unknown or dangling escape.
bool unescape(std::string_view text, std::string& out)
{
    out.clear();
    for (size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\\') {
            out += text[i];
            continue;
        }
        if (++i == text.size())
            return false;
        switch (text[i]) {
        case 'n': out += '\n'; break;
        case 't': out += '\t'; break;
        case '\\': out += '\\'; break;
        default: return false;
        }
    }
    return true;
}

bool parseId(std::string_view text, int& id)
{
    if (text.empty() || text.size() > 9)
        return false;
    int value = 0;
    for (const char c : text) {
        if (c < '0' || c > '9')
            return false;
        value = value * 10 + (c - '0');
    }
    id = value;
    return true;
}

// Case mapping must not depend on the process locale (usually "C", which maps ASCII only); the C.UTF-8
// locale maps every script. Without it, ASCII is still mapped.
locale_t caseLocale()
{
    static const locale_t locale = newlocale(LC_CTYPE_MASK, "C.UTF-8", locale_t(nullptr));
    return locale;
}

wchar_t toUpper(wchar_t c)
{
    if (const locale_t locale = caseLocale())
        return static_cast<wchar_t>(towupper_l(static_cast<wint_t>(c), locale));
    return c >= L'a' && c <= L'z' ? c - L'a' + L'A' : c;
}

wchar_t toLower(wchar_t c)
{
    if (const locale_t locale = caseLocale())
        return static_cast<wchar_t>(towlower_l(static_cast<wint_t>(c), locale));
    return c >= L'A' && c <= L'Z' ? c - L'A' + L'a' : c;
}

bool isSpace(wchar_t c)
{
    if (const locale_t locale = caseLocale())
        return iswspace_l(static_cast<wint_t>(c), locale) != 0;
    return c == L' ' || c == L'\t' || c == L'\n';
}

struct GlobalTable {
    std::mutex mutex;
    std::string path; // empty: search
    std::shared_ptr<const StringTable> table;
};

GlobalTable& globalTable()
{
    static GlobalTable global;
    return global;
}

} // namespace

bool StringTable::load(const std::string& utf8Path)
{
    m_texts.clear();
    m_malformed.clear();
    m_duplicates.clear();
    std::ifstream in(utf8Path, std::ios::binary);
    if (!in)
        return false;
    const std::string bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    parse(bytes);
    return true;
}

void StringTable::parse(std::string_view bytes)
{
    m_texts.clear();
    m_malformed.clear();
    m_duplicates.clear();
    std::string text;
    forEachContentLine(bytes, [&](std::string_view line, size_t lineNumber) {
        const size_t tab = line.find('\t');
        int id = 0;
        if (tab == std::string_view::npos || !parseId(line.substr(0, tab), id) || id == ResId::none
            || !unescape(line.substr(tab + 1), text)) {
            m_malformed.push_back(lineNumber);
            return true;
        }
        const auto [it, inserted] = m_texts.insert_or_assign(id, fromUTF8(text));
        if (!inserted)
            m_duplicates.push_back(id);
        return true;
    });
}

const LightweightString<wchar_t>* StringTable::find(int id) const
{
    const auto it = m_texts.find(id);
    return it == m_texts.end() ? nullptr : &it->second;
}

LightweightString<wchar_t> StringTable::missingText(int id)
{
    return L"[#" + fromUTF8(std::to_string(id)) + L"]";
}

std::string StringTable::findDataFile()
{
    std::vector<std::string> folders;
    if (const char* fromEnvironment = std::getenv("TESSEL_DATA_DIR"); fromEnvironment && *fromEnvironment)
        folders.emplace_back(fromEnvironment);
#ifdef TESSEL_BUILD_DATA_DIR
    folders.emplace_back(TESSEL_BUILD_DATA_DIR);
#endif
#ifdef TESSEL_INSTALL_DATA_DIR
    folders.emplace_back(TESSEL_INSTALL_DATA_DIR);
#endif
    for (const auto& folder : folders) {
        std::error_code error;
        const auto path = std::filesystem::path(folder) / tableFileName;
        if (std::filesystem::is_regular_file(path, error))
            return path.string();
    }
    return {};
}

std::shared_ptr<const StringTable> StringTable::global()
{
    GlobalTable& global = globalTable();
    std::lock_guard lock(global.mutex);
    if (!global.table) {
        const std::string path = global.path.empty() ? findDataFile() : global.path;
        auto table = std::make_shared<StringTable>();
        if (path.empty() || !table->load(path))
            std::fprintf(stderr, "tessel: cannot read the string table %s; set TESSEL_DATA_DIR to its folder\n",
                path.empty() ? tableFileName : path.c_str());
        global.table = std::move(table);
    }
    return global.table;
}

void StringTable::setGlobalFile(std::string utf8Path)
{
    GlobalTable& global = globalTable();
    std::lock_guard lock(global.mutex);
    global.path = std::move(utf8Path);
    global.table.reset();
}

LightweightString<wchar_t> applyResStrFmt(const LightweightString<wchar_t>& text, ResStrFmt format)
{
    if (format != resFmtUpperCase && format != resFmtLowerCase && format != resFmtTitleCase
        && format != resFmtEllipsis)
        return text;
    std::wstring out = text.str();
    switch (format) {
    case resFmtAsIs:
        break;
    case resFmtUpperCase:
        for (wchar_t& c : out)
            c = toUpper(c);
        break;
    case resFmtLowerCase:
        for (wchar_t& c : out)
            c = toLower(c);
        break;
    case resFmtTitleCase: {
        // Only first letters change, so acronyms such as "LUT" survive.
        bool wordStart = true;
        for (wchar_t& c : out) {
            if (wordStart)
                c = toUpper(c);
            wordStart = isSpace(c);
        }
        break;
    }
    case resFmtEllipsis:
        if (!out.ends_with(L"...") && !out.ends_with(L"\u2026"))
            out += L"...";
        break;
    }
    return LightweightString<wchar_t>(std::move(out));
}

LightweightString<wchar_t> resourceStrW(int id, ResStrFmt format)
{
    if (id == ResId::none)
        return {};
    const auto table = StringTable::global();
    const LightweightString<wchar_t>* text = table->find(id);
    return text ? applyResStrFmt(*text, format) : StringTable::missingText(id);
}

LightweightString<wchar_t> resourceStrW(ResId id, ResStrFmt format)
{
    return resourceStrW(id.id, format);
}

LightweightString<char> resourceStr(int id, ResStrFmt format)
{
    return toUTF8(resourceStrW(id, format).view());
}

LightweightString<char> resourceStr(ResId id, ResStrFmt format)
{
    return resourceStr(id.id, format);
}
