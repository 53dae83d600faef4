#pragma once
// A compression: an image format code and a bit rate. Image format codes are four ASCII characters read as a
// little-endian 32-bit value ("M701" is 0x3130374D); noFormat (all bits set) stands for no format.

#include <cstdint>

namespace Cv::Image {
using Format = uint32_t;
constexpr Format noFormat = 0xFFFFFFFFu;
// The code of four characters, the first in the lowest byte.
constexpr Format fourCC(const char (&code)[5])
{
    return static_cast<uint32_t>(static_cast<unsigned char>(code[0]))
        | static_cast<uint32_t>(static_cast<unsigned char>(code[1])) << 8
        | static_cast<uint32_t>(static_cast<unsigned char>(code[2])) << 16
        | static_cast<uint32_t>(static_cast<unsigned char>(code[3])) << 24;
}
} // namespace Cv::Image

class CompressionFormat {
public:
    CompressionFormat() = default;
    // Bit rate in megabits a second; 0.0 means the format's own default.
    CompressionFormat(Cv::Image::Format format, double bitRate)
        : m_format(format)
        , m_bitRate(bitRate)
    {
    }

    Cv::Image::Format getFormat() const { return m_format; }
    double getBitRate() const { return m_bitRate; }
    void setBitRate(double megabitsPerSecond) { m_bitRate = megabitsPerSecond; }

    friend bool operator==(const CompressionFormat&, const CompressionFormat&) = default;

private:
    Cv::Image::Format m_format = Cv::Image::noFormat;
    double m_bitRate = 0.0;
};
