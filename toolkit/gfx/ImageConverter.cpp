#include "toolkit/gfx/ImageConverter.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <vector>

namespace {

// The source pixels one destination pixel covers along an axis, with their weights (summing to 1).
struct Span {
    int first = 0;
    std::vector<float> weights;
};

std::vector<Span> makeSpans(int sourceSize, int destinationSize)
{
    std::vector<Span> spans(static_cast<size_t>(destinationSize));
    const double scale = double(sourceSize) / destinationSize;
    for (int d = 0; d < destinationSize; ++d) {
        Span& span = spans[static_cast<size_t>(d)];
        if (scale <= 1.0) {
            // Growing: the nearest pixel.
            span.first = std::min(sourceSize - 1, static_cast<int>((d + 0.5) * scale));
            span.weights = { 1.0f };
            continue;
        }
        const double start = d * scale;
        const double end = std::min(double(sourceSize), (d + 1) * scale);
        span.first = static_cast<int>(start);
        for (int s = span.first; s < end; ++s) {
            const double covered = std::min(end, s + 1.0) - std::max(start, double(s));
            span.weights.push_back(static_cast<float>(covered / scale));
        }
    }
    return spans;
}

} // namespace

namespace ImageConverter {

bool resize(const Pictor::Image& source, Pictor::Image& destination)
{
    if (source.isNull() || destination.isNull())
        return false;
    const int dw = destination.width();
    const int dh = destination.height();
    const std::vector<Span> across = makeSpans(source.width(), dw);
    const std::vector<Span> down = makeSpans(source.height(), dh);

    // Across first, into one row of four float channels per destination column, then down.
    std::vector<float> accumulated(static_cast<size_t>(dw) * 4);
    for (int y = 0; y < dh; ++y) {
        const Span& vertical = down[static_cast<size_t>(y)];
        std::fill(accumulated.begin(), accumulated.end(), 0.0f);
        for (size_t k = 0; k < vertical.weights.size(); ++k) {
            const uint32_t* in = source.row(vertical.first + static_cast<int>(k));
            const float wy = vertical.weights[k];
            for (int x = 0; x < dw; ++x) {
                const Span& horizontal = across[static_cast<size_t>(x)];
                float a = 0, r = 0, g = 0, b = 0;
                for (size_t j = 0; j < horizontal.weights.size(); ++j) {
                    const uint32_t p = in[horizontal.first + static_cast<int>(j)];
                    const float w = horizontal.weights[j];
                    a += w * float(p >> 24);
                    r += w * float((p >> 16) & 0xFF);
                    g += w * float((p >> 8) & 0xFF);
                    b += w * float(p & 0xFF);
                }
                float* acc = &accumulated[static_cast<size_t>(x) * 4];
                acc[0] += wy * a;
                acc[1] += wy * r;
                acc[2] += wy * g;
                acc[3] += wy * b;
            }
        }
        uint32_t* out = destination.row(y);
        for (int x = 0; x < dw; ++x) {
            const float* acc = &accumulated[static_cast<size_t>(x) * 4];
            auto channel = [](float v) { return static_cast<uint32_t>(std::clamp(std::lround(v), 0L, 255L)); };
            const uint32_t a = channel(acc[0]);
            // Premultiplied colour never exceeds its alpha; rounding must not make it.
            out[x] = (a << 24) | (std::min(channel(acc[1]), a) << 16) | (std::min(channel(acc[2]), a) << 8)
                | std::min(channel(acc[3]), a);
        }
    }
    return true;
}

bool resize(const Cv::Image::Surface& source, Cv::Image::Surface& destination)
{
    if (source.empty() || destination.empty())
        return false;
    return resize(source.image(), destination.image());
}

} // namespace ImageConverter
