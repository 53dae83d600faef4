#include "colour/HSWheelGeometry.h"

#include <cmath>
#include <cstdint>

namespace HSWheelGeometry {

namespace {

constexpr double degreesPerRadian = 180.0 / pi;

} // namespace

double convertHueToDisplayAngle(double hue)
{
    return std::fmod(360.0 - hue - rotation, 360.0);
}

double convertDisplayToHueAngle(double angle)
{
    return 360.0 - std::fmod(angle + rotation, 360.0);
}

double displayAngleOf(double x, double y)
{
    if (x == 0.0)
        return y > 0.0 ? 0.0 : 180.0;
    if (y == 0.0)
        return x > 0.0 ? 90.0 : 270.0;
    const double t = std::atan(std::fabs(x) / std::fabs(y)) * degreesPerRadian;
    if (x > 0.0)
        return y > 0.0 ? t : 180.0 - t;
    return y < 0.0 ? 180.0 + t : 360.0 - t;
}

int convertHStoXY(double radius, double hue, double saturation, double& x, double& y)
{
    if (!(hue >= 0.0 && hue <= 360.0 && saturation >= 0.0 && saturation <= 1.0))
        return -1;
    const double a = convertHueToDisplayAngle(hue) / degreesPerRadian;
    const double r = saturation * radius;
    x = std::sin(a) * r;
    y = std::cos(a) * r;
    return 0;
}

int convertXYtoHS(double radius, double x, double y, double& hue, double& saturation)
{
    const double d = std::sqrt(x * x + y * y);
    // Whole pixels on purpose (see the header). Values beyond the 64-bit range cannot be inside any wheel.
    if (!(d < 9.2e18) || !(radius < 9.2e18) || static_cast<int64_t>(d) >= static_cast<int64_t>(radius))
        return -1;
    saturation = d / radius;
    hue = convertDisplayToHueAngle(displayAngleOf(x, y));
    return 0;
}

bool pointOfInterest(double radius, double x, double y)
{
    return -radius <= x && x <= radius && -radius <= y && y <= radius;
}

bool validColourPoint(double radius, double x, double y)
{
    return std::sqrt(x * x + y * y) <= radius;
}

bool snapPoint(double radius, double& x, double& y)
{
    if (std::sqrt(x * x + y * y) <= radius)
        return false;
    const double t = std::atan(std::fabs(x) / std::fabs(y));
    const double newX = std::sin(t) * radius;
    const double newY = std::cos(t) * radius;
    x = x > 0.0 ? newX : (x < 0.0 ? -newX : 0.0);
    y = y < 0.0 ? -newY : newY;
    return true;
}

} // namespace HSWheelGeometry
