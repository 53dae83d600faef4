#pragma once
// ColourRangeScan: the range of hue, saturation and value over many pixels, as the exact conversion of every
// pixel would give it, at a few cycles a pixel.
//
// Hue, saturation and value of a pixel are fractions of its bytes: with largest and smallest channel max and
// min and spread = max - min, value = max / 255, saturation = spread / max and hue / 60 = sextant / spread,
// where sextant counts sixths of the circle in units of 1/spread. Fractions with denominators below 256 lie at
// least 1/65025 apart, far more than the rounding of the floating-point conversion, so a pixel whose fractions
// lie strictly inside the bounds' fractions cannot move a bound. That is decided on whole numbers (products
// below 2^24, so exact in single floats), four pixels at a time; only the few pixels that may move a bound
// get the exact conversion.

#include "colour/ColEyeDropBase.h"

#include <cstdint>

namespace colour_detail {

class ColourRangeScan {
public:
    // Takes in a row of 0xAARRGGBB pixels (alpha is not looked at).
    void addPixels(const uint32_t* pixels, int count);
    // Whether any pixel so far was neither grey nor black.
    bool counted() const { return m_counted; }
    const ColEyeDropBase::ColourRange& range() const { return m_range; }

    static constexpr int lanes = 4;
    using IntLanes = int32_t __attribute__((vector_size(lanes * sizeof(int32_t))));
    using FloatLanes = float __attribute__((vector_size(lanes * sizeof(float))));

    struct Fraction {
        int numerator = 0;
        int denominator = 1;
    };
    // A bound's fraction, and a margin of 0, or -0.5 where no pixel of the bound's own fraction can move it (so
    // that equal counts as inside). Pixels with the key of the pixel that set the bound (its bytes for a hue,
    // its largest channel and spread for a saturation) convert to the bound itself.
    struct BoundLanes {
        FloatLanes numerator = {};
        FloatLanes denominator = {};
        FloatLanes margin = {};
        IntLanes key = {-1, -1, -1, -1};
    };

private:
    // Bit i set where pixels[i] is neither grey nor black and may move a bound.
    unsigned mayMoveABound(const uint32_t* pixels) const;
    void addExactly(uint32_t pixel);

    ColEyeDropBase::ColourRange m_range;
    bool m_counted = false;

    // The bounds as the pixels that set them, spread over the lanes for the test: the value's largest channel
    // and the saturation and hue fractions. Before the first pixel counts, no value lies inside.
    IntLanes m_minLargest = {256, 256, 256, 256};
    IntLanes m_maxLargest = {};
    BoundLanes m_minSaturation;
    BoundLanes m_maxSaturation;
    BoundLanes m_minHue;
    BoundLanes m_maxHue;
};

} // namespace colour_detail
