#pragma once
// What a source's video is: its raster (a digital video format UID), frame rate, scan and picture shape.
// Capture and import set-ups offer sets of these; two values are the same source format exactly when all
// four agree.

#include "toolkit/media/PictureRatio.h"
#include "toolkit/media/FrameRate.h"

#include <compare>
#include <cstdint>

class ShotVideoMetadata {
public:
    ShotVideoMetadata() = default;
    ShotVideoMetadata(uint32_t digitalVideoFormatUID, Cv::FrameRate rate, bool progressive, Cv::Image::PictureRatio aspect)
        : m_uid(digitalVideoFormatUID)
        , m_rate(rate)
        , m_progressive(progressive)
        , m_aspect(aspect)
    {
    }

    uint32_t getDigitalVideoFormatUID() const { return m_uid; }
    Cv::FrameRate getFrameRate() const { return m_rate; }
    bool isProgressive() const { return m_progressive; }
    Cv::Image::PictureRatio getAspectRatio() const { return m_aspect; }
    // The raster's displayed width and height in pixels; 0 for a raster the catalogue does not know.
    uint32_t getWidth() const;
    uint32_t getHeight() const;

    // Ordered by raster, then rate, scan and shape, so that sets of them list a raster's rates together.
    friend auto operator<=>(const ShotVideoMetadata&, const ShotVideoMetadata&) = default;

private:
    uint32_t m_uid = 0;
    Cv::FrameRate m_rate = Cv::FrameRate::Unknown;
    bool m_progressive = true;
    Cv::Image::PictureRatio m_aspect;
};

namespace Cv::Image::Video::Interface {
inline bool isProgressive(const ShotVideoMetadata& m) { return m.isProgressive(); }
} // namespace Cv::Image::Video::Interface
