#include "colour/ColEyeDropBase.h"

#include "toolkit/gfx/Image.h"
#include "toolkit/support/StringConversions.h"
#include "toolkit/ui/Screen.h"

#include <algorithm>
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

// Channel bytes as the toolkit's 0..1 channels (exactly byte / 255.0), and the reciprocals of channel
// differences, with which a full-screen range passes over most pixels without the exact hue.
struct RangeTables {
    RangeTables()
    {
        for (int i = 0; i < 256; ++i) {
            unit[i] = i / 255.0;
            reciprocal[i] = i > 0 ? 1.0 / i : 0.0;
        }
    }
    double unit[256];
    double reciprocal[256];
};

const RangeTables& rangeTables()
{
    static const RangeTables tables;
    return tables;
}

HSV pixelHSV(uint32_t p)
{
    const double* unit = rangeTables().unit;
    const double r = unit[(p >> 16) & 0xffu];
    const double g = unit[(p >> 8) & 0xffu];
    const double b = unit[p & 0xffu];
    const double maxC = std::max({r, g, b});
    const double minC = std::min({r, g, b});
    const double delta = maxC - minC;
    HSV hsv;
    hsv.v = maxC;
    if (delta <= 0.0)
        return hsv;
    hsv.s = delta / maxC;
    double hue;
    if (maxC == r)
        hue = 60.0 * ((g - b) / delta);
    else if (maxC == g)
        hue = 60.0 * ((b - r) / delta + 2.0);
    else
        hue = 60.0 * ((r - g) / delta + 4.0);
    if (hue < 0.0)
        hue += 360.0;
    hsv.h = hue >= 360.0 ? 0.0 : hue;
    return hsv;
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
    ColourRange range = none;
    bool counted = false;
    const RangeTables& tables = rangeTables();
    constexpr double slack = 1e-9;
    // Screens are mostly runs of one colour: a pixel like the one before cannot move a bound.
    uint32_t previous = 0;
    bool havePrevious = false;
    for (int row = 0; row < capture.height(); ++row) {
        const uint32_t* pixels = capture.row(row);
        for (int col = 0; col < capture.width(); ++col) {
            const uint32_t p = pixels[col] & 0x00ffffffu;
            if (havePrevious && p == previous)
                continue;
            previous = p;
            havePrevious = true;
            const int r = static_cast<int>(p >> 16);
            const int g = static_cast<int>((p >> 8) & 0xffu);
            const int b = static_cast<int>(p & 0xffu);
            const int mx = std::max({r, g, b});
            const int mn = std::min({r, g, b});
            // Greys and black (saturation or value 0) do not count.
            if (mx == mn)
                continue;
            if (counted) {
                // Most pixels lie within the bounds found so far. Value and saturation are exact; the hue is taken
                // from the bytes, which differs from the exact hue by rounding alone (hues of bytes lie at least
                // 60/255/255 of a degree apart), so a pixel is passed over only when its hue is clearly inside;
                // one near a bound gets the exact conversion.
                const double v = tables.unit[mx];
                const double s = (v - tables.unit[mn]) / v;
                if ((v >= range.minValue) & (v <= range.maxValue) & (s >= range.minSaturation)
                    & (s <= range.maxSaturation)) {
                    // Chosen without branches: which channel is largest is a coin toss on a varied screen.
                    const bool redLargest = mx == r;
                    const bool greenLargest = !redLargest && mx == g;
                    const int towards = redLargest ? g - b : (greenLargest ? b - r : r - g);
                    const double sector = redLargest ? 0.0 : (greenLargest ? 2.0 : 4.0);
                    double hue = 60.0 * (towards * tables.reciprocal[mx - mn] + sector);
                    hue += hue < 0.0 ? 360.0 : 0.0;
                    if (hue > range.minHue + slack && hue < range.maxHue - slack)
                        continue;
                }
            }
            const HSV hsv = pixelHSV(p);
            if (!counted) {
                range = {hsv.h, hsv.h, hsv.s, hsv.s, hsv.v, hsv.v};
                counted = true;
                continue;
            }
            if (hsv.h < range.minHue)
                range.minHue = hsv.h;
            if (hsv.h > range.maxHue)
                range.maxHue = hsv.h;
            if (hsv.s < range.minSaturation)
                range.minSaturation = hsv.s;
            if (hsv.s > range.maxSaturation)
                range.maxSaturation = hsv.s;
            if (hsv.v < range.minValue)
                range.minValue = hsv.v;
            if (hsv.v > range.maxValue)
                range.maxValue = hsv.v;
        }
    }
    return range;
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
