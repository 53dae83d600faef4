#include "toolkit/ui/WidgetPosition.h"

#include <algorithm>
#include <cmath>

namespace Placement {

int align(const WidgetAlignment& alignment, int start, int room, int size)
{
    switch (alignment.kind) {
    case WidgetAlignment::Start:
        return start;
    case WidgetAlignment::Centre:
        return start + (room - size) / 2;
    case WidgetAlignment::End:
        return start + room - size;
    case WidgetAlignment::Fraction: {
        const float f = std::isfinite(alignment.fraction) ? std::clamp(alignment.fraction, 0.0f, 1.0f) : 0.0f;
        return start + static_cast<int>(std::lround(f * static_cast<float>(room - size)));
    }
    }
    return start;
}

XY<int> resolve(const WidgetPosition& p, XY<int> size, const GlobBox& userArea, const GlobBox* sibling)
{
    // The kinds that are not placed against a sibling use the sibling's box, when given, as their reference.
    const GlobBox& ref = (sibling && !p.isRelativeToSibling()) ? *sibling : userArea;

    switch (p.kind) {
    case WidgetPosition::Absolute:
        return { p.x, p.y };
    case WidgetPosition::TopLeft:
        return { ref.left() + p.x, ref.top() - p.y - size.y };
    case WidgetPosition::BottomLeft:
        return { ref.left() + p.x, ref.bottom() + p.y };
    case WidgetPosition::Centre:
        return { ref.left() + (ref.width() - size.x) / 2 + p.x, ref.bottom() + (ref.height() - size.y) / 2 + p.y };
    case WidgetPosition::RightCentre:
        return { ref.right() - p.x - size.x, ref.bottom() + (ref.height() - size.y) / 2 + p.y };
    case WidgetPosition::Below: {
        if (!sibling)
            return { align(p.alignment, userArea.left(), userArea.width(), size.x), userArea.top() - size.y };
        const GlobBox& across = p.alignment.toUserArea ? userArea : *sibling;
        return { align(p.alignment, across.left(), across.width(), size.x), sibling->bottom() - p.y - size.y };
    }
    case WidgetPosition::RightOf: {
        if (!sibling)
            return { userArea.left(), userArea.top() - size.y };
        const GlobBox& across = p.alignment.toUserArea ? userArea : *sibling;
        // Start is the top edge here, so measure the span downward from the top.
        const int fromTop = align(p.alignment, 0, across.height(), size.y);
        return { sibling->right() + p.x, across.top() - fromTop - size.y };
    }
    }
    return { p.x, p.y };
}

GlobBox keepInside(const GlobBox& box, const GlobBox& area)
{
    int x = box.left();
    int y = box.bottom();
    // Right and bottom first, then left and top, so that when the box is too big the top-left wins.
    if (box.right() > area.right())
        x = area.right() - box.width();
    if (y < area.bottom())
        y = area.bottom();
    if (x < area.left())
        x = area.left();
    if (y + box.height() > area.top())
        y = area.top() - box.height();
    return GlobBox::fromOriginAndSize({ x, y }, box.size());
}

GlobBox inset(const GlobBox& outer, int left, int bottom, int right, int top)
{
    const int x0 = outer.left() + std::max(0, left);
    const int y0 = outer.bottom() + std::max(0, bottom);
    const int x1 = std::max(x0, outer.right() - std::max(0, right));
    const int y1 = std::max(y0, outer.top() - std::max(0, top));
    return GlobBox(x0, y0, x1, y1);
}

} // namespace Placement
