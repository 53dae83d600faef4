#include "toolkit/support/params/NumericParams.h"

#include "toolkit/support/params/ParamText.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace GenericParam {

namespace {

int32_t saturate32(int64_t value)
{
    return static_cast<int32_t>(std::clamp<int64_t>(value, std::numeric_limits<int32_t>::min(),
                                                    std::numeric_limits<int32_t>::max()));
}

} // namespace

IntParam::IntParam(LightweightString<wchar_t> legend, LightweightString<char> name, ResId tooltip, int32_t initial,
                   int32_t min, int32_t max, bool rangeEnabled)
    : RangedParam<int32_t>(std::move(legend), std::move(name), tooltip, initial, min, max, rangeEnabled)
{
}

LightweightString<wchar_t> IntParam::toText(const int32_t& value) const
{
    return ParamText::writeInteger(value);
}

std::optional<int32_t> IntParam::fromText(const LightweightString<wchar_t>& text) const
{
    if (const auto whole = ParamText::readInteger(text))
        return saturate32(*whole);
    if (const auto fraction = ParamText::readDouble(text)) {
        // Clamped while still a double: converting an out-of-range double to an integer is undefined.
        const double rounded = std::round(std::clamp(*fraction, double(std::numeric_limits<int32_t>::min()),
                                                     double(std::numeric_limits<int32_t>::max())));
        return static_cast<int32_t>(rounded);
    }
    return std::nullopt;
}

DoubleParam::DoubleParam(LightweightString<wchar_t> legend, LightweightString<char> name, ResId tooltip,
                         double initial, double min, double max, bool rangeEnabled)
    : RangedParam<double>(std::move(legend), std::move(name), tooltip, std::isfinite(initial) ? initial : 0.0,
                          std::isfinite(min) ? min : 0.0, std::isfinite(max) ? max : 0.0, rangeEnabled)
{
}

LightweightString<wchar_t> DoubleParam::toText(const double& value) const
{
    return ParamText::writeDouble(value);
}

std::optional<double> DoubleParam::fromText(const LightweightString<wchar_t>& text) const
{
    return ParamText::readDouble(text);
}

} // namespace GenericParam
