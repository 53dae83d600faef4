#include "toolkit/media/PictureRatio.h"

#include <cstdio>
#include <numeric>
#include <string>

namespace Cv::Image {

LightweightString<wchar_t> aspectRatioAsDisplayString(PictureRatio ratio)
{
    if (ratio.width == 0 || ratio.height == 0)
        return {};
    const uint32_t divisor = std::gcd(ratio.width, ratio.height);
    const uint32_t w = ratio.width / divisor;
    const uint32_t h = ratio.height / divisor;
    // Television ratios (4:3, 16:9, 14:9, 1:1, 9:16) are small fractions; cinema ratios are not and
    // are written as a decimal to one, the way a projectionist reads them.
    if (w <= 21 && h <= 21)
        return LightweightString<wchar_t>(std::to_wstring(w) + L":" + std::to_wstring(h));
    wchar_t text[48];
    std::swprintf(text, std::size(text), L"%.2f:1", static_cast<double>(ratio.width) / ratio.height);
    return LightweightString<wchar_t>(text);
}

} // namespace Cv::Image
