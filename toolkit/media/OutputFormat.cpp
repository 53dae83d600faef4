#include "toolkit/media/OutputFormat.h"

#include "toolkit/media/CurrentProject.h"
#include "toolkit/media/DigitalVideoFormats.h"

#include <algorithm>
#include <string>

namespace OutputFormat {
namespace {

using Cv::FrameRate;
namespace UIDs = Cv::DigitalVideoFormats::UIDs;

const std::vector<FrameRate> televisionRates { FrameRate::Fps23_976, FrameRate::Fps24, FrameRate::Fps25,
    FrameRate::Fps29_97, FrameRate::Fps30, FrameRate::Fps50, FrameRate::Fps59_94, FrameRate::Fps60 };
const std::vector<FrameRate> segmentedRates { FrameRate::Fps23_976, FrameRate::Fps24, FrameRate::Fps25,
    FrameRate::Fps29_97, FrameRate::Fps30 };
// Interlaced formats are listed by frame rate; their labels give the field rate, as broadcasters say it.
const std::vector<FrameRate> interlacedRates { FrameRate::Fps25, FrameRate::Fps29_97, FrameRate::Fps30 };
const std::vector<FrameRate> webRates { FrameRate::Fps25, FrameRate::Fps29_97, FrameRate::Fps30 };

// "25" from "25 fps".
std::wstring rateNumber(FrameRate rate)
{
    std::wstring text = Cv::getDisplayString(rate).str();
    const size_t space = text.find(L' ');
    return space == std::wstring::npos ? text : text.substr(0, space);
}

struct Row {
    uint32_t uid;
    Type type;
    ScanMode scan;
    ColourEncoding colour;
    // Empty: the label starts with the picture height ("1080i 50"); else with this name ("HDV 1080 50i").
    const wchar_t* rasterName;
    // What the display string starts with, before the label.
    const wchar_t* displayPrefix;
    // Appended to the label (an HDR transfer function).
    const wchar_t* labelSuffix;
};

Details makeDetails(const Row& row, FrameRate rate)
{
    const auto raster = Cv::DigitalVideoFormats::findByUID(row.uid);
    const ImageSize size { raster.getDisplayWidth(), raster.getDisplayHeight() };
    const ScanFormat scan { row.scan };
    const bool interlaced = scan.isInterlaced();
    const std::wstring scanLetter = interlaced ? L"i" : row.scan == ScanMode::ProgressiveSegmentedFrame ? L"PsF" : L"p";
    const std::wstring rateText = rateNumber(interlaced ? Cv::getDoubledRate(rate) : rate);
    std::wstring label = row.rasterName ? std::wstring(row.rasterName) + L" " + rateText + scanLetter
                                        : std::to_wstring(size.height) + scanLetter + L" " + rateText;
    label += row.labelSuffix;
    std::wstring display = row.displayPrefix;
    display += label + L" (" + std::to_wstring(size.width) + L"x" + std::to_wstring(size.height) + L")";
    return Details(row.uid, row.type, size, rate, scan, row.colour, LightweightString<wchar_t>(label),
        LightweightString<wchar_t>(display));
}

std::vector<Details> builtInTable()
{
    const ScanMode p = ScanMode::Progressive;
    const ScanMode psf = ScanMode::ProgressiveSegmentedFrame;
    const ScanMode uff = ScanMode::InterlacedUpperFieldFirst;
    const ScanMode lff = ScanMode::InterlacedLowerFieldFirst;
    struct Family {
        Row row;
        const std::vector<FrameRate>& rates;
    };
    const std::vector<FrameRate> pal { FrameRate::Fps25 };
    const std::vector<FrameRate> ntsc { FrameRate::Fps29_97 };
    const std::vector<FrameRate> cinema2K { FrameRate::Fps24, FrameRate::Fps25, FrameRate::Fps48 };
    const std::vector<FrameRate> cinema4K { FrameRate::Fps24, FrameRate::Fps25 };
    const std::vector<FrameRate> film { FrameRate::Fps24 };
    const std::vector<FrameRate> dvcProHD720 { FrameRate::Fps50, FrameRate::Fps59_94 };
    const std::vector<Family> families {
        { { UIDs::PAL, Type::SD625, uff, ColourEncoding::Rec601, nullptr, L"PAL ", L"" }, pal },
        { { UIDs::PAL, Type::SD625, p, ColourEncoding::Rec601, nullptr, L"PAL ", L"" }, pal },
        { { UIDs::NTSC_D1, Type::SD525, lff, ColourEncoding::Rec601, nullptr, L"NTSC ", L"" }, ntsc },
        { { UIDs::NTSC_DV, Type::SD525, lff, ColourEncoding::Rec601, nullptr, L"NTSC ", L"" }, ntsc },
        { { UIDs::PAL16x9, Type::SD625Widescreen, uff, ColourEncoding::Rec601, nullptr, L"PAL 16:9 ", L"" }, pal },
        { { UIDs::NTSC_DV16x9, Type::SD525Widescreen, lff, ColourEncoding::Rec601, nullptr, L"NTSC 16:9 ", L"" }, ntsc },
        { { UIDs::HD720, Type::HD720p, p, ColourEncoding::Rec709, nullptr, L"HD ", L"" }, televisionRates },
        { { UIDs::HD1080, Type::HD1080i, uff, ColourEncoding::Rec709, nullptr, L"HD ", L"" }, interlacedRates },
        { { UIDs::HD1080, Type::HD1080p, p, ColourEncoding::Rec709, nullptr, L"HD ", L"" }, televisionRates },
        { { UIDs::HD1080, Type::HD1080PsF, psf, ColourEncoding::Rec709, nullptr, L"HD ", L"" }, segmentedRates },
        { { UIDs::UHD1, Type::UHD2160p, p, ColourEncoding::Rec2020, nullptr, L"UHD ", L"" }, televisionRates },
        { { UIDs::UHD1, Type::UHD2160pHDR, p, ColourEncoding::Rec2100HLG, nullptr, L"UHD ", L" HLG" }, televisionRates },
        { { UIDs::UHD1, Type::UHD2160pHDR, p, ColourEncoding::Rec2100PQ, nullptr, L"UHD ", L" PQ" }, televisionRates },
        { { UIDs::UHD2, Type::UHD4320p, p, ColourEncoding::Rec2020, nullptr, L"8K ", L"" }, televisionRates },
        { { UIDs::DCI2K, Type::DCI2K, p, ColourEncoding::DciP3, L"DCI 2K", L"", L"" }, cinema2K },
        { { UIDs::DCI2KFlat, Type::DCI2K, p, ColourEncoding::DciP3, L"DCI 2K flat", L"", L"" }, cinema2K },
        { { UIDs::DCI2KScope, Type::DCI2K, p, ColourEncoding::DciP3, L"DCI 2K scope", L"", L"" }, cinema2K },
        { { UIDs::DCI4K, Type::DCI4K, p, ColourEncoding::DciP3, L"DCI 4K", L"", L"" }, cinema4K },
        { { UIDs::DCI4KFlat, Type::DCI4K, p, ColourEncoding::DciP3, L"DCI 4K flat", L"", L"" }, cinema4K },
        { { UIDs::DCI4KScope, Type::DCI4K, p, ColourEncoding::DciP3, L"DCI 4K scope", L"", L"" }, cinema4K },
        { { UIDs::FullAperture2K, Type::FilmScan, p, ColourEncoding::FilmDensity, L"2K full aperture", L"", L"" }, film },
        { { UIDs::FullAperture4K, Type::FilmScan, p, ColourEncoding::FilmDensity, L"4K full aperture", L"", L"" }, film },
        { { UIDs::Square1080, Type::Web, p, ColourEncoding::Rec709, L"Square 1080", L"", L"" }, webRates },
        { { UIDs::Vertical1080, Type::Web, p, ColourEncoding::Rec709, L"Vertical 1080", L"", L"" }, webRates },
        { { UIDs::HDV1080, Type::AnamorphicHD, uff, ColourEncoding::Rec709, L"HDV 1080", L"", L"" }, interlacedRates },
        { { UIDs::DVCProHD1080_50, Type::AnamorphicHD, uff, ColourEncoding::Rec709, L"DVCPRO HD 1080", L"", L"" }, pal },
        { { UIDs::DVCProHD1080_60, Type::AnamorphicHD, uff, ColourEncoding::Rec709, L"DVCPRO HD 1080", L"", L"" }, ntsc },
        { { UIDs::DVCProHD720, Type::AnamorphicHD, p, ColourEncoding::Rec709, L"DVCPRO HD 720", L"", L"" }, dvcProHD720 },
    };
    std::vector<Details> table;
    for (const Family& family : families)
        for (FrameRate rate : family.rates)
            table.push_back(makeDetails(family.row, rate));
    return table;
}

std::vector<Details>& table()
{
    static std::vector<Details> formats = builtInTable();
    return formats;
}

} // namespace

uint32_t getNumFormats() { return static_cast<uint32_t>(table().size()); }

const Details& getFormat(uint32_t index)
{
    static const Details none;
    return index < table().size() ? table()[index] : none;
}

LightweightString<wchar_t> getDisplayString(uint32_t type)
{
    static const wchar_t* const names[numTypes] = { L"SD 625 (PAL)", L"SD 525 (NTSC)", L"SD 625 widescreen",
        L"SD 525 widescreen", L"HD 720p", L"HD 1080i", L"HD 1080p", L"HD 1080PsF", L"UHD 2160p", L"UHD 2160p HDR",
        L"8K 4320p", L"DCI 2K", L"DCI 4K", L"Film scan", L"Web and social", L"Anamorphic HD" };
    return type < numTypes ? LightweightString<wchar_t>(names[type]) : LightweightString<wchar_t>();
}

std::vector<uint32_t> getAllowedOutputFormatsForProjectFrameRate(Cv::FrameRate rate)
{
    std::vector<uint32_t> allowed;
    const std::vector<Details>& formats = table();
    for (uint32_t i = 0; i < formats.size(); ++i)
        if (formats[i].frameRate() == rate)
            allowed.push_back(i);
    return allowed;
}

bool validateProjectSettings()
{
    const Cv::FrameRate rate = Cv::CurrentProject::getFrameRate(0);
    const Details current = Cv::CurrentProject::getOutputImageFormat(0);
    const std::vector<uint32_t> allowed = getAllowedOutputFormatsForProjectFrameRate(rate);
    if (allowed.empty())
        return false;
    if (std::any_of(allowed.begin(), allowed.end(), [&](uint32_t i) { return getFormat(i) == current; }))
        return false;
    auto sameType = std::find_if(allowed.begin(), allowed.end(), [&](uint32_t i) { return getFormat(i).type() == current.type(); });
    Cv::CurrentProject::setOutputImageFormat(getFormat(sameType != allowed.end() ? *sameType : allowed.front()), 0);
    return true;
}

ScopedTable::ScopedTable(std::vector<Details> formats)
    : m_saved(std::exchange(table(), std::move(formats)))
{
}

ScopedTable::~ScopedTable() { table() = std::move(m_saved); }

} // namespace OutputFormat
