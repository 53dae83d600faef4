#pragma once
// Preferences: the user's settings that outlive a run (hints shown, last file type, video hardware), kept as
// text under narrow keys in one file, "$XDG_CONFIG_HOME/tessel/preferences" (XDG_CONFIG_HOME defaults to
// ~/.config). The file format is described in docs/preferences.md.
//
// Every change is written at once, atomically, so a crash leaves either the old file or the new one. A file
// that cannot be written leaves the change in memory for this run. All operations are thread-safe.
// Values are stored as text; the typed getters read the text back and answer the default when there is no
// such key or its text is not of the asked type.

#include "toolkit/support/LightweightString.h"

#include <map>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

class Preferences {
public:
    using Map = std::map<std::string, std::string, std::less<>>;

    // Reads the file at utf8Path; a missing or unreadable file gives empty preferences. An empty path keeps
    // the preferences in memory only.
    explicit Preferences(std::string utf8Path);

    // The folder of the user's settings: "$XDG_CONFIG_HOME/tessel", else "$HOME/.config/tessel"; empty when
    // there is no home at all. Not created here.
    static std::string configDirectory();
    // The file the process's preferences live in: "preferences" in configDirectory(), or empty.
    static std::string defaultPath();

    // Points these preferences at another file and reads it; what was held before is dropped, not written.
    void setFile(std::string utf8Path);
    std::string file() const;
    // Drops what is held and reads the file again.
    void reload();

    LightweightString<char> getPreference(std::string_view key, const LightweightString<char>& def) const;
    LightweightString<char> getPreference(std::string_view key, const char* def) const;
    LightweightString<wchar_t> getPreference(std::string_view key, const LightweightString<wchar_t>& def) const;
    LightweightString<wchar_t> getPreference(std::string_view key, const wchar_t* def) const;
    // The whole text must be a decimal integer in range, with optional surrounding blanks.
    int getPreference(std::string_view key, int def) const;
    // "true", "yes", "on", "1" and "false", "no", "off", "0", in any case.
    bool getPreference(std::string_view key, bool def) const;
    // The whole text must be a decimal number ("nan" and "inf" are accepted, as StringFromFloat writes them).
    double getPreference(std::string_view key, double def) const;

    // Each answers false when the file could not be written (the value is held all the same).
    bool setPreference(std::string_view key, std::string_view value);
    bool setPreference(std::string_view key, const char* value);
    bool setPreference(std::string_view key, const LightweightString<wchar_t>& value);
    bool setPreference(std::string_view key, const wchar_t* value);
    bool setPreference(std::string_view key, int value);
    bool setPreference(std::string_view key, bool value);
    bool setPreference(std::string_view key, double value);
    // Answers false when the key was absent or the file could not be written.
    bool removePreference(std::string_view key);

    bool hasPreference(std::string_view key) const;
    std::vector<std::string> keys() const;
    Map snapshot() const;

    // The file format, for the reader's tests and fuzzing. Parsing never fails: lines that are not well-formed
    // are skipped, and so is a last line without its newline, which may have been cut short.
    static Map parse(std::string_view bytes);
    static std::string serialise(const Map& preferences);

private:
    bool store(std::string_view key, std::string value);
    bool writeLocked() const;
    void loadLocked();

    mutable std::mutex m_mutex;
    std::string m_path;
    Map m_values;
};

// The name the components know the process's preferences by.
using EditorPreferences = Preferences;

// The process's preferences, read from Preferences::defaultPath() on first use.
EditorPreferences& prefs();
