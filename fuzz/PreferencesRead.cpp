// Arbitrary bytes as a preferences file: reading must keep its promises whatever the file holds. Every key is
// read back through each typed getter, everything is written back through the real atomic write, and a
// fresh reader must then see exactly what the first one held.
#include "toolkit/support/Preferences.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <unistd.h>

namespace {

// One folder per run, removed when the run ends.
struct ScratchFolder {
    ScratchFolder()
        : folder(std::filesystem::temp_directory_path() / ("tessel-fuzz-preferences-" + std::to_string(::getpid())))
    {
        std::filesystem::create_directories(folder);
    }
    ~ScratchFolder()
    {
        std::error_code error;
        std::filesystem::remove_all(folder, error);
    }
    std::filesystem::path folder;
};

const std::string& scratchFile()
{
    static const ScratchFolder scratch;
    static const std::string path = (scratch.folder / "preferences").string();
    return path;
}

void check(bool condition, const char* what)
{
    if (!condition) {
        std::fprintf(stderr, "PreferencesRead: %s\n", what);
        std::abort();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const std::string& path = scratchFile();
    {
        std::ofstream out(path, std::ios::binary | std::ios::trunc);
        out.write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
    }

    Preferences preferences(path);
    const Preferences::Map loaded = preferences.snapshot();
    for (const auto& [key, value] : loaded) {
        check(preferences.getPreference(key, "") == value, "text value differs from the loaded one");
        (void)preferences.getPreference(key, L"");
        (void)preferences.getPreference(key, 0);
        (void)preferences.getPreference(key, false);
        (void)preferences.getPreference(key, 0.0);
    }

    // The serialised form must parse back to the same map, byte for byte.
    check(Preferences::parse(Preferences::serialise(loaded)) == loaded, "serialised form does not parse back");

    // Write everything back through the file, with the input itself as one more awkward value.
    const std::string extraKey(reinterpret_cast<const char*>(data), size < 64 ? size : 64);
    const std::string extraValue(reinterpret_cast<const char*>(data), size);
    check(preferences.setPreference(extraKey, std::string_view(extraValue)), "write failed");
    Preferences::Map expected = loaded;
    expected.insert_or_assign(extraKey, extraValue);
    check(Preferences(path).snapshot() == expected, "file written does not read back");
    return 0;
}
