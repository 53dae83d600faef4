#include "colour/detail/ColourRangeScan.h"

#include "toolkit/support/Colour.h"

#include <algorithm>
#include <cstring>
#include <numeric>

#ifdef __SSE2__
#include <emmintrin.h>
#include <xmmintrin.h>
#endif

namespace colour_detail {

namespace {

using IntLanes = ColourRangeScan::IntLanes;
using FloatLanes = ColourRangeScan::FloatLanes;

// The largest and smallest channel of each pixel (0xAARRGGBB).
void channelExtremes(IntLanes pixels, IntLanes& largest, IntLanes& smallest)
{
#ifdef __SSE2__
    // Byte-wise, with the green and red bytes shifted onto the blue one.
    const __m128i blue = (__m128i)pixels;
    const __m128i green = _mm_srli_epi32(blue, 8);
    const __m128i red = _mm_srli_epi32(blue, 16);
    largest = (IntLanes)_mm_max_epu8(_mm_max_epu8(blue, green), red) & 0xff;
    smallest = (IntLanes)_mm_min_epu8(_mm_min_epu8(blue, green), red) & 0xff;
#else
    const auto largerOf = [](IntLanes a, IntLanes b) { return (a & (a > b)) | (b & (a <= b)); };
    const auto smallerOf = [](IntLanes a, IntLanes b) { return (a & (a < b)) | (b & (a >= b)); };
    const IntLanes r = (pixels >> 16) & 0xff;
    const IntLanes g = (pixels >> 8) & 0xff;
    const IntLanes b = pixels & 0xff;
    largest = largerOf(r, largerOf(g, b));
    smallest = smallerOf(r, smallerOf(g, b));
#endif
}

FloatLanes asFloats(IntLanes lanes)
{
    return __builtin_convertvector(lanes, FloatLanes);
}

template<typename Lanes, typename Scalar>
Lanes spread(Scalar value)
{
    Lanes lanes = {};
    return lanes + value;
}

// The lowest and highest saturation the exact conversion gives pixels of one saturation fraction.
struct SaturationsOf {
    explicit SaturationsOf(ColourRangeScan::Fraction saturation)
    {
        const int common = std::gcd(saturation.numerator, saturation.denominator);
        const int spreadStep = saturation.numerator / common;
        const int largestStep = saturation.denominator / common;
        for (int largest = largestStep, spreadOf = spreadStep; largest < 256;
             largest += largestStep, spreadOf += spreadStep) {
            const double s = RGBToHSV({largest / 255.0, (largest - spreadOf) / 255.0, (largest - spreadOf) / 255.0}).s;
            lowest = std::min(lowest, s);
            highest = std::max(highest, s);
        }
    }
    double lowest = 2.0;
    double highest = -1.0;
};

// Hues on a sixth of the circle (0, 60, 120...) come from channels equal to the largest or smallest, which the
// conversion divides exactly; every pixel of such a fraction converts to the same hue.
bool convertsExactly(ColourRangeScan::Fraction hue)
{
    return hue.numerator % hue.denominator == 0;
}

ColourRangeScan::BoundLanes lanesOf(ColourRangeScan::Fraction bound, bool equalIsInside, int key)
{
    return {spread<FloatLanes>(static_cast<float>(bound.numerator)),
            spread<FloatLanes>(static_cast<float>(bound.denominator)),
            spread<FloatLanes>(equalIsInside ? -0.5f : 0.0f), spread<IntLanes>(key)};
}

} // namespace

// Inlined: called for every four pixels.
[[gnu::always_inline]] inline unsigned ColourRangeScan::mayMoveABound(const uint32_t* pixels) const
{
    IntLanes p;
    std::memcpy(&p, pixels, sizeof p);
    const IntLanes r = (p >> 16) & 0xff;
    const IntLanes g = (p >> 8) & 0xff;
    const IntLanes b = p & 0xff;
    IntLanes largest;
    IntLanes smallest;
    channelExtremes(p, largest, smallest);
    const IntLanes spreadOf = largest - smallest;

    // The hue's sextant: red largest counts from 0 (from 6 below it, as the hue wraps to just under 360),
    // green from 2, blue from 4, each plus its towards-channel difference; ties go to red, then green, as in
    // the exact conversion (the fraction is the same either way).
    const IntLanes redLargest = r == largest;
    const IntLanes greenLargest = ~redLargest & (g == largest);
    const IntLanes blueLargest = ~(redLargest | greenLargest);
    const IntLanes towards = (redLargest & (g - b)) | (greenLargest & (b - r)) | (blueLargest & (r - g));
    const IntLanes sixths = (redLargest & (towards < 0) & 6) | (greenLargest & 2) | (blueLargest & 4);
    const FloatLanes spreadF = asFloats(spreadOf);
    const FloatLanes sextant = asFloats(sixths) * spreadF + asFloats(towards);
    const FloatLanes largestF = asFloats(largest);

    const IntLanes saturationKeys = largest << 8 | spreadOf;
    const IntLanes hueKeys = p & 0xffffff;
    // Fractions compared by cross-multiplying: a/b above c/d when a*d - c*b > 0.
    const IntLanes inside =
        (largest >= m_minLargest) & (largest <= m_maxLargest)
        & ((spreadF * m_minSaturation.denominator - largestF * m_minSaturation.numerator > m_minSaturation.margin)
           | (saturationKeys == m_minSaturation.key))
        & ((largestF * m_maxSaturation.numerator - spreadF * m_maxSaturation.denominator > m_maxSaturation.margin)
           | (saturationKeys == m_maxSaturation.key))
        & ((sextant * m_minHue.denominator - spreadF * m_minHue.numerator > m_minHue.margin)
           | (hueKeys == m_minHue.key))
        & ((spreadF * m_maxHue.numerator - sextant * m_maxHue.denominator > m_maxHue.margin)
           | (hueKeys == m_maxHue.key));
    const IntLanes passedOver = inside | (spreadOf == 0);

#ifdef __SSE2__
    return ~static_cast<unsigned>(_mm_movemask_ps((__m128)passedOver)) & 0xfu;
#else
    unsigned movers = 0;
    for (int lane = 0; lane < lanes; ++lane)
        if (!passedOver[lane])
            movers |= 1u << lane;
    return movers;
#endif
}

void ColourRangeScan::addPixels(const uint32_t* pixels, int count)
{
    // Two groups a step, so that their tests overlap and one branch serves both.
    constexpr int step = 2 * lanes;
    int col = 0;
    for (; col + step <= count; col += step) {
        unsigned movers = mayMoveABound(pixels + col) | mayMoveABound(pixels + col + lanes) << lanes;
        for (int lane = 0; movers; ++lane, movers >>= 1)
            if (movers & 1u)
                addExactly(pixels[col + lane]);
    }
    for (; col < count; ++col)
        addExactly(pixels[col]);
}

void ColourRangeScan::addExactly(uint32_t pixel)
{
    const int r = static_cast<int>((pixel >> 16) & 0xffu);
    const int g = static_cast<int>((pixel >> 8) & 0xffu);
    const int b = static_cast<int>(pixel & 0xffu);
    const int largest = std::max({r, g, b});
    const int spreadOf = largest - std::min({r, g, b});
    // Greys and black (saturation or value 0) do not count.
    if (spreadOf == 0)
        return;
    const HSV hsv = RGBToHSV({r / 255.0, g / 255.0, b / 255.0});
    int sextant;
    if (largest == r)
        sextant = g - b < 0 ? 6 * spreadOf + (g - b) : g - b;
    else if (largest == g)
        sextant = 2 * spreadOf + (b - r);
    else
        sextant = 4 * spreadOf + (r - g);
    const Fraction saturation{spreadOf, largest};
    const Fraction hue{sextant, spreadOf};
    const int saturationKey = largest << 8 | spreadOf;
    const int hueKey = static_cast<int>(pixel & 0xffffffu);

    if (!m_counted) {
        m_counted = true;
        m_range = {hsv.h, hsv.h, hsv.s, hsv.s, hsv.v, hsv.v};
        m_minLargest = m_maxLargest = spread<IntLanes>(largest);
        m_minSaturation = lanesOf(saturation, hsv.s == SaturationsOf(saturation).lowest, saturationKey);
        m_maxSaturation = lanesOf(saturation, hsv.s == SaturationsOf(saturation).highest, saturationKey);
        m_minHue = m_maxHue = lanesOf(hue, convertsExactly(hue), hueKey);
        return;
    }
    if (hsv.h < m_range.minHue) {
        m_range.minHue = hsv.h;
        m_minHue = lanesOf(hue, convertsExactly(hue), hueKey);
    }
    if (hsv.h > m_range.maxHue) {
        m_range.maxHue = hsv.h;
        m_maxHue = lanesOf(hue, convertsExactly(hue), hueKey);
    }
    if (hsv.s < m_range.minSaturation) {
        m_range.minSaturation = hsv.s;
        m_minSaturation = lanesOf(saturation, hsv.s == SaturationsOf(saturation).lowest, saturationKey);
    }
    if (hsv.s > m_range.maxSaturation) {
        m_range.maxSaturation = hsv.s;
        m_maxSaturation = lanesOf(saturation, hsv.s == SaturationsOf(saturation).highest, saturationKey);
    }
    if (hsv.v < m_range.minValue) {
        m_range.minValue = hsv.v;
        m_minLargest = spread<IntLanes>(largest);
    }
    if (hsv.v > m_range.maxValue) {
        m_range.maxValue = hsv.v;
        m_maxLargest = spread<IntLanes>(largest);
    }
}

} // namespace colour_detail
