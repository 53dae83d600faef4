#pragma once
// KeybindingManager: which keys run which named command ("TogglePlay", "Undo").
//
// The user's bindings live in "keybindings" in the settings folder (Preferences::configDirectory()). One
// binding a line: the command, a tab, then its keys separated by ", " (none: the command has no key). A key is
// written as modifiers and a key name joined by '+': "Space", "Ctrl+Z", "Shift+F11", "Ctrl+Alt+Delete". Blank
// lines and lines starting with '#' are comments. Commands the file does not name keep their default keys.
//
// A file that is missing, unreadable or bad in any line (no tab, an unknown key name, a command named twice)
// is ignored as a whole: the defaults stand, so a half-understood file never leaves a command on a wrong key.
// All operations are thread-safe.

#include "toolkit/support/LightweightString.h"

#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

struct KeyBinding {
    int key = 0;       // a character (letters in upper case) or an Event::KeyCode
    int modifiers = 0; // Event::Modifier bits
    bool operator==(const KeyBinding&) const = default;
};

class KeybindingManager {
public:
    using Bindings = std::map<std::string, std::vector<KeyBinding>, std::less<>>;

    // Reads the file at utf8Path; an empty path uses the defaults only.
    explicit KeybindingManager(std::string utf8Path);

    // The process's bindings, read from defaultPath() on first use.
    static KeybindingManager& instance();
    static std::string defaultPath();

    // Points the bindings at another file and reads it.
    void setFile(std::string utf8Path);
    // Reads the file again (after the user edited it).
    void reload();
    // Whether the bindings in use came from the file (false: the defaults alone).
    bool isFromFile() const;

    // The keys bound to the command, first the one to show in texts; empty when none is.
    std::vector<KeyBinding> getKeysAssignedToCommand(std::string_view command) const;
    Bindings getAllBindings() const;

    // "Ctrl+Shift+Z", "Space", "F11".
    static LightweightString<wchar_t> keyToString(const KeyBinding& key);
    // The key a text names, in the file's spelling; nothing for text that names no key.
    static std::optional<KeyBinding> keyFromString(std::string_view text);
    static Bindings defaults();
    // The bindings of a file's bytes laid over the defaults; nothing when the file is bad.
    static std::optional<Bindings> parse(std::string_view bytes);

private:
    mutable std::mutex m_mutex;
    std::string m_path;
    Bindings m_bindings;
    bool m_fromFile = false;
};
