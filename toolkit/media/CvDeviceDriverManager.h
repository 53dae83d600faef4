#pragma once
// CvDeviceDriverManager: the device drivers of the process and the named configurations that say which of
// them run together ("Software preview", "No output").
//
// The host adds its drivers and configurations at start-up. Switching is: stop the running drivers,
// disableDevices(), toggleDevices(name) to open the drivers of the new configuration, then give them the
// output format and start them. A configuration whose driver cannot be opened leaves every driver disabled.
// Thread-safe; drivers are called outside the manager's lock, on the calling thread.

#include "toolkit/media/CvResourceTypeBase.h"
#include "toolkit/support/LightweightString.h"
#include "toolkit/support/Ptr.h"

#include <vector>

class CvDeviceDriverManager {
public:
    using Driver = Cv::Ptr<CvResourceTypeBase>;

    // A driver whose name is taken already replaces the one before (which is closed first if enabled).
    static void addDriver(const Driver& driver);
    static void removeDriver(const LightweightString<wchar_t>& name);
    // Defining a name again replaces its driver list. Drivers are named; names not added are skipped.
    static void defineConfiguration(const LightweightString<wchar_t>& name,
                                    std::vector<LightweightString<wchar_t>> driverNames);
    static std::vector<LightweightString<wchar_t>> getConfigurationNames();
    // Drops every driver (closing the enabled ones) and configuration.
    static void clear();

    // Closes every enabled driver.
    static void disableDevices();
    // Opens the drivers of the configuration. Answers false, and leaves the drivers it opened closed again,
    // when there is no such configuration or one of its drivers cannot be opened. With probeOnly nothing
    // stays opened: the answer says whether the configuration could be enabled now.
    static bool toggleDevices(const LightweightString<char>& configuration, bool probeOnly);

    static bool isEnabled(const CvResourceTypeBase* driver);
    // The drivers in the order they were added, optionally only the enabled ones, of one type (0: all).
    static std::vector<Driver> getDrivers(bool enabledOnly, int resourceType);
};

// Walks a snapshot of the drivers: CvDeviceDriverManagerIter it(true, 0, 1000); for (; it; ++it) it->stop();
class CvDeviceDriverManagerIter {
public:
    CvDeviceDriverManagerIter(bool enabledOnly, int firstIndex, int resourceType);

    explicit operator bool() const { return m_index < m_drivers.size(); }
    CvResourceTypeBase* operator->() const { return m_drivers[m_index].get(); }
    CvResourceTypeBase& operator*() const { return *m_drivers[m_index]; }
    CvDeviceDriverManagerIter& operator++()
    {
        ++m_index;
        return *this;
    }

private:
    std::vector<CvDeviceDriverManager::Driver> m_drivers;
    size_t m_index = 0;
};
