#pragma once
// Placement of a child inside its parent. A WidgetPosition says where a child goes (against the parent's user
// area, or against a sibling); resolvePosition turns it into the child's bottom-left corner. The arithmetic is
// a set of plain functions on rectangles so that it can be checked without a single widget.
//
// Coordinates are bottom-up: a child's position is its bottom-left corner measured from the parent's
// bottom-left, y growing upward. Offsets in the "top" forms (UserTopLeft, Below) are measured downward, the
// way people read a panel.

#include "toolkit/support/Box.h"
#include "toolkit/support/XY.h"

#include <cstdint>

class Glob;

using GlobBox = Cv::Box<int, Cv::BottomUpTraits>;

// How a child lines up across the direction it is placed in: along x for Below, along y for RightOf.
struct WidgetAlignment {
    enum Kind : uint8_t {
        Start, // left edges (Below) or top edges (RightOf) line up
        Centre, // centres line up
        End, // right edges (Below) or bottom edges (RightOf) line up
        Fraction, // the child sits at `fraction` of the free room: 0 is Start, 1 is End
    };

    constexpr WidgetAlignment() = default;
    constexpr WidgetAlignment(Kind k, bool userArea = false, float frac = 0.0f)
        : kind(k)
        , toUserArea(userArea)
        , fraction(frac)
    {
    }
    constexpr bool operator==(const WidgetAlignment&) const = default;

    Kind kind = Start;
    // Line up with the parent's user area instead of the sibling (rows that always start at the left margin).
    bool toUserArea = false;
    float fraction = 0.0f;
};

struct WidgetPosition {
    enum Kind : uint8_t {
        Absolute, // (x, y) is the bottom-left corner in the parent's own coordinates
        TopLeft, // top-left corner at (x right of, y down from) the reference's top-left
        BottomLeft, // bottom-left corner at (x, y) from the reference's bottom-left
        Centre, // centred on the reference, then moved by (x, y)
        RightCentre, // right edge x inside the reference's right edge, centred vertically, moved up by y
        Below, // y below the sibling, lined up by `alignment`
        RightOf, // x right of the sibling, lined up by `alignment`
    };

    constexpr bool operator==(const WidgetPosition&) const = default;
    constexpr bool isRelativeToSibling() const { return kind == Below || kind == RightOf; }

    Kind kind = TopLeft;
    int x = 0;
    int y = 0;
    // The reference: for Below and RightOf the sibling placed against (null: the child added before); for the
    // other kinds a sibling's box used instead of the user area (null: the user area). Absolute ignores it.
    Glob* sibling = nullptr;
    WidgetAlignment alignment;
};

// A child's placement as its parent keeps it: the widget and the (resolved) position it was placed with.
// The sibling of a Below or RightOf position is always filled in here, never null.
struct WidgetDetails {
    Glob* widget = nullptr;
    WidgetPosition position;
};

namespace Placement {

// The child's bottom-left corner, in the parent's coordinates. `userArea` is the parent's user area;
// `sibling` is the box of the position's sibling, or null when it has none (Below and RightOf then start at
// the top-left of the user area). Sizes larger than the room simply overhang; nothing is clamped here.
XY<int> resolve(const WidgetPosition& position, XY<int> childSize, const GlobBox& userArea, const GlobBox* sibling);

// Where a span of `size` starts inside [start, start + room) for an alignment.
int align(const WidgetAlignment& alignment, int start, int room, int size);

// Moves `box` the least distance that puts it inside `area`; a box larger than the area keeps its left and
// top edges inside (the title bar of a panel stays reachable).
GlobBox keepInside(const GlobBox& box, const GlobBox& area);

// The part of `outer` left after taking insets off each side; never turned inside out.
GlobBox inset(const GlobBox& outer, int left, int bottom, int right, int top);

} // namespace Placement
