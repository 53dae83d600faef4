#pragma once
// Which file types the editor can write for each usage, in the order they are offered.

#include "toolkit/media/Compression.h"
#include "toolkit/support/LightweightString.h"
#include "toolkit/support/Vectors.h"

namespace Cv::FileWriterInfo {

// Format IDs (see CvExport); empty for an unknown usage.
VectorExt<LightweightString<char>> getSupportedFormatTypes(Compression::eUsage usage);

} // namespace Cv::FileWriterInfo
