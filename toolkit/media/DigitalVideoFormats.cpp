#include "toolkit/media/DigitalVideoFormats.h"

#include "toolkit/support/CriticalSection.h"
#include "toolkit/support/params/ChoiceParam.h"
#include "toolkit/support/params/NumericParams.h"
#include "toolkit/support/params/TextParam.h"

#include <algorithm>

namespace Cv::DigitalVideoFormats {
namespace {

using namespace FormatGroups;
using Lines = std::vector<LightweightString<char>>;
constexpr Cv::Image::PictureRatio fourByThree { 4, 3 };
constexpr Cv::Image::PictureRatio sixteenByNine { 16, 9 };

std::vector<DigitalVideoFormatInfo> builtInFormats()
{
    return {
        { UIDs::PAL, SD625, 720, 576, 1, "PAL", { "ITU-R BT.601, 625 lines, 4:3", "DV, DVCAM, IMX, Digital Betacam" }, fourByThree },
        { UIDs::PAL16x9, SD625, 720, 576, 1, "PAL 16:9", { "ITU-R BT.601, 625 lines, 16:9 anamorphic" }, sixteenByNine },
        { 3, SD625, 768, 576, 1, "PAL square pixels", { "625 lines resampled to square pixels, 4:3" }, fourByThree },
        { 4, SD625, 1024, 576, 1, "PAL widescreen square pixels", { "625 lines resampled to square pixels, 16:9" }, sixteenByNine },
        { 5, SD625, 720, 608, 1, "PAL with VBI", { "IMX 625 with 32 lines of vertical interval" }, fourByThree },
        { UIDs::NTSC_D1, SD525, 720, 486, 1, "NTSC D1", { "SMPTE 259M, 525 lines, 4:3", "D1, Digital Betacam" }, fourByThree },
        { UIDs::NTSC_DV, SD525, 720, 480, 1, "NTSC DV", { "525 lines as DV stores them, 4:3", "DV, DVCAM, DVD" }, fourByThree },
        { UIDs::NTSC_DV16x9, SD525, 720, 480, 1, "NTSC DV 16:9", { "525 lines as DV stores them, 16:9 anamorphic" }, sixteenByNine },
        { 14, SD525, 640, 480, 1, "NTSC square pixels", { "525 lines resampled to square pixels, 4:3" }, fourByThree },
        { 15, SD525, 720, 512, 1, "NTSC with VBI", { "IMX 525 with 26 lines of vertical interval" }, fourByThree },
        { 16, SD525, 720, 486, 1, "NTSC D1 16:9", { "SMPTE 259M, 525 lines, 16:9 anamorphic" }, sixteenByNine },
        { UIDs::HD720, HD, 1280, 720, 1, "HD 720", { "SMPTE 296M, ITU-R BT.709" }, sixteenByNine },
        { UIDs::HD1080, HD, 1920, 1080, 1, "HD 1080", { "SMPTE 274M, ITU-R BT.709" }, sixteenByNine },
        { UIDs::HDV1080, HD, 1440, 1080, 1, "HDV 1080", { "HDV and XDCAM HD, pixels 4:3 wide, shown 16:9" }, sixteenByNine },
        { UIDs::DVCProHD1080_60, HD, 1280, 1080, 1, "DVCPRO HD 1080 (59.94 Hz)", { "DVCPRO HD 1080i at 59.94 fields, pixels 3:2 wide" }, sixteenByNine },
        { UIDs::DVCProHD720, HD, 960, 720, 1, "DVCPRO HD 720", { "DVCPRO HD 720p, pixels 4:3 wide" }, sixteenByNine },
        { UIDs::DVCProHD1080_50, HD, 1440, 1080, 1, "DVCPRO HD 1080 (50 Hz)", { "DVCPRO HD 1080i at 50 fields, pixels 4:3 wide" }, sixteenByNine },
        { UIDs::UHD1, UHD, 3840, 2160, 1, "UHD-1", { "ITU-R BT.2020 and BT.2100, 2160 lines" }, sixteenByNine },
        { UIDs::UHD2, UHD, 7680, 4320, 1, "UHD-2 (8K)", { "ITU-R BT.2020 and BT.2100, 4320 lines" }, sixteenByNine },
        { UIDs::DCI2K, Cinema, 2048, 1080, 1, "DCI 2K", { "DCI 2K full container" }, { 256, 135 } },
        { UIDs::DCI2KFlat, Cinema, 1998, 1080, 1, "DCI 2K flat", { "DCI 2K, 1.85:1" }, { 1998, 1080 } },
        { UIDs::DCI2KScope, Cinema, 2048, 858, 1, "DCI 2K scope", { "DCI 2K, 2.39:1" }, { 2048, 858 } },
        { UIDs::DCI4K, Cinema, 4096, 2160, 1, "DCI 4K", { "DCI 4K full container" }, { 256, 135 } },
        { UIDs::DCI4KFlat, Cinema, 3996, 2160, 1, "DCI 4K flat", { "DCI 4K, 1.85:1" }, { 3996, 2160 } },
        { UIDs::DCI4KScope, Cinema, 4096, 1716, 1, "DCI 4K scope", { "DCI 4K, 2.39:1" }, { 4096, 1716 } },
        { UIDs::FullAperture2K, Cinema, 2048, 1556, 1, "2K full aperture", { "35 mm full aperture film scan" }, { 2048, 1556 } },
        { UIDs::FullAperture4K, Cinema, 4096, 3112, 1, "4K full aperture", { "35 mm full aperture film scan" }, { 4096, 3112 } },
        { UIDs::Square1080, Other, 1080, 1080, 1, "Square 1080", { "Square picture for social media" }, { 1, 1 } },
        { UIDs::Vertical1080, Other, 1080, 1920, 1, "Vertical 1080", { "Upright HD picture for phones" }, { 9, 16 } },
        { 63, Other, 640, 360, 1, "Web 360", { "Small 16:9 picture for the web" }, sixteenByNine },
        { UIDs::AudioOnly, Other, 0, 0, 1, "Audio only", { "No picture" }, {} },
        { 71, Proxy, 1920, 1080, 2, "HD 1080 half", { "Half-size proxy of HD 1080" }, sixteenByNine },
        { 72, Proxy, 1920, 1080, 4, "HD 1080 quarter", { "Quarter-size proxy of HD 1080" }, sixteenByNine },
        { 73, Proxy, 3840, 2160, 2, "UHD-1 half", { "Half-size proxy of UHD-1" }, sixteenByNine },
        { 74, Proxy, 3840, 2160, 4, "UHD-1 quarter", { "Quarter-size proxy of UHD-1" }, sixteenByNine },
    };
}

struct Catalogue {
    CriticalSection lock;
    std::vector<DigitalVideoFormatInfo> formats = builtInFormats();
    uint32_t nextCustomUID = firstCustomUID;
};

Catalogue& catalogue()
{
    static Catalogue instance;
    return instance;
}

enum CustomAspect : uint32_t { SquarePixels = 0, Aspect4x3 = 1, Aspect16x9 = 2 };

} // namespace

DigitalVideoFormatInfo::DigitalVideoFormatInfo(uint32_t uid, FormatGroups::FormatGroup group, uint32_t width,
    uint32_t height, uint32_t divisor, LightweightString<char> name, std::vector<LightweightString<char>> description,
    Cv::Image::PictureRatio pictureAspect)
    : m_uid(uid)
    , m_group(group)
    , m_width(width)
    , m_height(height)
    , m_divisor(divisor)
    , m_name(std::move(name))
    , m_description(std::move(description))
    , m_aspect(pictureAspect)
{
}

LightweightVector<Cv::Ptr<GenericParam::iParam>> DigitalVideoFormatInfo::getParams()
{
    using namespace GenericParam;
    return LightweightVector<Cv::Ptr<iParam>>(std::vector<Cv::Ptr<iParam>> {
        Cv::Ptr<iParam>(new TextParam(L"Name", "name", ResId(), L"Custom")),
        Cv::Ptr<iParam>(new IntParam(L"Width", "width", ResId(), 1920, 16, 16384, true)),
        Cv::Ptr<iParam>(new IntParam(L"Height", "height", ResId(), 1080, 16, 8640, true)),
        Cv::Ptr<iParam>(new ChoiceParam(L"Picture shape", "aspect", ResId(), SquarePixels,
            { { L"Square pixels", SquarePixels }, { L"4:3", Aspect4x3 }, { L"16:9", Aspect16x9 } })),
    });
}

uint32_t DigitalVideoFormatInfo::setParams(const configb& values)
{
    // The parameters read the saved text themselves, so ranges and unreadable text follow their rules.
    const auto params = getParams();
    for (const auto& param : params) {
        LightweightString<char> text;
        if (values.in(param->getName().view(), text) == 0)
            param->setValueFromString(fromUTF8(text.view()));
    }
    // getParams makes them in this order: name, width, height, aspect.
    const uint32_t width = static_cast<uint32_t>(static_cast<const GenericParam::IntParam&>(*params[1]).getValue());
    const uint32_t height = static_cast<uint32_t>(static_cast<const GenericParam::IntParam&>(*params[2]).getValue());
    const uint32_t shape = static_cast<const GenericParam::ChoiceParam&>(*params[3]).getValue();
    LightweightString<char> name = toUTF8(params[0]->getValueAsString().view());
    if (name.empty())
        name = "Custom";
    const Cv::Image::PictureRatio aspect = shape == Aspect4x3 ? fourByThree
        : shape == Aspect16x9                                 ? sixteenByNine
                                                              : Cv::Image::PictureRatio { width, height };
    const std::vector<LightweightString<char>> description { "Defined by the user" };

    Catalogue& c = catalogue();
    CriticalSection::Lock hold(c.lock);
    for (const DigitalVideoFormatInfo& known : c.formats)
        if (known.getUID() >= firstCustomUID && known.getWidth() == width && known.getHeight() == height
            && known.getName() == name && known.getPictureAspect() == aspect)
            return known.getUID();
    const uint32_t uid = c.nextCustomUID++;
    c.formats.emplace_back(uid, Other, width, height, 1, name, description, aspect);
    return uid;
}

VectorExt<DigitalVideoFormatInfo> getAllKnownFormats()
{
    Catalogue& c = catalogue();
    CriticalSection::Lock hold(c.lock);
    VectorExt<DigitalVideoFormatInfo> all;
    for (const DigitalVideoFormatInfo& info : c.formats)
        all.push_back(info);
    return all;
}

DigitalVideoFormatInfo findByUID(uint32_t uid)
{
    Catalogue& c = catalogue();
    CriticalSection::Lock hold(c.lock);
    auto found = std::find_if(c.formats.begin(), c.formats.end(), [uid](const auto& f) { return f.getUID() == uid; });
    return uid != 0 && found != c.formats.end() ? *found : DigitalVideoFormatInfo();
}

struct ScopedCatalogue::Saved {
    std::vector<DigitalVideoFormatInfo> formats;
    uint32_t nextCustomUID = firstCustomUID;
};

ScopedCatalogue::ScopedCatalogue(std::vector<DigitalVideoFormatInfo> formats)
    : m_saved(std::make_unique<Saved>())
{
    Catalogue& c = catalogue();
    CriticalSection::Lock hold(c.lock);
    m_saved->formats = std::exchange(c.formats, std::move(formats));
    m_saved->nextCustomUID = c.nextCustomUID;
}

ScopedCatalogue::~ScopedCatalogue()
{
    Catalogue& c = catalogue();
    CriticalSection::Lock hold(c.lock);
    c.formats = std::move(m_saved->formats);
    c.nextCustomUID = m_saved->nextCustomUID;
}

} // namespace Cv::DigitalVideoFormats

namespace Cv {

LightweightString<wchar_t> getDisplayString(DigitalVideoFormats::FormatGroups::FormatGroup group)
{
    using namespace DigitalVideoFormats::FormatGroups;
    switch (group) {
    case SD625: return L"SD 625 (PAL)";
    case SD525: return L"SD 525 (NTSC)";
    case HD: return L"HD";
    case UHD: return L"UHD";
    case Cinema: return L"Cinema";
    case Other: return L"Other";
    case Proxy: return L"Proxy";
    case None: break;
    }
    return {};
}

} // namespace Cv
