#include "toolkit/media/VideoFrameSink.h"

#include "toolkit/media/detail/PluggedFactory.h"

namespace {

PluggedFactory<VideoFrameSink>& plugged()
{
    static PluggedFactory<VideoFrameSink> factory;
    return factory;
}

} // namespace

VideoFrame VideoFrame::scaledTo(uint32_t w, uint32_t h) const
{
    VideoFrame out(w, h);
    if (width == 0 || height == 0)
        return out;
    for (uint32_t y = 0; y < h; ++y) {
        const uint32_t sy = static_cast<uint32_t>((uint64_t(y) * height) / h);
        for (uint32_t x = 0; x < w; ++x)
            out.pixels[size_t(y) * w + x] = at(static_cast<uint32_t>((uint64_t(x) * width) / w), sy);
    }
    return out;
}

void VideoFrameSink::setFactory(Factory factory)
{
    plugged().set(std::move(factory));
}

std::unique_ptr<VideoFrameSink> VideoFrameSink::create()
{
    return plugged().create();
}
