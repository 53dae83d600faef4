#include "colour/EyeDropperButton.h"

#include "toolkit/gfx/Painter.h"

#include <array>

Pictor::Image EyeDropperButton::makeIcon(int size, const Palette& palette)
{
    Pictor::Image image(size, size);
    Pictor::Painter p(image);
    const double s = size / 32.0;
    const Colour ink = palette.text();
    // The glass tube, drawn from its tip at the bottom-left up to the bulb at the top-right.
    const std::array<XY<double>, 4> tube = {XY<double>(4 * s, 4 * s), XY<double>(7 * s, 3 * s),
                                            XY<double>(21 * s, 17 * s), XY<double>(17 * s, 21 * s)};
    p.fillPolygon(tube, ink);
    const std::array<XY<double>, 4> collar = {XY<double>(15 * s, 21 * s), XY<double>(21 * s, 15 * s),
                                              XY<double>(24 * s, 18 * s), XY<double>(18 * s, 24 * s)};
    p.fillPolygon(collar, ink);
    Pictor::EllipseDescription bulb;
    bulb.centre = {24 * s, 24 * s};
    bulb.radii = {5 * s, 5 * s};
    bulb.fill = ink;
    p.drawEllipse(bulb);
    return image;
}

void EyeDropperButton::evaluatePixelAndNotify(uint16_t x, uint16_t y)
{
    LightweightString<char> msg;
    grabPixelColour(x, y, msg);
    callMsg(msg);
}
