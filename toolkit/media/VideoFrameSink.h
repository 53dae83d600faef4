#pragma once
// Frames of pictures, and where a video output shows them. The platform layer provides a sink that shows
// frames in a window (through setFactory, at load time); the media layer never touches the window system.

#include "toolkit/support/LightweightString.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

// A picture: rows from the top, each pixel 0xAARRGGBB.
struct VideoFrame {
    uint32_t width = 0;
    uint32_t height = 0;
    std::vector<uint32_t> pixels;

    VideoFrame() = default;
    VideoFrame(uint32_t w, uint32_t h, uint32_t fill = 0xFF000000u)
        : width(w), height(h), pixels(static_cast<size_t>(w) * h, fill)
    {
    }
    uint32_t at(uint32_t x, uint32_t y) const { return pixels[static_cast<size_t>(y) * width + x]; }
    // The picture stretched to another size, each pixel taken from the nearest source pixel.
    VideoFrame scaledTo(uint32_t w, uint32_t h) const;
};

class VideoFrameSink {
public:
    using Factory = std::function<std::unique_ptr<VideoFrameSink>()>;

    virtual ~VideoFrameSink() = default;
    // A window of the frame size; false when there is no window system to show it on.
    virtual bool open(uint32_t width, uint32_t height, const LightweightString<wchar_t>& title) = 0;
    // Shows a frame of the size opened.
    virtual void show(const VideoFrame& frame) = 0;
    virtual void close() = 0;

    static void setFactory(Factory factory);
    // Null when no platform offers one.
    static std::unique_ptr<VideoFrameSink> create();
};
