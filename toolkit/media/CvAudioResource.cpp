#include "toolkit/media/CvAudioResource.h"

CvAudioResource& CvAudioResource::instance()
{
    static CvAudioResource resource;
    return resource;
}

AudioSettings CvAudioResource::getSettings() const
{
    const std::scoped_lock lock(m_mutex);
    return m_settings;
}

void CvAudioResource::setSettings(const AudioSettings& settings)
{
    const std::scoped_lock lock(m_mutex);
    m_settings = settings;
}
