#pragma once
// Video frame rates: a closed catalogue of the rates broadcast and file-based work uses, each with its exact
// rational value (the 1000/1001 family as 24000/1001, 30000/1001 and so on, never a rounded decimal) and one
// display string. Display strings are distinct, and getFrameRateFromDisplayString is their exact inverse, so a
// rate can travel through a menu's text and come back unchanged.

#include "toolkit/support/LightweightString.h"

#include <cstdint>
#include <vector>

namespace Cv {

// The numbering is stable: values are stored in projects and preferences.
enum class FrameRate : uint32_t {
    Unknown = 0,
    Fps23_976 = 1, // 24000/1001, film transferred to 59.94 Hz video
    Fps24 = 2,
    Fps25 = 3,
    Fps29_97 = 4, // 30000/1001, 525-line colour video
    Fps30 = 5,
    Fps47_952 = 6, // 48000/1001
    Fps48 = 7,
    Fps50 = 8,
    Fps59_94 = 9, // 60000/1001
    Fps60 = 10,
    Fps100 = 11,
    Fps119_88 = 12, // 120000/1001
    Fps120 = 13,
    Fps12 = 14, // animation on twos, time-lapse
    Fps15 = 15,
    Fps96 = 16,
};

// Frames per second as an exact fraction, in lowest terms.
struct FrameRateRational {
    uint32_t numerator = 0;
    uint32_t denominator = 1;
    friend bool operator==(const FrameRateRational&, const FrameRateRational&) = default;
};

// Which rates a caller offers. Group 1 are the rates a person picks for a project.
enum class FrameRateGroup : int {
    All = 0,
    ProjectRates = 1,
    HighFrameRates = 2, // acquisition and high-frame-rate delivery
    LowFrameRates = 3, // animation, time-lapse, web
};

// The rates of a group in display order (slowest first); empty for a group that does not exist.
std::vector<FrameRate> getFrameRates(FrameRateGroup group);
inline std::vector<FrameRate> getFrameRates(int group) { return getFrameRates(static_cast<FrameRateGroup>(group)); }

// "25 fps", "29.97 fps", ...; empty for Unknown or a value outside the catalogue.
LightweightString<wchar_t> getDisplayString(FrameRate rate);
// The inverse of getDisplayString; Unknown for any text that is not exactly one of its strings.
FrameRate getFrameRateFromDisplayString(const LightweightString<wchar_t>& text);

// {0, 1} for Unknown or a value outside the catalogue.
FrameRateRational getRational(FrameRate rate);
// The catalogue rate with exactly this value (any equal fraction, not only lowest terms), else Unknown.
FrameRate getFrameRateFromRational(FrameRateRational value);
// Frames per second as a double, 0.0 for Unknown; for display and arithmetic, never for comparison.
double getFramesPerSecond(FrameRate rate);
// The rate twice as fast (the field rate of an interlaced picture at this frame rate), else Unknown.
FrameRate getDoubledRate(FrameRate rate);
// True for the 1000/1001 family, whose timecode may be counted drop-frame.
bool isNtscFamily(FrameRate rate);

} // namespace Cv
