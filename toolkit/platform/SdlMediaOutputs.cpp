#include "toolkit/platform/SdlMediaOutputs.h"

#include "toolkit/media/AudioOutput.h"
#include "toolkit/media/VideoFrameSink.h"

#include <SDL.h>

#include <algorithm>
#include <mutex>

namespace {

std::mutex& audioInitMutex()
{
    static std::mutex mutex;
    return mutex;
}

// From now on SDL opens the silent driver, whatever the environment asks for: it asked for a device that is
// not there.
void useSilentDriver()
{
    SDL_SetHintWithPriority(SDL_HINT_AUDIODRIVER, "dummy", SDL_HINT_OVERRIDE);
}

// Initialises SDL's audio, falling back to the silent driver; answers false when even that fails.
bool initAudio(std::string& error)
{
    const std::scoped_lock lock(audioInitMutex());
    SDL_SetHint(SDL_HINT_NO_SIGNAL_HANDLERS, "1");
    if (SDL_InitSubSystem(SDL_INIT_AUDIO) == 0)
        return true;
    error = SDL_GetError();
    useSilentDriver();
    return SDL_InitSubSystem(SDL_INIT_AUDIO) == 0;
}

class SdlAudioOutput : public AudioOutput {
public:
    ~SdlAudioOutput() override { close(); }

    bool open(int sampleRate, int channels, Fill fill) override
    {
        close();
        if (!initAudio(m_error))
            return false;
        m_fill = std::move(fill);
        SDL_AudioSpec wanted {};
        wanted.freq = sampleRate;
        wanted.format = AUDIO_F32SYS;
        wanted.channels = static_cast<Uint8>(std::clamp(channels, 1, 8));
        wanted.samples = 1024;
        wanted.callback = &SdlAudioOutput::callback;
        wanted.userdata = this;
        SDL_AudioSpec got {};
        m_device = SDL_OpenAudioDevice(nullptr, 0, &wanted, &got, 0);
        if (m_device == 0 && SDL_strcmp(SDL_GetCurrentAudioDriver() ? SDL_GetCurrentAudioDriver() : "", "dummy") != 0) {
            // A driver that initialised but has no device to open: the silent one will do.
            m_error = SDL_GetError();
            SDL_QuitSubSystem(SDL_INIT_AUDIO);
            useSilentDriver();
            if (SDL_InitSubSystem(SDL_INIT_AUDIO) != 0)
                return false;
            m_device = SDL_OpenAudioDevice(nullptr, 0, &wanted, &got, 0);
        }
        if (m_device == 0) {
            m_error = SDL_GetError();
            SDL_QuitSubSystem(SDL_INIT_AUDIO);
            return false;
        }
        m_rate = got.freq;
        m_channels = got.channels;
        m_driver = SDL_GetCurrentAudioDriver() ? SDL_GetCurrentAudioDriver() : "";
        SDL_PauseAudioDevice(m_device, 0);
        return true;
    }

    void close() override
    {
        if (m_device == 0)
            return;
        // Returns once the callback has finished its last buffer.
        SDL_CloseAudioDevice(m_device);
        m_device = 0;
        SDL_QuitSubSystem(SDL_INIT_AUDIO);
    }

    bool isOpen() const override { return m_device != 0; }
    std::string driverName() const override { return isOpen() ? m_driver : std::string(); }
    int sampleRate() const override { return isOpen() ? m_rate : 0; }
    int channels() const override { return isOpen() ? m_channels : 0; }
    std::string lastError() const override { return m_error; }

private:
    static void SDLCALL callback(void* self, Uint8* stream, int bytes)
    {
        auto* output = static_cast<SdlAudioOutput*>(self);
        const int frames = bytes / static_cast<int>(sizeof(float)) / std::max(output->m_channels, 1);
        output->m_fill(reinterpret_cast<float*>(stream), frames);
    }

    Fill m_fill;
    SDL_AudioDeviceID m_device = 0;
    int m_rate = 0;
    int m_channels = 0;
    std::string m_driver;
    std::string m_error;
};

class SdlPreviewWindow : public VideoFrameSink {
public:
    ~SdlPreviewWindow() override { close(); }

    bool open(uint32_t width, uint32_t height, const LightweightString<wchar_t>& title) override
    {
        close();
        if (width == 0 || height == 0 || SDL_InitSubSystem(SDL_INIT_VIDEO) != 0)
            return false;
        m_videoInit = true;
        // Without a display the window's pixels stay in software: no graphics driver is loaded for them.
        const char* driver = SDL_GetCurrentVideoDriver();
        if (driver && (SDL_strcmp(driver, "offscreen") == 0 || SDL_strcmp(driver, "dummy") == 0))
            SDL_SetHint(SDL_HINT_FRAMEBUFFER_ACCELERATION, "0");
        // A big raster is shown at half size or less, so that the preview fits on an ordinary desktop.
        int shownW = static_cast<int>(width), shownH = static_cast<int>(height);
        while (shownW > 960) {
            shownW /= 2;
            shownH /= 2;
        }
        m_window = SDL_CreateWindow(toUTF8(title.view()).c_str(), SDL_WINDOWPOS_UNDEFINED, SDL_WINDOWPOS_UNDEFINED,
                                    std::max(shownW, 1), std::max(shownH, 1), SDL_WINDOW_SHOWN);
        if (m_window)
            m_renderer = SDL_CreateRenderer(m_window, -1, SDL_RENDERER_SOFTWARE);
        if (m_renderer)
            m_texture = SDL_CreateTexture(m_renderer, SDL_PIXELFORMAT_ARGB8888, SDL_TEXTUREACCESS_STREAMING,
                                          static_cast<int>(width), static_cast<int>(height));
        if (!m_texture) {
            close();
            return false;
        }
        m_width = width;
        m_height = height;
        return true;
    }

    void show(const VideoFrame& frame) override
    {
        if (!m_texture || frame.width != m_width || frame.height != m_height)
            return;
        SDL_UpdateTexture(m_texture, nullptr, frame.pixels.data(), static_cast<int>(frame.width * sizeof(uint32_t)));
        SDL_RenderClear(m_renderer);
        SDL_RenderCopy(m_renderer, m_texture, nullptr, nullptr);
        SDL_RenderPresent(m_renderer);
    }

    void close() override
    {
        if (m_texture)
            SDL_DestroyTexture(m_texture);
        if (m_renderer)
            SDL_DestroyRenderer(m_renderer);
        if (m_window)
            SDL_DestroyWindow(m_window);
        m_texture = nullptr;
        m_renderer = nullptr;
        m_window = nullptr;
        if (m_videoInit)
            SDL_QuitSubSystem(SDL_INIT_VIDEO);
        m_videoInit = false;
    }

private:
    SDL_Window* m_window = nullptr;
    SDL_Renderer* m_renderer = nullptr;
    SDL_Texture* m_texture = nullptr;
    uint32_t m_width = 0;
    uint32_t m_height = 0;
    bool m_videoInit = false;
};

const bool registered = [] {
    AudioOutput::setFactory([] { return std::make_unique<SdlAudioOutput>(); });
    VideoFrameSink::setFactory([] { return std::make_unique<SdlPreviewWindow>(); });
    return true;
}();

} // namespace

std::string SdlMediaOutputs::currentAudioDriver()
{
    const char* driver = SDL_GetCurrentAudioDriver();
    return driver ? driver : "";
}
