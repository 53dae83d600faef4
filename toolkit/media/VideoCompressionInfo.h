#pragma once
// A source joined with the compression it is written in, and how that pair is written for a person.

#include "toolkit/media/CompressionFormat.h"
#include "toolkit/media/ShotVideoMetadata.h"
#include "toolkit/support/LightweightString.h"

#include <cstdint>

class VideoCompressionInfo {
public:
    // Display flags, to be or-ed.
    static constexpr uint64_t showRaster = 1; // " (1920x1080)" when the source's raster is known
    static constexpr uint64_t showBitRate = 2; // ", 250 Mb/s" when the bit rate is set

    VideoCompressionInfo() = default;
    VideoCompressionInfo(const ShotVideoMetadata& source, const CompressionFormat& compression)
        : m_source(source)
        , m_compression(compression)
    {
    }

    const ShotVideoMetadata& getInputImageFormat() const { return m_source; }
    void setInputImageFormat(const ShotVideoMetadata& source) { m_source = source; }
    const CompressionFormat& getCompression() const { return m_compression; }
    void setCompression(const CompressionFormat& compression) { m_compression = compression; }
    double getBitRate() const { return m_compression.getBitRate(); }
    void setBitRate(double megabitsPerSecond) { m_compression.setBitRate(megabitsPerSecond); }

    // The compression's name ("MPEG-2 D-10 I-frame 4:2:2"), then what the flags ask for. An unknown code is
    // written as its four characters in quotes; no format as "None".
    LightweightString<wchar_t> getDisplayString(uint64_t flags) const;

    friend bool operator==(const VideoCompressionInfo&, const VideoCompressionInfo&) = default;

private:
    ShotVideoMetadata m_source;
    CompressionFormat m_compression;
};
