// The software mixer: the sum of its sources, limited to the sample range, and the sound output it opens.
#include "toolkit/media/SoftwareAudioMixer.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <thread>
#include <vector>

namespace {

SoftwareAudioMixer::Source constant(float value)
{
    return [value](float* out, int frames, int channels) { std::fill_n(out, frames * channels, value); };
}

TEST(SoftwareAudioMixer, MixIsTheSumOfTheSources)
{
    SoftwareAudioMixer mixer;
    mixer.addSource(constant(0.25f));
    const uint64_t second = mixer.addSource(constant(0.5f));
    std::vector<float> buffer(8, 9.0f);
    mixer.mix(buffer.data(), 4, 2);
    EXPECT_EQ(buffer, std::vector<float>(8, 0.75f));
    mixer.removeSource(second);
    mixer.mix(buffer.data(), 4, 2);
    EXPECT_EQ(buffer, std::vector<float>(8, 0.25f));
}

TEST(SoftwareAudioMixer, LoudSourcesClipInsteadOfWrapping)
{
    SoftwareAudioMixer mixer;
    mixer.addSource(constant(0.75f));
    mixer.addSource(constant(0.75f));
    std::vector<float> buffer(2);
    mixer.mix(buffer.data(), 1, 2);
    EXPECT_EQ(buffer, std::vector<float>(2, 1.0f));
}

TEST(SoftwareAudioMixer, InitPlaysOnTheSoundThreadEvenWithoutASoundDevice)
{
    SoftwareAudioMixer mixer;
    ASSERT_TRUE(mixer.init(44100, 2, 32));
    EXPECT_TRUE(mixer.isPlaying());
    EXPECT_FALSE(mixer.getDriverName().empty());
    EXPECT_EQ(mixer.getChannels(), 2);
    EXPECT_GT(mixer.getSampleRate(), 0);
    mixer.close();
    EXPECT_FALSE(mixer.isPlaying());
}

TEST(SoftwareAudioMixer, SourcesChangeWhileTheSoundThreadMixes)
{
    SoftwareAudioMixer mixer;
    ASSERT_TRUE(mixer.init(48000, 2, 32));
    std::atomic<int> calls { 0 };
    for (int i = 0; i < 200; ++i) {
        const uint64_t id = mixer.addSource([&calls](float* out, int frames, int channels) {
            ++calls;
            std::fill_n(out, frames * channels, 0.1f);
        });
        mixer.removeSource(id);
    }
    const uint64_t kept = mixer.addSource([&calls](float*, int, int) { ++calls; });
    // The silent driver asks for a buffer every 20 ms or so; wait for one, but not for ever. A loaded machine
    // running the sanitizers may starve the sound thread for a while, hence the generous limit.
    for (int waited = 0; waited < 2000 && calls.load() == 0; ++waited)
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    mixer.close();
    mixer.removeSource(kept);
    EXPECT_GT(calls.load(), 0);
}

TEST(SoftwareAudioMixer, InitRefusesDepthsOtherThan32Bits)
{
    SoftwareAudioMixer mixer;
    EXPECT_FALSE(mixer.init(48000, 2, 16));
    EXPECT_FALSE(mixer.init(0, 2, 32));
    EXPECT_FALSE(mixer.isPlaying());
}

} // namespace
