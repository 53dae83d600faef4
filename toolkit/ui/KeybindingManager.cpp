#include "toolkit/ui/KeybindingManager.h"

#include "toolkit/support/ContentLines.h"
#include "toolkit/support/Preferences.h"
#include "toolkit/ui/Event.h"

#include <array>
#include <cctype>
#include <fstream>
#include <iterator>
#include <set>
#include <sstream>

namespace {

struct NamedKey {
    std::string_view name;
    int key;
};

// Named keys, in the spelling of the file and of the texts shown to the user.
constexpr std::array namedKeys {
    NamedKey { "Space", ' ' },
    NamedKey { "Backspace", Event::KeyBackspace },
    NamedKey { "Tab", Event::KeyTab },
    NamedKey { "Return", Event::KeyReturn },
    NamedKey { "Escape", Event::KeyEscape },
    NamedKey { "Delete", Event::KeyDelete },
    NamedKey { "Left", Event::KeyLeft },
    NamedKey { "Right", Event::KeyRight },
    NamedKey { "Up", Event::KeyUp },
    NamedKey { "Down", Event::KeyDown },
    NamedKey { "Home", Event::KeyHome },
    NamedKey { "End", Event::KeyEnd },
    NamedKey { "PageUp", Event::KeyPageUp },
    NamedKey { "PageDown", Event::KeyPageDown },
    NamedKey { "Insert", Event::KeyInsert },
};

struct NamedModifier {
    std::string_view name;
    int bit;
};

// In the order they are written.
constexpr std::array namedModifiers {
    NamedModifier { "Cmd", Event::Cmd },
    NamedModifier { "Ctrl", Event::Ctrl },
    NamedModifier { "Alt", Event::Alt },
    NamedModifier { "Shift", Event::Shift },
};

std::optional<int> keyFromName(std::string_view name)
{
    for (const NamedKey& named : namedKeys)
        if (named.name == name)
            return named.key;
    if (name.size() >= 2 && name.size() <= 3 && name[0] == 'F') {
        int number = 0;
        for (const char c : name.substr(1)) {
            if (c < '0' || c > '9')
                return std::nullopt;
            number = number * 10 + (c - '0');
        }
        if (number >= 1 && number <= 12 && name[1] != '0')
            return Event::KeyF1 + number - 1;
        return std::nullopt;
    }
    // One printable ASCII character other than the separators; letters are kept in upper case so that "z"
    // and "Z" bind the same key.
    if (name.size() == 1 && name[0] > ' ' && name[0] < 0x7F && name[0] != '+' && name[0] != ',')
        return std::toupper(static_cast<unsigned char>(name[0]));
    return std::nullopt;
}

std::optional<std::vector<KeyBinding>> keysFromList(std::string_view list)
{
    std::vector<KeyBinding> keys;
    if (list.empty())
        return keys;
    size_t start = 0;
    while (true) {
        const size_t comma = list.find(", ", start);
        const auto key = KeybindingManager::keyFromString(list.substr(start, comma - start));
        if (!key)
            return std::nullopt;
        keys.push_back(*key);
        if (comma == std::string_view::npos)
            return keys;
        start = comma + 2;
    }
}

std::string readFile(const std::string& path, bool& readable)
{
    std::ifstream in(path, std::ios::binary);
    readable = static_cast<bool>(in);
    return readable ? std::string(std::istreambuf_iterator<char>(in), {}) : std::string();
}

} // namespace

KeybindingManager::KeybindingManager(std::string utf8Path)
{
    setFile(std::move(utf8Path));
}

KeybindingManager& KeybindingManager::instance()
{
    static KeybindingManager manager(defaultPath());
    return manager;
}

std::string KeybindingManager::defaultPath()
{
    const std::string folder = Preferences::configDirectory();
    return folder.empty() ? std::string() : folder + "/keybindings";
}

void KeybindingManager::setFile(std::string utf8Path)
{
    {
        const std::scoped_lock lock(m_mutex);
        m_path = std::move(utf8Path);
    }
    reload();
}

