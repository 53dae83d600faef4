#include "toolkit/widgets/TextAlignment.h"

#include "toolkit/gfx/Painter.h"

Pictor::TextAlign TextAlignment::toPainter(Horizontal h)
{
    switch (h) {
    case HCentre:
        return Pictor::TextAlign::Centre;
    case Right:
        return Pictor::TextAlign::Right;
    default:
        return Pictor::TextAlign::Left;
    }
}
