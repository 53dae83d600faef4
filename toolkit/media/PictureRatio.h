#pragma once
// Picture aspect ratios (the shape of the displayed picture, not of its pixels) and how they are written.

#include "toolkit/support/LightweightString.h"

#include <compare>
#include <cstdint>

namespace Cv::Image {

// width:height of the displayed picture; {0, 0} is unknown. Kept as given: 16:9 and 32:18 are different
// values that are written the same.
struct PictureRatio {
    uint32_t width = 0;
    uint32_t height = 0;
    friend auto operator<=>(const PictureRatio&, const PictureRatio&) = default;
};

// "4:3", "16:9", "1:1", "9:16" for ratios of small whole numbers; "1.85:1", "2.39:1", "1.90:1" for the
// cinema ratios that are written as decimals; empty for an unknown ratio (a zero side).
LightweightString<wchar_t> aspectRatioAsDisplayString(PictureRatio ratio);

} // namespace Cv::Image
