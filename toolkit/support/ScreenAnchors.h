#pragma once
// Where something is anchored on the screen (CoordinateOrigin) or beside a widget (WidgetRelativity), and the
// lower-case words these are stored as in files. Reading is forgiving: an unknown word gives the default
// value, so a file written by a newer version still loads.

#include "toolkit/support/LightweightString.h"

#include <cstdint>
#include <string_view>

// A corner, edge or the centre of the screen, as bits: one horizontal side and one vertical side may be
// combined (eOriginTop | eOriginLeft is the top-left corner, 17). No bit on an axis means centred on it, so 0
// is the centre of the screen.
enum CoordinateOrigin : uint32_t {
    eOriginCentre = 0,
    eOriginLeft = 1,
    eOriginRight = 2,
    eOriginTop = 16,
    eOriginBottom = 32,
    eOriginTopLeft = eOriginTop | eOriginLeft,
    eOriginTopRight = eOriginTop | eOriginRight,
    eOriginBottomLeft = eOriginBottom | eOriginLeft,
    eOriginBottomRight = eOriginBottom | eOriginRight,
};

// Where something goes relative to a widget. Right of it is the default (3).
enum WidgetRelativity : uint32_t {
    eRelativeAbove = 0,
    eRelativeBelow = 1,
    eRelativeLeft = 2,
    eRelativeRight = 3,
    eRelativeOver = 4, // on top of the widget, covering it
};

// "centre", "left", "right", "top", "bottom", "top left", "top right", "bottom left", "bottom right".
// A value that is none of these (both left and right, say) has no name and answers the empty text.
LightweightString<char> asString(CoordinateOrigin origin);
// "above", "below", "left", "right", "over"; the empty text for any other value.
LightweightString<char> asString(WidgetRelativity relativity);

// Exact, case-sensitive matches of the names above; anything else (the empty text included) gives
// eOriginCentre and eRelativeRight, the defaults.
CoordinateOrigin CoordinateOriginFromString(std::string_view text);
WidgetRelativity WidgetRelativityFromString(std::string_view text);
