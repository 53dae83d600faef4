#pragma once
// Numeric parameters: IntParam (32-bit signed) and DoubleParam. Each has a range (minimum, maximum) and a
// flag saying whether the range applies; a panel shows the range on its slider either way, but only an
// applying range clamps values. A range given upside down is turned the right way up.
//
// Text form: decimal ("42", "-3"; "0.25", "1e-07" for doubles, the shortest text that reads back exactly).
// An IntParam also reads decimal fractions and rounds them to the nearest integer, so that text from a
// double parameter (a bound, a converted widget value) sets it sensibly; numbers beyond 32 bits saturate.
// A DoubleParam refuses infinities and NaN.

#include "toolkit/support/params/ParamBase.h"

#include <cmath>
#include <cstdint>
#include <type_traits>

namespace GenericParam {

template <typename T>
class RangedParam : public ParamBase<T> {
public:
    T getMinValue() const { return m_min; }
    T getMaxValue() const { return m_max; }
    bool isRangeEnabled() const { return m_rangeEnabled; }
    // A stored value outside a newly applying range is clamped, and handlers hear of it. A range with a
    // bound that is not a finite number is ignored.
    void setRange(T min, T max, bool enabled)
    {
        if constexpr (std::is_floating_point_v<T>) {
            if (!std::isfinite(min) || !std::isfinite(max))
                return;
        }
        m_min = min < max ? min : max;
        m_max = min < max ? max : min;
        m_rangeEnabled = enabled;
        this->readjustValue();
    }

protected:
    RangedParam(LightweightString<wchar_t> legend, LightweightString<char> name, ResId tooltip, T initial, T min,
                T max, bool rangeEnabled)
        : ParamBase<T>(std::move(legend), std::move(name), tooltip, initial)
        , m_min(min < max ? min : max)
        , m_max(min < max ? max : min)
        , m_rangeEnabled(rangeEnabled)
    {
        this->adjustInitialValue();
    }

    bool accepts(const T& value) const override
    {
        if constexpr (std::is_floating_point_v<T>)
            return std::isfinite(value);
        else
            return true;
    }
    T adjust(const T& value) const override
    {
        if (!m_rangeEnabled)
            return value;
        return value < m_min ? m_min : (m_max < value ? m_max : value);
    }

private:
    T m_min{};
    T m_max{};
    bool m_rangeEnabled = false;
};

class IntParam : public RangedParam<int32_t> {
public:
    IntParam(LightweightString<wchar_t> legend, LightweightString<char> name, ResId tooltip, int32_t initial,
             int32_t min = 0, int32_t max = 0, bool rangeEnabled = false);

    LightweightString<char> getValueTypeName() const override { return "int"; }

protected:
    LightweightString<wchar_t> toText(const int32_t& value) const override;
    std::optional<int32_t> fromText(const LightweightString<wchar_t>& text) const override;
};

class DoubleParam : public RangedParam<double> {
public:
    DoubleParam(LightweightString<wchar_t> legend, LightweightString<char> name, ResId tooltip, double initial,
                double min = 0.0, double max = 0.0, bool rangeEnabled = false);

    LightweightString<char> getValueTypeName() const override { return "double"; }

protected:
    LightweightString<wchar_t> toText(const double& value) const override;
    std::optional<double> fromText(const LightweightString<wchar_t>& text) const override;
};

} // namespace GenericParam
