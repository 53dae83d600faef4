#pragma once
// Cv::Box: an axis-aligned rectangle. The edges are kept ordered (left <= right, low y <= high y) whatever
// order the corners were given in, so width and height are never negative, even for unsigned T.
//
// Which y edge is called "top" depends on the traits: with BottomUpTraits (the toolkit's own coordinates,
// as in a widget's area) y grows upward, so top is the larger y. TopDownTraits serves image and surface rows.
//
// A box covers [left, right) x [bottom, top) in bottom-up terms: a point on the left or lower edge is inside,
// one on the right or upper edge is not. Neighbouring boxes therefore share no pixel, and a box of width 0 or
// height 0 is empty and contains nothing.

#include "toolkit/support/XY.h"

#include <algorithm>
#include <type_traits>

namespace Cv {

struct BottomUpTraits {
    static constexpr bool yGrowsUp = true;
};
struct TopDownTraits {
    static constexpr bool yGrowsUp = false;
};

template <typename T, typename Traits = BottomUpTraits>
class Box {
public:
    using value_type = T;

    constexpr Box() = default;
    // Any two opposite corners, in any order.
    constexpr Box(T xA, T yA, T xB, T yB)
        : m_x0(std::min(xA, xB)), m_y0(std::min(yA, yB)), m_x1(std::max(xA, xB)), m_y1(std::max(yA, yB))
    {
    }
    constexpr Box(XY<T> a, XY<T> b) : Box(a.x, a.y, b.x, b.y) {}
    // The corner with the smallest coordinates (bottom-left when y grows up) and a size.
    static constexpr Box fromOriginAndSize(XY<T> origin, XY<T> size)
    {
        return Box(origin.x, origin.y, static_cast<T>(origin.x + size.x), static_cast<T>(origin.y + size.y));
    }

    constexpr T left() const { return m_x0; }
    constexpr T right() const { return m_x1; }
    constexpr T bottom() const { return Traits::yGrowsUp ? m_y0 : m_y1; }
    constexpr T top() const { return Traits::yGrowsUp ? m_y1 : m_y0; }
    constexpr T width() const { return static_cast<T>(m_x1 - m_x0); }
    constexpr T height() const { return static_cast<T>(m_y1 - m_y0); }
    constexpr XY<T> size() const { return {width(), height()}; }
    // The corner with the smallest coordinates, whatever the traits call it.
    constexpr XY<T> origin() const { return {m_x0, m_y0}; }
    constexpr XY<T> centre() const
    {
        return {static_cast<T>(m_x0 + (m_x1 - m_x0) / 2), static_cast<T>(m_y0 + (m_y1 - m_y0) / 2)};
    }
    constexpr bool empty() const { return !(m_x0 < m_x1) || !(m_y0 < m_y1); }

    constexpr bool contains(T x, T y) const { return m_x0 <= x && x < m_x1 && m_y0 <= y && y < m_y1; }
    constexpr bool contains(XY<T> p) const { return contains(p.x, p.y); }
    // An empty box is contained in everything (it covers no point).
    constexpr bool contains(const Box& other) const
    {
        return other.empty()
            || (m_x0 <= other.m_x0 && other.m_x1 <= m_x1 && m_y0 <= other.m_y0 && other.m_y1 <= m_y1);
    }
    constexpr bool intersects(const Box& other) const { return !intersection(other).empty(); }

    // The common area; a default (empty) box when there is none, so that callers may test empty().
    constexpr Box intersection(const Box& other) const
    {
        const T x0 = std::max(m_x0, other.m_x0);
        const T y0 = std::max(m_y0, other.m_y0);
        const T x1 = std::min(m_x1, other.m_x1);
        const T y1 = std::min(m_y1, other.m_y1);
        if (!(x0 < x1) || !(y0 < y1))
            return Box();
        return Box(x0, y0, x1, y1);
    }
    // The smallest box covering both. Empty boxes cover nothing, so they do not stretch the result
    // (a dirty area that starts empty grows only by what is added to it).
    constexpr Box unionWith(const Box& other) const
    {
        if (other.empty())
            return *this;
        if (empty())
            return other;
        return Box(std::min(m_x0, other.m_x0), std::min(m_y0, other.m_y0), std::max(m_x1, other.m_x1),
                   std::max(m_y1, other.m_y1));
    }

    constexpr Box translated(T dx, T dy) const
    {
        return Box(static_cast<T>(m_x0 + dx), static_cast<T>(m_y0 + dy), static_cast<T>(m_x1 + dx),
                   static_cast<T>(m_y1 + dy));
    }
    constexpr Box translated(XY<T> by) const { return translated(by.x, by.y); }
    // Grows every edge outward by d; a negative d shrinks, and a box shrunk past nothing collapses to its centre.
    constexpr Box expanded(T d) const
    {
        if constexpr (std::is_signed_v<T>) {
            if (d < T(0) && (width() < static_cast<T>(-2 * d) || height() < static_cast<T>(-2 * d))) {
                const XY<T> c = centre();
                return Box(c, c);
            }
        }
        return Box(static_cast<T>(m_x0 - d), static_cast<T>(m_y0 - d), static_cast<T>(m_x1 + d),
                   static_cast<T>(m_y1 + d));
    }

    // Layout slicing: cuts a strip off one side, shrinking this box, and answers the strip. The amount is
    // limited to 0..what the box holds, so slicing never produces a box turned inside out.
    constexpr Box removeFromLeft(T amount)
    {
        const T cut = std::clamp(amount, T(0), width());
        const Box strip(m_x0, m_y0, static_cast<T>(m_x0 + cut), m_y1);
        m_x0 = static_cast<T>(m_x0 + cut);
        return strip;
    }
    constexpr Box removeFromRight(T amount)
    {
        const T cut = std::clamp(amount, T(0), width());
        const Box strip(static_cast<T>(m_x1 - cut), m_y0, m_x1, m_y1);
        m_x1 = static_cast<T>(m_x1 - cut);
        return strip;
    }
    constexpr Box removeFromTop(T amount) { return Traits::yGrowsUp ? removeHigh(amount) : removeLow(amount); }
    constexpr Box removeFromBottom(T amount) { return Traits::yGrowsUp ? removeLow(amount) : removeHigh(amount); }

    constexpr bool operator==(const Box&) const = default;

private:
    constexpr Box removeLow(T amount)
    {
        const T cut = std::clamp(amount, T(0), height());
        const Box strip(m_x0, m_y0, m_x1, static_cast<T>(m_y0 + cut));
        m_y0 = static_cast<T>(m_y0 + cut);
        return strip;
    }
    constexpr Box removeHigh(T amount)
    {
        const T cut = std::clamp(amount, T(0), height());
        const Box strip(m_x0, static_cast<T>(m_y1 - cut), m_x1, m_y1);
        m_y1 = static_cast<T>(m_y1 - cut);
        return strip;
    }

    T m_x0{};
    T m_y0{};
    T m_x1{};
    T m_y1{};
};

} // namespace Cv
