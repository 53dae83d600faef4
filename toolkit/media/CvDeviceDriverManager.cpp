#include "toolkit/media/CvDeviceDriverManager.h"


#include <algorithm>
#include <map>
#include <mutex>
#include <set>

namespace {

struct Registry {
    std::mutex mutex;
    std::vector<CvDeviceDriverManager::Driver> drivers;
    std::set<const CvResourceTypeBase*> enabled;
    std::map<std::wstring, std::vector<LightweightString<wchar_t>>> configurations;
};

Registry& registry()
{
    static Registry r;
    return r;
}

void closeIfEnabled(const CvDeviceDriverManager::Driver& driver)
{
    Registry& r = registry();
    {
        const std::scoped_lock lock(r.mutex);
        if (r.enabled.erase(driver.get()) == 0)
            return;
    }
    driver->close();
}

} // namespace

void CvDeviceDriverManager::addDriver(const Driver& driver)
{
    if (!driver)
        return;
    removeDriver(driver->getName());
    Registry& r = registry();
    const std::scoped_lock lock(r.mutex);
    r.drivers.push_back(driver);
}

void CvDeviceDriverManager::removeDriver(const LightweightString<wchar_t>& name)
{
    Registry& r = registry();
    Driver removed;
    {
        const std::scoped_lock lock(r.mutex);
        const auto found = std::find_if(r.drivers.begin(), r.drivers.end(),
                                        [&](const Driver& d) { return d->getName() == name; });
        if (found == r.drivers.end())
            return;
        removed = *found;
        r.drivers.erase(found);
    }
    closeIfEnabled(removed);
}

void CvDeviceDriverManager::defineConfiguration(const LightweightString<wchar_t>& name,
                                                std::vector<LightweightString<wchar_t>> driverNames)
{
    Registry& r = registry();
    const std::scoped_lock lock(r.mutex);
    r.configurations[std::wstring(name.view())] = std::move(driverNames);
}

std::vector<LightweightString<wchar_t>> CvDeviceDriverManager::getConfigurationNames()
{
    Registry& r = registry();
    const std::scoped_lock lock(r.mutex);
    std::vector<LightweightString<wchar_t>> names;
    for (const auto& entry : r.configurations)
        names.emplace_back(entry.first);
    return names;
}

void CvDeviceDriverManager::clear()
{
    disableDevices();
    Registry& r = registry();
    const std::scoped_lock lock(r.mutex);
    r.drivers.clear();
    r.configurations.clear();
}

void CvDeviceDriverManager::disableDevices()
{
    for (const Driver& driver : getDrivers(true, 0))
        closeIfEnabled(driver);
}

bool CvDeviceDriverManager::toggleDevices(const LightweightString<char>& configuration, bool probeOnly)
{
    Registry& r = registry();
    std::vector<Driver> members;
    {
        const std::scoped_lock lock(r.mutex);
        const auto found = r.configurations.find(std::wstring(fromUTF8(configuration.view()).view()));
        if (found == r.configurations.end())
            return false;
        for (const LightweightString<wchar_t>& name : found->second)
            for (const Driver& driver : r.drivers)
                if (driver->getName() == name && !r.enabled.contains(driver.get()))
                    members.push_back(driver);
    }
    std::vector<Driver> opened;
    bool ok = true;
    for (const Driver& driver : members) {
        if (!driver->open()) {
            ok = false;
            break;
        }
        opened.push_back(driver);
    }
    if (!ok || probeOnly) {
        for (auto it = opened.rbegin(); it != opened.rend(); ++it)
            (*it)->close();
        return ok;
    }
    const std::scoped_lock lock(r.mutex);
    for (const Driver& driver : opened)
        r.enabled.insert(driver.get());
    return true;
}

bool CvDeviceDriverManager::isEnabled(const CvResourceTypeBase* driver)
{
    Registry& r = registry();
    const std::scoped_lock lock(r.mutex);
    return r.enabled.contains(driver);
}

std::vector<CvDeviceDriverManager::Driver> CvDeviceDriverManager::getDrivers(bool enabledOnly, int resourceType)
{
    Registry& r = registry();
    const std::scoped_lock lock(r.mutex);
    std::vector<Driver> out;
    for (const Driver& driver : r.drivers)
        if ((!enabledOnly || r.enabled.contains(driver.get()))
            && (resourceType == 0 || driver->getResourceType() == resourceType))
            out.push_back(driver);
    return out;
}

CvDeviceDriverManagerIter::CvDeviceDriverManagerIter(bool enabledOnly, int firstIndex, int resourceType)
    : m_drivers(CvDeviceDriverManager::getDrivers(enabledOnly, resourceType))
    , m_index(static_cast<size_t>(std::max(firstIndex, 0)))
{
}
