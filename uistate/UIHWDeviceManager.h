#pragma once
// UIHWDeviceManager: the video hardware configurations the host registered, which one is in use, and
// switching to another (restarting the device drivers, remembering the choice, telling listeners).
//
// The configuration in use is remembered in the preferences under the text of resource 13082.

#include "toolkit/support/LightweightString.h"
#include "toolkit/support/Notifier.h"
#include "toolkit/support/Vectors.h"

#include <cstdint>
#include <vector>

// Replaces the registered configuration names with a copy of names; their order numbers the devices.
void RegisterHWDevices(const Vector<LightweightString<wchar_t>>& names);

class UIHWDeviceManager : public Notifier {
public:
    static UIHWDeviceManager& instance();

    // The preference key's resource.
    static constexpr int currentHWPrefKeyId = 13082;

    // The registered names. The first call with any registered also takes them in as this manager's entries.
    Vector<LightweightString<wchar_t>> getHWDevicesAvailable();
    // The index of the configuration in use: the stored choice among the entries (the last equal entry
    // wins), else the last registered one; -1 with none registered. Until getHWDevicesAvailable() has been
    // called there are no entries, so the stored choice is not consulted.
    int getCurrentHW() const;
    // Switches to the named configuration. Answers true at once when it is the stored one already; false
    // when its drivers cannot be enabled, leaving the stored choice and telling nobody.
    bool setCurrentHW(const LightweightString<char>& name);

protected:
    // A manager beside the process's own, with no entries yet (tests).
    struct SeparateManager { };
    explicit UIHWDeviceManager(SeparateManager) {}

private:
    UIHWDeviceManager() = default;

    struct Entry {
        LightweightString<wchar_t> name;
        int32_t index = 0;
    };
    std::vector<Entry> m_entries;
};
