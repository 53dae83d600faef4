#include "toolkit/support/ScreenAnchors.h"

#include <array>
#include <utility>

namespace {

constexpr std::array<std::pair<CoordinateOrigin, std::string_view>, 9> kOriginNames { {
    { eOriginCentre, "centre" },
    { eOriginLeft, "left" },
    { eOriginRight, "right" },
    { eOriginTop, "top" },
    { eOriginBottom, "bottom" },
    { eOriginTopLeft, "top left" },
    { eOriginTopRight, "top right" },
    { eOriginBottomLeft, "bottom left" },
    { eOriginBottomRight, "bottom right" },
} };

constexpr std::array<std::pair<WidgetRelativity, std::string_view>, 5> kRelativityNames { {
    { eRelativeAbove, "above" },
    { eRelativeBelow, "below" },
    { eRelativeLeft, "left" },
    { eRelativeRight, "right" },
    { eRelativeOver, "over" },
} };

template <typename Enum, size_t N>
LightweightString<char> nameOf(const std::array<std::pair<Enum, std::string_view>, N>& names, Enum value)
{
    for (const auto& [candidate, name] : names)
        if (candidate == value)
            return LightweightString<char>(name);
    return {};
}

template <typename Enum, size_t N>
Enum valueOf(const std::array<std::pair<Enum, std::string_view>, N>& names, std::string_view text, Enum fallback)
{
    for (const auto& [value, name] : names)
        if (name == text)
            return value;
    return fallback;
}

} // namespace

LightweightString<char> asString(CoordinateOrigin origin)
{
    return nameOf(kOriginNames, origin);
}

LightweightString<char> asString(WidgetRelativity relativity)
{
    return nameOf(kRelativityNames, relativity);
}

CoordinateOrigin CoordinateOriginFromString(std::string_view text)
{
    return valueOf(kOriginNames, text, eOriginCentre);
}

WidgetRelativity WidgetRelativityFromString(std::string_view text)
{
    return valueOf(kRelativityNames, text, eRelativeRight);
}
