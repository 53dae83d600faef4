#pragma once
// The time rule every progress display shares: how long is left, and how a time is shown.

#include "toolkit/support/LightweightString.h"

#include <optional>

namespace ProgressText {

// Whole seconds left, from the milliseconds spent so far and the fraction done; none when nothing is done
// yet (a fraction within 1e-6 of 0), since no rate can be told from that.
std::optional<int> secondsRemaining(double elapsedMsecs, double fraction);
// "hh:mm:ss"; hours are not limited to two digits.
LightweightString<wchar_t> formatTime(int seconds);
// The "... remaining" and "finished in ..." texts of the string table, with the time in place.
LightweightString<wchar_t> remainingText(int seconds);
LightweightString<wchar_t> finishedText(int seconds);

} // namespace ProgressText
