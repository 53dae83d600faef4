#include "colour/ColEyeDropBase.h"

#include "colour/detail/ColourRangeScan.h"

#include "toolkit/gfx/Image.h"
#include "toolkit/support/StringConversions.h"
#include "toolkit/ui/Screen.h"

#include <charconv>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace {

Pictor::Image captureArea(const Cv::Box<double, Cv::BottomUpTraits>& area)
{
    return pictor_getScreenRect(GlobBox(static_cast<int>(area.left()), static_cast<int>(area.bottom()),
                                        static_cast<int>(area.right()), static_cast<int>(area.top())));
}

// The leading number of a word, 0 when it has none: messages come from other panels and the clipboard, so a
// damaged number reads as 0 rather than failing the whole message.
double leadingNumber(std::string_view word)
{
    if (!word.empty() && word.front() == '+')
        word.remove_prefix(1);
    double out = 0.0;
    const auto result = std::from_chars(word.data(), word.data() + word.size(), out);
    return result.ec == std::errc() ? out : 0.0;
}

} // namespace

RgbTriple_<unsigned char> ColEyeDropBase::getPixelColour(const Cv::Box<double, Cv::BottomUpTraits>& area)
{
    RgbTriple_<unsigned char> average;
    const Pictor::Image capture = captureArea(area);
    if (capture.isNull() || !capture.bytes())
        return average;
    uint32_t red = 0;
    uint32_t green = 0;
    uint32_t blue = 0;
    // Pixels are 0xAARRGGBB: in memory blue, green, red and a byte that is not looked at.
    for (int row = 0; row < capture.height(); ++row) {
        const uint32_t* pixels = capture.row(row);
        for (int col = 0; col < capture.width(); ++col) {
            const uint32_t p = pixels[col];
            blue += p & 0xffu;
            green += (p >> 8) & 0xffu;
            red += (p >> 16) & 0xffu;
        }
    }
    const uint32_t count = static_cast<uint32_t>(capture.width()) * static_cast<uint32_t>(capture.height());
    average.r = static_cast<unsigned char>(red / count);
    average.g = static_cast<unsigned char>(green / count);
    average.b = static_cast<unsigned char>(blue / count);
    return average;
}

ColEyeDropBase::ColourRange ColEyeDropBase::getPixelRange(const Cv::Box<double, Cv::BottomUpTraits>& area)
{
    const ColourRange none{-1.0, -1.0, -1.0, -1.0, -1.0, -1.0};
    const Pictor::Image capture = captureArea(area);
    if (capture.isNull())
        return {};
    if (!capture.bytes())
        return none;
    colour_detail::ColourRangeScan scan;
    for (int row = 0; row < capture.height(); ++row)
        scan.addPixels(capture.row(row), capture.width());
    return scan.counted() ? scan.range() : none;
}

LightweightString<char> ColEyeDropBase::pixelToMsg(const RgbTriple_<unsigned char>& colour)
{
    const HSV hsv = Colour(colour.r / 255.0, colour.g / 255.0, colour.b / 255.0).toHSV();
    LightweightString<char> msg(messagePrefix);
    msg += StringFromFloat(hsv.h);
    msg += " ";
    msg += StringFromFloat(hsv.s);
    msg += " ";
    msg += StringFromFloat(hsv.v / 255.0);
    return msg;
}

int ColEyeDropBase::parse(const char* msg, double& hue, double& saturation, double& value)
{
    if (!msg)
        return 0;
    std::string_view words[5];
    std::string_view rest(msg, std::strlen(msg));
    size_t count = 0;
    while (true) {
        const size_t space = rest.find(' ');
        if (count == 5)
            return 0; // a sixth word
        words[count++] = rest.substr(0, space);
        if (space == std::string_view::npos)
            break;
        rest.remove_prefix(space + 1);
    }
    if (count != 5 || words[0] != "colour_eye_dropper")
        return 0;
    hue = leadingNumber(words[2]);
    saturation = leadingNumber(words[3]);
    value = leadingNumber(words[4]);
    return 0;
}

void ColEyeDropBase::grabPixelColour(int x, int y, LightweightString<char>& msg)
{
    msg = pixelToMsg(getPixelColour(Cv::Box<double, Cv::BottomUpTraits>(x, y, x + 1.0, y + 1.0)));
}
