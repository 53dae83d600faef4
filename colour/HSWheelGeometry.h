#pragma once
// HSWheelGeometry: where a hue and saturation lie on a round wheel of a given radius, and back.
//
// Positions are relative to the wheel's centre, y growing upward. The display angle of a position is measured
// clockwise from straight up (0 top, 90 right, 180 bottom, 270 left). The hue runs the other way round and is
// turned by a fixed 14 degrees, so that the hues line up with the colour tools the wheel sits beside; both
// choices are part of what users and saved layouts expect, so they stay exactly as they are.
//
// The conversions keep a few deliberate quirks that callers rely on:
//   - convertXYtoHS tests the rim in whole pixels (the truncated distance must be below the truncated
//     radius), so a point less than a pixel inside the rim may be refused while validColourPoint accepts it;
//   - the centre has a display angle of 180, and a hue of 0 comes back as 360 (hues lie in (0, 360]);
//   - convertHueToDisplayAngle keeps the sign of fmod, so hues above 346 give small negative angles.

namespace HSWheelGeometry {

constexpr double rotation = 14.0;
constexpr double pi = 3.141592653589793;

double convertHueToDisplayAngle(double hue);
double convertDisplayToHueAngle(double angle);
// The display angle of a position (180 at the centre).
double displayAngleOf(double x, double y);

// Answers 0, or -1 (outputs untouched) when the hue is outside 0..360 or the saturation outside 0..1.
int convertHStoXY(double radius, double hue, double saturation, double& x, double& y);
// Answers 0, or -1 (outputs untouched) when the point is not within the rim by the whole-pixel test.
int convertXYtoHS(double radius, double x, double y, double& hue, double& saturation);
// The wheel's bounding square, edges and corners included.
bool pointOfInterest(double radius, double x, double y);
bool validColourPoint(double radius, double x, double y);
// Moves a point outside the rim onto it along its own bearing and answers true; a point inside is left alone.
bool snapPoint(double radius, double& x, double& y);

} // namespace HSWheelGeometry
