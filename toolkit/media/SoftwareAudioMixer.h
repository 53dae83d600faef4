#pragma once
// SoftwareAudioMixer: mixes any number of sound sources into one stream and plays it on the sound output.
// It is the driver of resource type 19; switching video hardware re-initialises it with the current audio
// settings.
//
// Samples are 32-bit floats in -1..1, interleaved by channel. Sources are called on the sound device's thread;
// the sum is limited to -1..1, so loud sources clip rather than wrap.

#include "toolkit/media/AudioOutput.h"
#include "toolkit/media/CvResourceTypeBase.h"

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <vector>

class SoftwareAudioMixer : public CvResourceTypeBase {
public:
    // Writes frames * channels samples (the buffer starts silent).
    using Source = std::function<void(float* interleaved, int frames, int channels)>;

    explicit SoftwareAudioMixer(LightweightString<wchar_t> name = L"Software audio mixer");
    ~SoftwareAudioMixer() override;

    // (Re)opens the sound output. Only 32-bit samples are mixed: any other depth, a rate or channel count
    // below 1, or an output that will not open answers false and leaves the mixer silent.
    bool init(int sampleRate, int channels, int bitsPerSample);
    bool isPlaying() const;
    // The sound system's driver in use, empty while nothing plays.
    std::string getDriverName() const;
    int getSampleRate() const;
    int getChannels() const;

    uint64_t addSource(Source source);
    void removeSource(uint64_t id);
    // One buffer of the mix; what the output's thread calls.
    void mix(float* interleaved, int frames, int channels);

    bool open() override;
    void close() override;
    void stop() override;
    void setOutputImageFormat(const OutputFormat::Details& format) override;
    void start(const CvVideoResources& resources) override;

private:
    mutable std::mutex m_outputMutex;
    std::unique_ptr<AudioOutput> m_output;
    std::mutex m_sourceMutex; // taken by the output's thread: never held while the output is closed
    std::map<uint64_t, Source> m_sources;
    std::vector<float> m_scratch;
    uint64_t m_nextSource = 1;
};
