#include "toolkit/media/SoftwareAudioMixer.h"

#include <algorithm>

SoftwareAudioMixer::SoftwareAudioMixer(LightweightString<wchar_t> name)
    : CvResourceTypeBase(std::move(name), audioMixerType)
{
}

SoftwareAudioMixer::~SoftwareAudioMixer()
{
    close();
}

bool SoftwareAudioMixer::init(int sampleRate, int channels, int bitsPerSample)
{
    close();
    if (bitsPerSample != 32 || sampleRate < 1 || channels < 1)
        return false;
    std::unique_ptr<AudioOutput> output = AudioOutput::create();
    if (!output)
        return false;
    const int wanted = channels;
    if (!output->open(sampleRate, channels,
                      [this, wanted](float* interleaved, int frames) { mix(interleaved, frames, wanted); }))
        return false;
    const std::scoped_lock lock(m_outputMutex);
    m_output = std::move(output);
    return true;
}

bool SoftwareAudioMixer::isPlaying() const
{
    const std::scoped_lock lock(m_outputMutex);
    return m_output && m_output->isOpen();
}

std::string SoftwareAudioMixer::getDriverName() const
{
    const std::scoped_lock lock(m_outputMutex);
    return m_output ? m_output->driverName() : std::string();
}

int SoftwareAudioMixer::getSampleRate() const
{
    const std::scoped_lock lock(m_outputMutex);
    return m_output ? m_output->sampleRate() : 0;
}

int SoftwareAudioMixer::getChannels() const
{
    const std::scoped_lock lock(m_outputMutex);
    return m_output ? m_output->channels() : 0;
}

uint64_t SoftwareAudioMixer::addSource(Source source)
{
    const std::scoped_lock lock(m_sourceMutex);
    const uint64_t id = m_nextSource++;
    m_sources.emplace(id, std::move(source));
    return id;
}

void SoftwareAudioMixer::removeSource(uint64_t id)
{
    const std::scoped_lock lock(m_sourceMutex);
    m_sources.erase(id);
}

void SoftwareAudioMixer::mix(float* interleaved, int frames, int channels)
{
    const size_t count = static_cast<size_t>(std::max(frames, 0)) * static_cast<size_t>(std::max(channels, 0));
    std::fill_n(interleaved, count, 0.0f);
    const std::scoped_lock lock(m_sourceMutex);
    for (auto& [id, source] : m_sources) {
        m_scratch.assign(count, 0.0f);
        source(m_scratch.data(), frames, channels);
        for (size_t i = 0; i < count; ++i)
            interleaved[i] += m_scratch[i];
    }
    for (size_t i = 0; i < count; ++i)
        interleaved[i] = std::clamp(interleaved[i], -1.0f, 1.0f);
}

bool SoftwareAudioMixer::open()
{
    return true;
}

void SoftwareAudioMixer::close()
{
    std::unique_ptr<AudioOutput> output;
    {
        const std::scoped_lock lock(m_outputMutex);
        output = std::move(m_output);
    }
    // Closing waits for the output's thread to leave mix(), so no lock of ours is held here.
    if (output)
        output->close();
}

// The mixer plays whatever its sources give, with or without pictures: the video operations leave it alone.
void SoftwareAudioMixer::stop() {}

void SoftwareAudioMixer::setOutputImageFormat(const OutputFormat::Details&) {}

void SoftwareAudioMixer::start(const CvVideoResources&) {}
