// Arbitrary bytes as a preferences file: reading must keep its promises whatever the file holds. Every key is
// read back through each typed getter, everything is written back through the real atomic write, and a
// fresh reader must then see exactly what the first one held.
#include "FuzzChecks.h"
#include "toolkit/support/Preferences.h"

#include <cstdint>
#include <fstream>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const std::string& path = scratchFile("preferences");
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
