#pragma once
// ColourData: a colour as colour panels store and exchange it: hue in degrees, saturation and value in 0..1,
// and an alpha that the hue and saturation tools carry through untouched.
//
// The hue is kept as given, not wrapped: the wheel publishes hues in (0, 360], so red comes back as 360.

#include "toolkit/support/Colour.h"

struct ColourData {
    constexpr ColourData() = default;
    constexpr ColourData(double h, double s, double v, double a = 1.0) : hue(h), saturation(s), value(v), alpha(a) {}
    constexpr bool operator==(const ColourData&) const = default;

    static ColourData fromColour(const Colour& colour)
    {
        const HSV hsv = colour.toHSV();
        return {hsv.h, hsv.s, hsv.v, colour.a()};
    }
    Colour toColour() const { return Colour::fromHSV({hue, saturation, value}, alpha); }

    double hue = 0.0;
    double saturation = 0.0;
    double value = 0.0;
    double alpha = 1.0;
};
