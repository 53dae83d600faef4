#pragma once
// Start-up settings: integers that the components read once when the library loads. They come from the file
// "$XDG_CONFIG_HOME/tessel/startup.conf" (lines "key = value", '#' starts a comment), and an environment
// variable named TESSEL_ followed by the key (TESSEL_showExperimental=1) wins over the file, so a setting can
// be tried for one run without editing anything. Described in docs/preferences.md.

#include <map>
#include <mutex>
#include <string>
#include <string_view>

class StartupConfig {
public:
    using Map = std::map<std::string, std::string, std::less<>>;

    // Reads the file at utf8Path; a missing file gives no settings (every lookup answers its default).
    explicit StartupConfig(std::string utf8Path);

    // "startup.conf" in the settings folder, or empty when there is no home.
    static std::string defaultPath();
    // The process's settings, read from defaultPath() on first use.
    static StartupConfig& instance();

    // Reads another file instead, dropping what was read before.
    void setFile(std::string utf8Path);

    // The environment's text when TESSEL_<key> is set, else the file's, else def. When that text is not a
    // whole decimal integer that fits an int, the answer is def: a mistyped setting never half-applies.
    int getInt(std::string_view key, int def) const;

    // The file format; never fails. Lines without '=' or with an empty key are skipped; a later line for the
    // same key wins. Spaces around keys and values do not count.
    static Map parse(std::string_view bytes);

private:
    void load();

    mutable std::mutex m_mutex;
    std::string m_path;
    Map m_values;
};

// An integer start-up setting from the process's settings (StartupConfig::instance()).
int config_int(std::string_view key, int def);
