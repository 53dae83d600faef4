#include "logging/ProgressText.h"

#include "toolkit/support/Resources.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace {

constexpr int remainingId = 12197;
constexpr int finishedId = 12196;

LightweightString<wchar_t> withTime(int resourceId, int seconds)
{
    LightweightString<wchar_t> text = resourceStrW(resourceId);
    const std::wstring_view placeholder = L"$TIME$";
    const size_t at = text.find(placeholder);
    if (at != LightweightString<wchar_t>::npos)
        text.replace(at, placeholder.size(), ProgressText::formatTime(seconds).view());
    return text;
}

} // namespace

namespace ProgressText {

std::optional<int> secondsRemaining(double elapsedMsecs, double fraction)
{
    if (std::fabs(fraction) < 1e-6)
        return std::nullopt;
    const double seconds = std::trunc((elapsedMsecs / fraction - elapsedMsecs) / 1000.0);
    if (!std::isfinite(seconds))
        return std::nullopt;
    return static_cast<int>(std::clamp(seconds, -2147483647.0, 2147483647.0));
}

LightweightString<wchar_t> formatTime(int seconds)
{
    wchar_t text[32];
    std::swprintf(text, 32, L"%02d:%02d:%02d", seconds / 3600, (seconds / 60) % 60, seconds % 60);
    return text;
}

LightweightString<wchar_t> remainingText(int seconds)
{
    return withTime(remainingId, seconds);
}

LightweightString<wchar_t> finishedText(int seconds)
{
    return withTime(finishedId, seconds);
}

} // namespace ProgressText
