#include "toolkit/media/FileWriterInfo.h"

#include <vector>

namespace Cv::FileWriterInfo {

VectorExt<LightweightString<char>> getSupportedFormatTypes(Compression::eUsage usage)
{
    std::vector<const char*> ids;
    switch (usage) {
    case Compression::VideoExport: ids = { "avi", "quicktime", "mxf_op1a", "mp4", "matroska", "mpeg_ps" }; break;
    case Compression::Capture: ids = { "avi", "quicktime", "mxf_op1a" }; break;
    case Compression::StillExport: ids = { "dpx", "openexr", "tiff", "png", "jpeg" }; break;
    case Compression::AudioExport: ids = { "wav", "aiff" }; break;
    }
    VectorExt<LightweightString<char>> types;
    for (const char* id : ids)
        types.push_back(id);
    return types;
}

} // namespace Cv::FileWriterInfo
