#pragma once
// The catalogue of digital video rasters: every picture size the editor reads, writes or shows, grouped by
// family (625-line, 525-line, HD, UHD, cinema, other, proxy), each with a UID that never changes once given.
// Custom rasters the user defines at run time join the "Other" group with UIDs from firstCustomUID upward.
//
// Sizes are stored multiplied by a divisor: the displayed width is width / divisor (integer division). Most
// rasters have divisor 1; proxy rasters keep the full raster's numbers with divisor 2 or 4, so a proxy names
// the picture it stands for.

#include "toolkit/media/PictureRatio.h"
#include "toolkit/support/Configb.h"
#include "toolkit/support/LightweightString.h"
#include "toolkit/support/Ptr.h"
#include "toolkit/support/Vectors.h"
#include "toolkit/support/params/iParam.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace Cv::DigitalVideoFormats {

namespace FormatGroups {
enum FormatGroup : uint32_t {
    None = 0,
    SD625 = 1, // 625-line, 50 fields (PAL areas)
    SD525 = 2, // 525-line, 59.94 fields (NTSC areas)
    HD = 3,
    UHD = 4,
    Cinema = 5, // digital cinema containers and film scans
    Other = 6, // web, square, vertical, audio-only, custom
    Proxy = 7, // reduced rasters for offline editing; never offered for choice
};
constexpr uint32_t numGroups = 8;
} // namespace FormatGroups

constexpr uint32_t firstCustomUID = 1000;

class DigitalVideoFormatInfo {
public:
    DigitalVideoFormatInfo() = default;
    DigitalVideoFormatInfo(uint32_t uid, FormatGroups::FormatGroup group, uint32_t width, uint32_t height,
        uint32_t divisor, LightweightString<char> name, std::vector<LightweightString<char>> description,
        Cv::Image::PictureRatio pictureAspect);

    uint32_t getUID() const { return m_uid; }
    FormatGroups::FormatGroup getGroup() const { return m_group; }
    uint32_t getWidth() const { return m_width; }
    uint32_t getHeight() const { return m_height; }
    uint32_t getDivisor() const { return m_divisor; }
    // width / divisor and height / divisor; 0 for a divisor of 0.
    uint32_t getDisplayWidth() const { return m_divisor ? m_width / m_divisor : 0; }
    uint32_t getDisplayHeight() const { return m_divisor ? m_height / m_divisor : 0; }
    const LightweightString<char>& getName() const { return m_name; }
    // Lines of explanation (standard, where it is used), for tooltips.
    const std::vector<LightweightString<char>>& getDescription() const { return m_description; }
    Cv::Image::PictureRatio getPictureAspect() const { return m_aspect; }
    bool isValid() const { return m_uid != 0; }

    // The parameters a user fills in to define a custom raster: "name", "width", "height", "aspect".
    static LightweightVector<Cv::Ptr<GenericParam::iParam>> getParams();
    // Registers the custom raster the saved parameters describe (values out of range are brought into it,
    // unreadable ones take their defaults) and answers its UID; an identical custom raster keeps its UID.
    static uint32_t setParams(const configb& values);

    friend bool operator==(const DigitalVideoFormatInfo&, const DigitalVideoFormatInfo&) = default;

private:
    uint32_t m_uid = 0;
    FormatGroups::FormatGroup m_group = FormatGroups::None;
    uint32_t m_width = 0;
    uint32_t m_height = 0;
    uint32_t m_divisor = 1;
    LightweightString<char> m_name;
    std::vector<LightweightString<char>> m_description;
    Cv::Image::PictureRatio m_aspect;
};

// The built-in rasters in catalogue order, then the custom ones in the order they were registered.
VectorExt<DigitalVideoFormatInfo> getAllKnownFormats();
// An invalid (UID 0) info when no raster has that UID.
DigitalVideoFormatInfo findByUID(uint32_t uid);

// Replaces the whole catalogue while it lives (tests that need a particular table); custom rasters
// registered meanwhile are dropped with it.
class ScopedCatalogue {
public:
    explicit ScopedCatalogue(std::vector<DigitalVideoFormatInfo> formats);
    ~ScopedCatalogue();
    ScopedCatalogue(const ScopedCatalogue&) = delete;
    ScopedCatalogue& operator=(const ScopedCatalogue&) = delete;

private:
    struct Saved;
    std::unique_ptr<Saved> m_saved;
};

// Well-known UIDs that other catalogues refer to.
namespace UIDs {
constexpr uint32_t PAL = 1;
constexpr uint32_t PAL16x9 = 2;
constexpr uint32_t NTSC_D1 = 11;
constexpr uint32_t NTSC_DV = 12;
constexpr uint32_t NTSC_DV16x9 = 13;
constexpr uint32_t HD720 = 21;
constexpr uint32_t HD1080 = 22;
constexpr uint32_t HDV1080 = 29;
constexpr uint32_t DVCProHD1080_60 = 30;
constexpr uint32_t DVCProHD720 = 37;
constexpr uint32_t DVCProHD1080_50 = 38;
constexpr uint32_t UHD1 = 41;
constexpr uint32_t UHD2 = 42;
constexpr uint32_t DCI2K = 51;
constexpr uint32_t DCI2KFlat = 52;
constexpr uint32_t DCI2KScope = 53;
constexpr uint32_t DCI4K = 54;
constexpr uint32_t DCI4KFlat = 55;
constexpr uint32_t DCI4KScope = 56;
constexpr uint32_t FullAperture2K = 57;
constexpr uint32_t FullAperture4K = 58;
constexpr uint32_t Square1080 = 61;
constexpr uint32_t Vertical1080 = 62;
constexpr uint32_t AudioOnly = 64;
} // namespace UIDs

} // namespace Cv::DigitalVideoFormats

namespace Cv {
// "SD 625 (PAL)", "HD", ...; empty for None or a value outside the groups.
LightweightString<wchar_t> getDisplayString(DigitalVideoFormats::FormatGroups::FormatGroup group);
} // namespace Cv
