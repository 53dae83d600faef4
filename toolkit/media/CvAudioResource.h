#pragma once
// CvAudioResource: the audio settings the editor plays sound with. Thread-safe.

#include <mutex>

struct AudioSettings {
    int sampleRate = 48000;
    int channels = 2;
    bool operator==(const AudioSettings&) const = default;
};

class CvAudioResource {
public:
    static CvAudioResource& instance();

    AudioSettings getSettings() const;
    void setSettings(const AudioSettings& settings);

private:
    mutable std::mutex m_mutex;
    AudioSettings m_settings;
};
