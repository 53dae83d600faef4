#pragma once
// AudioOutput: a sound device as the media layer sees it. The platform layer provides the real one (through
// setFactory, at load time); the media layer never touches the sound system itself.
//
// open() starts a stream of 32-bit float samples, interleaved by channel; the fill function is called on the
// device's own thread whenever it needs more and must write exactly frames * channels samples.

#include <functional>
#include <memory>
#include <string>

class AudioOutput {
public:
    using Fill = std::function<void(float* interleaved, int frames)>;
    using Factory = std::function<std::unique_ptr<AudioOutput>()>;

    virtual ~AudioOutput() = default;

    // Answers false (with the reason in lastError()) when no device, not even a silent stand-in, would open.
    virtual bool open(int sampleRate, int channels, Fill fill) = 0;
    virtual void close() = 0;
    virtual bool isOpen() const = 0;
    // What opened: the sound system's driver ("pulseaudio", "alsa", or "dummy" where there is no device).
    virtual std::string driverName() const = 0;
    // The rate and channel count the device accepted.
    virtual int sampleRate() const = 0;
    virtual int channels() const = 0;
    virtual std::string lastError() const = 0;

    // The platform's maker of outputs; null when there is none (nothing is then ever opened).
    static void setFactory(Factory factory);
    static std::unique_ptr<AudioOutput> create();
};
