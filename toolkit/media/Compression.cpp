#include "toolkit/media/Compression.h"

#include <algorithm>

namespace Compression {
namespace {

using namespace Codes;

// Which picture sizes a compression takes. Standard definition is up to 720 pixels wide.
enum class Sizes { Any, StandardOnly, HighOnly };

struct Entry {
    CompressionDescription description;
    Sizes sizes;
};

const std::vector<Entry>& entries()
{
    static const std::vector<Entry> table {
        { { h264Intra422, L"H.264 Intra 4:2:2 10-bit", 250.0 }, Sizes::Any },
        { { mpeg2LongGop422, L"MPEG-2 Long GOP 4:2:2", 50.0 }, Sizes::HighOnly },
        { { mpeg2D10, L"MPEG-2 D-10 I-frame 4:2:2", 50.0 }, Sizes::StandardOnly },
        { { mpeg2Sd420, L"MPEG-2 4:2:0", 8.0 }, Sizes::StandardOnly },
        { { dv25, L"DV 25", 25.0 }, Sizes::StandardOnly },
        { { dv50, L"DV 50", 50.0 }, Sizes::StandardOnly },
        { { dv100, L"DV 100", 100.0 }, Sizes::HighOnly },
        { { h264, L"H.264 Long GOP", 20.0 }, Sizes::Any },
        { { hevc, L"H.265 Long GOP", 15.0 }, Sizes::Any },
        { { av1, L"AV1", 10.0 }, Sizes::Any },
        { { jpeg2000, L"JPEG 2000", 250.0 }, Sizes::Any },
        { { ffv1, L"FFV1 lossless", 0.0 }, Sizes::Any },
        { { uncompressed8, L"Uncompressed 8-bit 4:2:2", 0.0 }, Sizes::Any },
        { { uncompressed10, L"Uncompressed 10-bit 4:2:2", 0.0 }, Sizes::Any },
    };
    return table;
}

struct Container {
    const char* formatID;
    std::vector<Cv::Image::Format> codes;
};

// What each writable file type can hold, in the order its menu offers them. Image sequences and audio
// files hold no video compression.
const std::vector<Container>& containers()
{
    static const std::vector<Container> table {
        { "avi", { dv25, dv50, ffv1, uncompressed8, uncompressed10 } },
        { "quicktime", { h264Intra422, mpeg2LongGop422, mpeg2D10, dv25, dv50, dv100, h264, hevc, uncompressed8, uncompressed10 } },
        { "mxf_op1a", { h264Intra422, mpeg2LongGop422, mpeg2D10, mpeg2Sd420, dv25, dv50, dv100, jpeg2000, uncompressed10 } },
        { "mp4", { h264, hevc, av1 } },
        { "matroska", { h264, hevc, av1, ffv1 } },
        { "mpeg_ps", { mpeg2Sd420, mpeg2LongGop422 } },
    };
    return table;
}

const Entry* findEntry(Cv::Image::Format code)
{
    const auto& table = entries();
    auto found = std::find_if(table.begin(), table.end(), [code](const Entry& e) { return e.description.code == code; });
    return found == table.end() ? nullptr : &*found;
}

bool fitsSize(Sizes sizes, uint32_t width)
{
    switch (sizes) {
    case Sizes::StandardOnly: return width > 0 && width <= 720;
    case Sizes::HighOnly: return width > 720 && width <= 1920;
    case Sizes::Any: return width > 0;
    }
    return false;
}

} // namespace

const std::vector<CompressionDescription>& getAllCompressions()
{
    static const std::vector<CompressionDescription> all = [] {
        std::vector<CompressionDescription> out;
        for (const Entry& e : entries())
            out.push_back(e.description);
        return out;
    }();
    return all;
}

LightweightString<wchar_t> getCompressionName(Cv::Image::Format code)
{
    const Entry* entry = findEntry(code);
    return entry ? LightweightString<wchar_t>(entry->description.name) : LightweightString<wchar_t>();
}

void getValidFormats(const LightweightString<char>& outputFormat, const ShotVideoMetadata& source,
    VectorExt<uint32_t>& dvFormats, VectorExt<Cv::Image::Format>& imageFormats)
{
    dvFormats.clear();
    imageFormats.clear();
    const auto& table = containers();
    auto container = std::find_if(table.begin(), table.end(), [&](const Container& c) { return outputFormat == c.formatID; });
    if (container == table.end())
        return;
    const uint32_t width = source.getWidth();
    for (Cv::Image::Format code : container->codes)
        if (const Entry* entry = findEntry(code); entry && fitsSize(entry->sizes, width))
            imageFormats.push_back(code);
    if (!imageFormats.empty())
        dvFormats.push_back(source.getDigitalVideoFormatUID());
}

} // namespace Compression
