#include "toolkit/support/Colour.h"

#include <algorithm>
#include <cmath>

namespace {

double clampUnit(double value)
{
    // NaN fails both comparisons of std::clamp; it is caught first so that it cannot leak into a palette.
    if (std::isnan(value))
        return 0.0;
    return std::clamp(value, 0.0, 1.0);
}

double wrapHue(double hue)
{
    if (!std::isfinite(hue))
        return 0.0;
    double wrapped = std::fmod(hue, 360.0);
    if (wrapped < 0.0)
        wrapped += 360.0;
    // fmod of a tiny negative number plus 360 can round up to exactly 360.
    return wrapped >= 360.0 ? 0.0 : wrapped;
}

} // namespace

HSV RGBToHSV(const NormalisedRGB& rgb)
{
    const double r = clampUnit(rgb.r);
    const double g = clampUnit(rgb.g);
    const double b = clampUnit(rgb.b);
    const double maxC = std::max({r, g, b});
    const double minC = std::min({r, g, b});
    const double delta = maxC - minC;

    HSV hsv;
    hsv.v = maxC;
    if (delta <= 0.0)
        return hsv; // grey: hue and saturation 0 by convention
    hsv.s = delta / maxC;
    double hue;
    if (maxC == r)
        hue = 60.0 * ((g - b) / delta); // -60..60 around red
    else if (maxC == g)
        hue = 60.0 * ((b - r) / delta + 2.0);
    else
        hue = 60.0 * ((r - g) / delta + 4.0);
    hsv.h = wrapHue(hue);
    return hsv;
}

NormalisedRGB HSVToRGB(const HSV& hsv)
{
    const double h = wrapHue(hsv.h);
    const double s = clampUnit(hsv.s);
    const double v = clampUnit(hsv.v);
    if (s <= 0.0)
        return {v, v, v};

    const double sector = h / 60.0; // 0 <= sector < 6
    const int index = std::min(static_cast<int>(sector), 5);
    const double f = sector - index;
    const double p = v * (1.0 - s);
    const double q = v * (1.0 - s * f);
    const double t = v * (1.0 - s * (1.0 - f));
    switch (index) {
    case 0:
        return {v, t, p};
    case 1:
        return {q, v, p};
    case 2:
        return {p, v, t};
    case 3:
        return {p, q, v};
    case 4:
        return {t, p, v};
    default:
        return {v, p, q};
    }
}

Colour::Colour(double r, double g, double b, double a)
    : m_r(clampUnit(r))
    , m_g(clampUnit(g))
    , m_b(clampUnit(b))
    , m_a(clampUnit(a))
{
}

Colour::Colour(const RgbTriple& rgb, uint8_t a)
    : Colour(rgb.r / 255.0, rgb.g / 255.0, rgb.b / 255.0, a / 255.0)
{
}

Colour Colour::fromBytes(uint8_t r, uint8_t g, uint8_t b, uint8_t a)
{
    return Colour(r / 255.0, g / 255.0, b / 255.0, a / 255.0);
}

uint8_t Colour::toByte(double channel)
{
    return static_cast<uint8_t>(std::lround(clampUnit(channel) * 255.0));
}

Colour Colour::mix(const Colour& other, double t) const
{
    const double k = clampUnit(t);
    const auto blend = [k](double from, double to) { return from + (to - from) * k; };
    return Colour(blend(m_r, other.m_r), blend(m_g, other.m_g), blend(m_b, other.m_b), blend(m_a, other.m_a));
}

Colour Colour::scale(double factor) const
{
    return Colour(m_r * factor, m_g * factor, m_b * factor, m_a);
}

bool Colour::isCloseTo(const Colour& other, double tolerance) const
{
    return std::fabs(m_r - other.m_r) <= tolerance && std::fabs(m_g - other.m_g) <= tolerance
        && std::fabs(m_b - other.m_b) <= tolerance && std::fabs(m_a - other.m_a) <= tolerance;
}
