#include "toolkit/support/StartupConfig.h"

#include "toolkit/support/AtomicFile.h"
#include "toolkit/support/Preferences.h"
#include "toolkit/support/StringConversions.h"

#include <cstdlib>
#include <filesystem>
#include <iterator>

namespace {

// Hand-written settings are tiny; a bigger file is not one, and only its beginning is read.
constexpr size_t maxFileBytes = 1 << 20;

// Files written on other systems end their lines with a carriage return as well.
std::string_view trimmed(std::string_view text)
{
    return trimmedBlanks(text, " \t\r");
}

} // namespace

StartupConfig::Map StartupConfig::parse(std::string_view bytes)
{
    Map values;
    while (!bytes.empty()) {
        const size_t end = bytes.find('\n');
        std::string_view line = bytes.substr(0, end);
        bytes.remove_prefix(end == std::string_view::npos ? bytes.size() : end + 1);

        // Settings are numbers, so a '#' anywhere starts a comment: "key = 3  # three" is 3.
        line = line.substr(0, line.find('#'));
        const size_t equals = line.find('=');
        if (equals == std::string_view::npos)
            continue;
        const std::string_view key = trimmed(line.substr(0, equals));
        if (key.empty())
            continue;
        values.insert_or_assign(std::string(key), std::string(trimmed(line.substr(equals + 1))));
    }
    return values;
}

std::string StartupConfig::defaultPath()
{
    const std::string folder = Preferences::configDirectory();
    return folder.empty() ? std::string() : (std::filesystem::path(folder) / "startup.conf").string();
}

StartupConfig& StartupConfig::instance()
{
    static StartupConfig config(defaultPath());
    return config;
}

StartupConfig::StartupConfig(std::string utf8Path)
    : m_path(std::move(utf8Path))
{
    load();
}

void StartupConfig::setFile(std::string utf8Path)
{
    std::lock_guard lock(m_mutex);
    m_path = std::move(utf8Path);
    load();
}

void StartupConfig::load()
{
    m_values.clear();
    if (m_path.empty())
        return;
    const std::string bytes = Cv::readFilePrefix(m_path, static_cast<size_t>(maxFileBytes));
    m_values = parse(bytes);
}

int StartupConfig::getInt(std::string_view key, int def) const
{
    std::string text;
    const std::string variable = "TESSEL_" + std::string(key);
    if (const char* fromEnvironment = std::getenv(variable.c_str())) {
        text = fromEnvironment;
    } else {
        std::lock_guard lock(m_mutex);
        const auto it = m_values.find(key);
        if (it == m_values.end())
            return def;
        text = it->second;
    }
    int value = def;
    return IntegerFromString(text, value) ? value : def;
}

int config_int(std::string_view key, int def)
{
    return StartupConfig::instance().getInt(key, def);
}