void KeybindingManager::reload()
{
    const std::string path = [this] {
        const std::scoped_lock lock(m_mutex);
        return m_path;
    }();
    bool readable = false;
    const std::string bytes = path.empty() ? std::string() : readFile(path, readable);
    std::optional<Bindings> fromFile = readable ? parse(bytes) : std::nullopt;
    const std::scoped_lock lock(m_mutex);
    m_fromFile = fromFile.has_value();
    m_bindings = fromFile ? std::move(*fromFile) : defaults();
}

bool KeybindingManager::isFromFile() const
{
    const std::scoped_lock lock(m_mutex);
    return m_fromFile;
}

std::vector<KeyBinding> KeybindingManager::getKeysAssignedToCommand(std::string_view command) const
{
    const std::scoped_lock lock(m_mutex);
    const auto found = m_bindings.find(command);
    return found == m_bindings.end() ? std::vector<KeyBinding>() : found->second;
}

KeybindingManager::Bindings KeybindingManager::getAllBindings() const
{
    const std::scoped_lock lock(m_mutex);
    return m_bindings;
}

LightweightString<wchar_t> KeybindingManager::keyToString(const KeyBinding& key)
{
    std::string text;
    for (const NamedModifier& modifier : namedModifiers)
        if (key.modifiers & modifier.bit)
            text.append(modifier.name).push_back('+');
    std::string name;
    for (const NamedKey& named : namedKeys)
        if (named.key == key.key)
            name = named.name;
    if (name.empty() && key.key >= Event::KeyF1 && key.key <= Event::KeyF12)
        name = "F" + std::to_string(key.key - Event::KeyF1 + 1);
    if (name.empty() && key.key > ' ' && key.key < 0x7F)
        name = std::string(1, static_cast<char>(std::toupper(key.key)));
    if (name.empty())
        name = "?";
    text += name;
    return LightweightString<wchar_t>(std::wstring(text.begin(), text.end()));
}

std::optional<KeyBinding> KeybindingManager::keyFromString(std::string_view text)
{
    KeyBinding binding;
    // The key's own name may be "+" only as a character key, which the separator rules out; so every '+'
    // ends a modifier.
    size_t plus = 0;
    while ((plus = text.find('+')) != std::string_view::npos) {
        const std::string_view name = text.substr(0, plus);
        bool known = false;
        for (const NamedModifier& modifier : namedModifiers) {
            if (modifier.name == name && !(binding.modifiers & modifier.bit)) {
                binding.modifiers |= modifier.bit;
                known = true;
            }
        }
        if (!known)
            return std::nullopt;
        text.remove_prefix(plus + 1);
    }
    const std::optional<int> key = keyFromName(text);
    if (!key)
        return std::nullopt;
    binding.key = *key;
    return binding;
}

KeybindingManager::Bindings KeybindingManager::defaults()
{
    return Bindings {
        { "ToggleFullScreen", { KeyBinding { Event::KeyF1 + 10, 0 } } },
        { "TogglePlay", { KeyBinding { ' ', 0 } } },
        { "Undo", { KeyBinding { 'Z', Event::Ctrl } } },
        { "Join/Unjoin", { KeyBinding { 'J', Event::Ctrl } } },
    };
}

std::optional<KeybindingManager::Bindings> KeybindingManager::parse(std::string_view bytes)
{
    Bindings bindings = defaults();
    std::set<std::string, std::less<>> named;
    const bool wellFormed = forEachContentLine(bytes, [&](std::string_view line, size_t) {
        const size_t tab = line.find('\t');
        if (tab == 0 || tab == std::string_view::npos)
            return false;
        const std::string_view command = line.substr(0, tab);
        const auto keys = keysFromList(line.substr(tab + 1));
        if (!keys || !named.emplace(command).second)
            return false;
        bindings[std::string(command)] = *keys;
        return true;
    });
    if (!wellFormed)
        return std::nullopt;
    return bindings;
}
