#pragma once
// XY: a point or a size in two dimensions. Widget positions are XY<int> (signed: a child may sit left of or
// below its parent's origin); widget sizes are XY<uint16_t>. Arithmetic happens in the promoted type and is
// narrowed back to T, so XY<uint16_t> behaves as the 16-bit quantity it stands for.

#include <type_traits>

template <typename T>
struct XY {
    static_assert(std::is_arithmetic_v<T>, "XY holds numbers");
    using value_type = T;

    constexpr XY() = default;
    constexpr XY(T xValue, T yValue) : x(xValue), y(yValue) {}
    // Converting between element types is explicit: narrowing a position to a size must be a visible choice.
    template <typename U>
    constexpr explicit XY(const XY<U>& other) : x(static_cast<T>(other.x)), y(static_cast<T>(other.y))
    {
    }

    constexpr XY& operator+=(const XY& o)
    {
        x = static_cast<T>(x + o.x);
        y = static_cast<T>(y + o.y);
        return *this;
    }
    constexpr XY& operator-=(const XY& o)
    {
        x = static_cast<T>(x - o.x);
        y = static_cast<T>(y - o.y);
        return *this;
    }
    constexpr XY& operator*=(T factor)
    {
        x = static_cast<T>(x * factor);
        y = static_cast<T>(y * factor);
        return *this;
    }
    // Division by zero is the caller's fault, exactly as for the plain numbers.
    constexpr XY& operator/=(T divisor)
    {
        x = static_cast<T>(x / divisor);
        y = static_cast<T>(y / divisor);
        return *this;
    }

    friend constexpr XY operator+(XY a, const XY& b) { return a += b; }
    friend constexpr XY operator-(XY a, const XY& b) { return a -= b; }
    friend constexpr XY operator*(XY a, T factor) { return a *= factor; }
    friend constexpr XY operator*(T factor, XY a) { return a *= factor; }
    friend constexpr XY operator/(XY a, T divisor) { return a /= divisor; }
    constexpr XY operator-() const
        requires std::is_signed_v<T>
    {
        return XY(static_cast<T>(-x), static_cast<T>(-y));
    }
    constexpr bool operator==(const XY&) const = default;

    T x{};
    T y{};
};
