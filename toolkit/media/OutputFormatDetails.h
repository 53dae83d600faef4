#pragma once
// One project output format: what a finished programme is delivered as. It names its raster (the UID of a
// digital video format, for findByUID), its family (the type, 0 to 15, under which menus group it), and the
// properties that decide whether two formats are the same delivery: picture size, frame rate, scan and colour
// encoding. A video output shows frames at exactly this size, rate and scan.

#include "toolkit/media/FrameRate.h"
#include "toolkit/support/LightweightString.h"

#include <cstdint>

namespace OutputFormat {

// Families of output formats, in menu order. The numbering is stable (0 to 15).
enum class Type : uint32_t {
    SD625 = 0, // 625-line standard definition, 4:3
    SD525 = 1, // 525-line standard definition, 4:3
    SD625Widescreen = 2, // 625-line 16:9 anamorphic
    SD525Widescreen = 3, // 525-line 16:9 anamorphic
    HD720p = 4,
    HD1080i = 5,
    HD1080p = 6,
    HD1080PsF = 7, // progressive picture carried as two segments
    UHD2160p = 8,
    UHD2160pHDR = 9,
    UHD4320p = 10, // 8K
    DCI2K = 11,
    DCI4K = 12,
    FilmScan = 13, // full-aperture film scans
    Web = 14, // square and vertical rasters for social media
    AnamorphicHD = 15, // reduced-width HD rasters of tape-based HD formats
};
constexpr uint32_t numTypes = 16;

enum class ScanMode : uint32_t {
    Progressive = 0,
    InterlacedUpperFieldFirst = 1,
    InterlacedLowerFieldFirst = 2,
    ProgressiveSegmentedFrame = 3,
};

enum class ColourEncoding : uint32_t {
    Rec601 = 0,
    Rec709 = 1,
    Rec2020 = 2,
    Rec2100PQ = 3,
    Rec2100HLG = 4,
    DciP3 = 5,
};

// The stored picture size in pixels.
struct ImageSize {
    uint32_t width = 0;
    uint32_t height = 0;
    friend bool operator==(const ImageSize&, const ImageSize&) = default;
};

struct ScanFormat {
    ScanMode mode = ScanMode::Progressive;
    bool isInterlaced() const
    {
        return mode == ScanMode::InterlacedUpperFieldFirst || mode == ScanMode::InterlacedLowerFieldFirst;
    }
    friend bool operator==(const ScanFormat&, const ScanFormat&) = default;
};

class Details {
public:
    Details() = default;
    Details(uint32_t digitalVideoFormatUID, Type type, ImageSize size, Cv::FrameRate frameRate, ScanFormat scan,
        ColourEncoding colour, LightweightString<wchar_t> label, LightweightString<wchar_t> displayString)
        : m_uid(digitalVideoFormatUID)
        , m_type(type)
        , m_size(size)
        , m_frameRate(frameRate)
        , m_scan(scan)
        , m_colour(colour)
        , m_label(std::move(label))
        , m_displayString(std::move(displayString))
    {
    }

    ColourEncoding colourEncoding() const { return m_colour; }
    // The raster: a UID of the digital video format catalogue.
    uint32_t getUID() const { return m_uid; }
    // Frames (not fields) per second: 1080i at 50 fields is Fps25.
    Cv::FrameRate frameRate() const { return m_frameRate; }
    Type type() const { return m_type; }
    const ImageSize& imageSize() const { return m_size; }
    const ScanFormat& scanFormat() const { return m_scan; }
    // Short text for a menu under its type's heading ("1080i 50").
    const LightweightString<wchar_t>& label() const { return m_label; }
    // Self-contained text for a button ("HD 1080i 50 (1920x1080)").
    const LightweightString<wchar_t>& getDisplayString() const { return m_displayString; }

    friend bool operator==(const Details&, const Details&) = default;

private:
    uint32_t m_uid = 0;
    Type m_type = Type::SD625;
    ImageSize m_size;
    Cv::FrameRate m_frameRate = Cv::FrameRate::Unknown;
    ScanFormat m_scan;
    ColourEncoding m_colour = ColourEncoding::Rec709;
    LightweightString<wchar_t> m_label;
    LightweightString<wchar_t> m_displayString;
};

} // namespace OutputFormat
