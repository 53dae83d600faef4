// Arbitrary bytes as a key-binding file. Reading must never fail: a bad file gives exactly the defaults, a
// good one keeps every default it does not name, every key read shows as a text that reads back as the same
// key, and the bindings written out again read back the same, through the real file as well.
#include "FuzzChecks.h"
#include "toolkit/ui/KeybindingManager.h"

#include <cstdint>
#include <fstream>
#include <string>

namespace {

std::string serialise(const KeybindingManager::Bindings& bindings)
{
    std::string out;
    for (const auto& [command, keys] : bindings) {
        out += command + "\t";
        for (size_t i = 0; i < keys.size(); ++i)
            out += (i ? ", " : "") + toUTF8(KeybindingManager::keyToString(keys[i]).view()).str();
        out += "\n";
    }
    return out;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const auto parsed = KeybindingManager::parse(bytes);

    const std::string& path = scratchFile("keybindings");
    {
        std::ofstream out(path, std::ios::binary | std::ios::trunc);
        out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    }
    const KeybindingManager fromFile(path);
    check(fromFile.isFromFile() == parsed.has_value(), "the file and the bytes disagree on being good");
    if (!parsed) {
        check(fromFile.getAllBindings() == KeybindingManager::defaults(), "a bad file does not give the defaults");
        return 0;
    }
    check(fromFile.getAllBindings() == *parsed, "the file reads differently from its bytes");
    for (const auto& [command, keys] : KeybindingManager::defaults())
        check(parsed->contains(command), "a default command went missing");
    for (const auto& [command, keys] : *parsed) {
        check(!command.empty() && command.find('\t') == std::string::npos && command.find('\n') == std::string::npos,
              "a command name holds a separator");
        for (const KeyBinding& key : keys) {
            const auto back = KeybindingManager::keyFromString(toUTF8(KeybindingManager::keyToString(key).view()).view());
            check(back && *back == key, "a key does not read back from its text");
        }
    }
    check(KeybindingManager::parse(serialise(*parsed)) == parsed, "the bindings written out read back differently");
    return 0;
}
