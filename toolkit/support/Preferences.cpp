#include "toolkit/support/Preferences.h"

#include "toolkit/support/AtomicFile.h"
#include "toolkit/support/StringConversions.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <pwd.h>
#include <unistd.h>

namespace {

// A file larger than this is not a preferences file we wrote; only its beginning is read.
constexpr std::streamsize maxFileBytes = 16 << 20;

constexpr std::string_view fileHeader = "# tessel preferences: one key=value a line; see docs/preferences.md\n";

void appendEscaped(std::string& out, std::string_view text, bool isKey)
{
    for (const char c : text) {
        switch (c) {
        case '\\': out += "\\\\"; break;
        case '\n': out += "\\n"; break;
        case '\r': out += "\\r"; break;
        case '=':
            out += isKey ? "\\=" : "=";
            break;
        case '#':
            out += isKey ? "\\#" : "#";
            break;
        default: out += c;
        }
    }
}

// Decodes one line. Answers nothing for a line that is not a well-formed key=value record.
std::optional<std::pair<std::string, std::string>> parseLine(std::string_view line)
{
    std::string key;
    std::string value;
    std::string* target = &key;
    for (size_t i = 0; i < line.size(); ++i) {
        const char c = line[i];
        if (c == '=' && target == &key) {
            target = &value;
            continue;
        }
        if (c != '\\') {
            *target += c;
            continue;
        }
        if (++i == line.size())
            return std::nullopt; // a dangling escape: the line was damaged
        switch (line[i]) {
        case '\\': *target += '\\'; break;
        case 'n': *target += '\n'; break;
        case 'r': *target += '\r'; break;
        case '=': *target += '='; break;
        case '#': *target += '#'; break;
        default: return std::nullopt;
        }
    }
    if (target == &key)
        return std::nullopt;
    return std::make_pair(std::move(key), std::move(value));
}

bool equalsIgnoringCase(std::string_view a, std::string_view b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) {
        return std::tolower(static_cast<unsigned char>(x)) == std::tolower(static_cast<unsigned char>(y));
    });
}

std::string homeDirectory()
{
    if (const char* home = std::getenv("HOME"); home && *home)
        return home;
    passwd entry{};
    passwd* found = nullptr;
    std::string buffer(16384, '\0');
    if (::getpwuid_r(::getuid(), &entry, buffer.data(), buffer.size(), &found) == 0 && found && found->pw_dir)
        return found->pw_dir;
    return {};
}

} // namespace

Preferences::Map Preferences::parse(std::string_view bytes)
{
    Map values;
    while (true) {
        const size_t end = bytes.find('\n');
        if (end == std::string_view::npos)
            break; // an unterminated last line may have been cut short
        std::string_view line = bytes.substr(0, end);
        bytes.remove_prefix(end + 1);
        if (!line.empty() && line.back() == '\r')
            line.remove_suffix(1); // the file went through an editor that writes CR LF
        if (line.empty() || line.front() == '#')
            continue;
        if (auto record = parseLine(line))
            values.insert_or_assign(std::move(record->first), std::move(record->second));
    }
    return values;
}

std::string Preferences::serialise(const Map& preferences)
{
    std::string out(fileHeader);
    for (const auto& [key, value] : preferences) {
        appendEscaped(out, key, true);
        out += '=';
        appendEscaped(out, value, false);
        out += '\n';
    }
    return out;
}

std::string Preferences::configDirectory()
{
    const char* xdg = std::getenv("XDG_CONFIG_HOME");
    // Relative values are to be ignored: they would depend on the working directory.
    if (xdg && *xdg == '/')
        return (std::filesystem::path(xdg) / "tessel").string();
    const std::string home = homeDirectory();
    if (home.empty())
        return {};
    return (std::filesystem::path(home) / ".config" / "tessel").string();
}

std::string Preferences::defaultPath()
{
    const std::string folder = configDirectory();
    return folder.empty() ? std::string() : (std::filesystem::path(folder) / "preferences").string();
}

Preferences::Preferences(std::string utf8Path)
    : m_path(std::move(utf8Path))
{
    loadLocked();
}

void Preferences::setFile(std::string utf8Path)
{
    std::lock_guard lock(m_mutex);
    m_path = std::move(utf8Path);
    loadLocked();
}

std::string Preferences::file() const
{
    std::lock_guard lock(m_mutex);
    return m_path;
}

void Preferences::reload()
{
    std::lock_guard lock(m_mutex);
    loadLocked();
}

