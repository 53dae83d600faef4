#include "uistate/UIHWDeviceManager.h"

#include "toolkit/media/CurrentProject.h"
#include "toolkit/media/CvAudioResource.h"
#include "toolkit/media/CvDeviceDriverManager.h"
#include "toolkit/media/CvVideoResourceInfo.h"
#include "toolkit/media/SoftwareAudioMixer.h"
#include "toolkit/support/CriticalSection.h"
#include "toolkit/support/Preferences.h"
#include "toolkit/support/Resources.h"

#include <atomic>
#include <mutex>

namespace {

// Mixed sound is 32-bit float throughout.
constexpr int mixerBitsPerSample = 32;

struct RegisteredDevices {
    std::mutex mutex;
    Vector<LightweightString<wchar_t>> names;
};

RegisteredDevices& registered()
{
    static RegisteredDevices devices;
    return devices;
}

Vector<LightweightString<wchar_t>> registeredNames()
{
    RegisteredDevices& devices = registered();
    const std::scoped_lock lock(devices.mutex);
    return devices.names;
}

std::string preferenceKey()
{
    return resourceStr(UIHWDeviceManager::currentHWPrefKeyId).str();
}

} // namespace

void RegisterHWDevices(const Vector<LightweightString<wchar_t>>& names)
{
    RegisteredDevices& devices = registered();
    const std::scoped_lock lock(devices.mutex);
    devices.names = names;
}

UIHWDeviceManager& UIHWDeviceManager::instance()
{
    static std::atomic<UIHWDeviceManager*> made { nullptr };
    static CriticalSection creation;
    UIHWDeviceManager* manager = made.load(std::memory_order_acquire);
    if (!manager) {
        const CriticalSection::Lock lock(creation);
        manager = made.load(std::memory_order_relaxed);
        if (!manager) {
            manager = new UIHWDeviceManager(); // lives until the process ends
            made.store(manager, std::memory_order_release);
        }
    }
    return *manager;
}

Vector<LightweightString<wchar_t>> UIHWDeviceManager::getHWDevicesAvailable()
{
    const Vector<LightweightString<wchar_t>> names = registeredNames();
    if (m_entries.empty())
        for (size_t i = 0; i < names.size(); ++i)
            m_entries.push_back(Entry { names[i], static_cast<int32_t>(i) });
    return names;
}

int UIHWDeviceManager::getCurrentHW() const
{
    int current = static_cast<int>(registeredNames().size()) - 1;
    const LightweightString<wchar_t> stored = prefs().getPreference(preferenceKey(), LightweightString<wchar_t>());
    if (!stored.empty())
        for (const Entry& entry : m_entries)
            if (entry.name == stored)
                current = entry.index;
    return current;
}

bool UIHWDeviceManager::setCurrentHW(const LightweightString<char>& name)
{
    const std::string key = preferenceKey();
    const LightweightString<char> stored = prefs().getPreference(key, LightweightString<char>());
    if (!stored.empty() && !name.empty() && stored == name)
        return true;

    constexpr int video = CvResourceTypeBase::videoOutputType;
    for (CvDeviceDriverManagerIter driver(true, 0, video); driver; ++driver)
        driver->stop();
    CvDeviceDriverManager::disableDevices();
    const bool ok = CvDeviceDriverManager::toggleDevices(name, false);
    const OutputFormat::Details format = Cv::CurrentProject::getOutputImageFormat(0);
    for (CvDeviceDriverManagerIter driver(true, 0, video); driver; ++driver)
        driver->setOutputImageFormat(format);
    if (!ok)
        return false;

    const CvVideoResources resources = CvVideoResourceInfo::getResources(name);
    for (CvDeviceDriverManagerIter driver(true, 0, video); driver; ++driver)
        driver->start(resources);
    const AudioSettings audio = CvAudioResource::instance().getSettings();
    for (CvDeviceDriverManagerIter driver(false, 0, CvResourceTypeBase::audioMixerType); driver; ++driver) {
        if (auto* mixer = dynamic_cast<SoftwareAudioMixer*>(&*driver)) {
            mixer->init(audio.sampleRate, audio.channels, mixerBitsPerSample);
            break;
        }
    }

    prefs().setPreference(key, name.view());
    call(NotifyMsg(), NotifyMsgTypeDictionary::instance().getUIStateChangedType());
    return true;
}
