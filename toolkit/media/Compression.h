#pragma once
// The compressions the editor writes, and which of them an output file type can hold for a given source.
// Some compressions exist only for standard definition (DV, D-10), some only for HD rasters; the others take
// any picture size.

#include "toolkit/media/CompressionFormat.h"
#include "toolkit/media/ShotVideoMetadata.h"
#include "toolkit/support/LightweightString.h"
#include "toolkit/support/Vectors.h"

#include <cstdint>
#include <vector>

namespace Compression {

// What a file is written for; each usage has its own file types (see FileWriterInfo).
enum eUsage : int {
    VideoExport = 0,
    Capture = 1,
    StillExport = 2,
    AudioExport = 3,
};

namespace Codes {
constexpr Cv::Image::Format h264Intra422 = Cv::Image::fourCC("M701");
constexpr Cv::Image::Format mpeg2LongGop422 = Cv::Image::fourCC("M102");
constexpr Cv::Image::Format mpeg2D10 = Cv::Image::fourCC("MMES");
constexpr Cv::Image::Format mpeg2Sd420 = Cv::Image::fourCC("M101");
constexpr Cv::Image::Format dv25 = Cv::Image::fourCC("dvsd");
constexpr Cv::Image::Format dv50 = Cv::Image::fourCC("dv50");
constexpr Cv::Image::Format dv100 = Cv::Image::fourCC("dvh1");
constexpr Cv::Image::Format h264 = Cv::Image::fourCC("avc1");
constexpr Cv::Image::Format hevc = Cv::Image::fourCC("hvc1");
constexpr Cv::Image::Format av1 = Cv::Image::fourCC("av01");
constexpr Cv::Image::Format jpeg2000 = Cv::Image::fourCC("mjp2");
constexpr Cv::Image::Format ffv1 = Cv::Image::fourCC("FFV1");
constexpr Cv::Image::Format uncompressed8 = Cv::Image::fourCC("2vuy");
constexpr Cv::Image::Format uncompressed10 = Cv::Image::fourCC("v210");
} // namespace Codes

struct CompressionDescription {
    Cv::Image::Format code = Cv::Image::noFormat;
    const wchar_t* name = L"";
    // The usual rate in megabits a second; 0.0 for a lossless or uncompressed format.
    double typicalBitRate = 0.0;
};

// Every compression the editor knows, in menu order.
const std::vector<CompressionDescription>& getAllCompressions();
// The compression's name; empty for an unknown code.
LightweightString<wchar_t> getCompressionName(Cv::Image::Format code);

// For an output file type (a format ID such as "quicktime", see CvExport) and a source: `imageFormats`
// receives the compressions the file type can hold at the source's picture size, in menu order, and
// `dvFormats` the rasters (digital video format UIDs) it would be written at: the source's own raster
// when any compression fits. Both are emptied first; an unknown file type leaves both empty.
void getValidFormats(const LightweightString<char>& outputFormat, const ShotVideoMetadata& source,
    VectorExt<uint32_t>& dvFormats, VectorExt<Cv::Image::Format>& imageFormats);

} // namespace Compression
