// Any bytes through the thumbnail cache's JPEG, decoded at a reduced scale path: an empty picture or a sound one, never
// a crash, a leak or an allocation beyond the cache's per-picture bound. Other formats are left to their own targets.
#include "ThumbnailChecks.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    checkThumbnailDecode(data, size, Pictor::ImageFormat::Jpeg);
    return 0;
}