void Preferences::loadLocked()
{
    m_values.clear();
    if (m_path.empty())
        return;
    const std::string bytes = Cv::readFilePrefix(m_path, static_cast<size_t>(maxFileBytes));
    m_values = parse(bytes);
}

bool Preferences::writeLocked() const
{
    if (m_path.empty())
        return true;
    std::error_code error;
    const auto folder = std::filesystem::path(m_path).parent_path();
    if (!folder.empty())
        std::filesystem::create_directories(folder, error);
    return Cv::writeFileAtomically(m_path, serialise(m_values));
}

bool Preferences::store(std::string_view key, std::string value)
{
    std::lock_guard lock(m_mutex);
    const auto it = m_values.find(key);
    if (it != m_values.end()) {
        if (it->second == value)
            return true; // nothing changed, nothing to write
        it->second = std::move(value);
    } else {
        m_values.emplace(std::string(key), std::move(value));
    }
    return writeLocked();
}

bool Preferences::removePreference(std::string_view key)
{
    std::lock_guard lock(m_mutex);
    const auto it = m_values.find(key);
    if (it == m_values.end())
        return false;
    m_values.erase(it);
    return writeLocked();
}

bool Preferences::hasPreference(std::string_view key) const
{
    std::lock_guard lock(m_mutex);
    return m_values.find(key) != m_values.end();
}

std::vector<std::string> Preferences::keys() const
{
    std::lock_guard lock(m_mutex);
    std::vector<std::string> out;
    out.reserve(m_values.size());
    for (const auto& entry : m_values)
        out.push_back(entry.first);
    return out;
}

Preferences::Map Preferences::snapshot() const
{
    std::lock_guard lock(m_mutex);
    return m_values;
}

LightweightString<char> Preferences::getPreference(std::string_view key, const LightweightString<char>& def) const
{
    std::lock_guard lock(m_mutex);
    const auto it = m_values.find(key);
    return it == m_values.end() ? def : LightweightString<char>(it->second);
}

LightweightString<char> Preferences::getPreference(std::string_view key, const char* def) const
{
    return getPreference(key, LightweightString<char>(def));
}

LightweightString<wchar_t> Preferences::getPreference(std::string_view key, const LightweightString<wchar_t>& def) const
{
    std::lock_guard lock(m_mutex);
    const auto it = m_values.find(key);
    return it == m_values.end() ? def : fromUTF8(it->second);
}

LightweightString<wchar_t> Preferences::getPreference(std::string_view key, const wchar_t* def) const
{
    return getPreference(key, LightweightString<wchar_t>(def));
}

int Preferences::getPreference(std::string_view key, int def) const
{
    std::lock_guard lock(m_mutex);
    const auto it = m_values.find(key);
    if (it == m_values.end())
        return def;
    int value = def;
    IntegerFromString(it->second, value);
    return value;
}

bool Preferences::getPreference(std::string_view key, bool def) const
{
    std::lock_guard lock(m_mutex);
    const auto it = m_values.find(key);
    if (it == m_values.end())
        return def;
    const std::string_view text = trimmedBlanks(it->second);
    for (const std::string_view yes : {"true", "yes", "on", "1"})
        if (equalsIgnoringCase(text, yes))
            return true;
    for (const std::string_view no : {"false", "no", "off", "0"})
        if (equalsIgnoringCase(text, no))
            return false;
    return def;
}

double Preferences::getPreference(std::string_view key, double def) const
{
    std::lock_guard lock(m_mutex);
    const auto it = m_values.find(key);
    if (it == m_values.end())
        return def;
    double value = def;
    FloatFromString(it->second, value);
    return value;
}

bool Preferences::setPreference(std::string_view key, std::string_view value)
{
    return store(key, std::string(value));
}

bool Preferences::setPreference(std::string_view key, const char* value)
{
    return store(key, value ? std::string(value) : std::string());
}

bool Preferences::setPreference(std::string_view key, const LightweightString<wchar_t>& value)
{
    return store(key, toUTF8(value.view()).str());
}

bool Preferences::setPreference(std::string_view key, const wchar_t* value)
{
    return setPreference(key, LightweightString<wchar_t>(value));
}

bool Preferences::setPreference(std::string_view key, int value)
{
    return store(key, StringFromInteger(value).str());
}

bool Preferences::setPreference(std::string_view key, bool value)
{
    return store(key, value ? "true" : "false");
}

bool Preferences::setPreference(std::string_view key, double value)
{
    return store(key, StringFromFloat(value).str());
}

EditorPreferences& prefs()
{
    static EditorPreferences preferences(Preferences::defaultPath());
    return preferences;
}
