#include "toolkit/media/FrameRate.h"

#include <algorithm>
#include <array>
#include <numeric>

namespace Cv {
namespace {

struct RateEntry {
    FrameRate rate;
    FrameRateRational value;
    const wchar_t* display;
    FrameRateGroup group;
};

// Display order within each group is the order of this table (slowest first).
constexpr std::array<RateEntry, 16> rateTable { {
    { FrameRate::Fps12, { 12, 1 }, L"12 fps", FrameRateGroup::LowFrameRates },
    { FrameRate::Fps15, { 15, 1 }, L"15 fps", FrameRateGroup::LowFrameRates },
    { FrameRate::Fps23_976, { 24000, 1001 }, L"23.976 fps", FrameRateGroup::ProjectRates },
    { FrameRate::Fps24, { 24, 1 }, L"24 fps", FrameRateGroup::ProjectRates },
    { FrameRate::Fps25, { 25, 1 }, L"25 fps", FrameRateGroup::ProjectRates },
    { FrameRate::Fps29_97, { 30000, 1001 }, L"29.97 fps", FrameRateGroup::ProjectRates },
    { FrameRate::Fps30, { 30, 1 }, L"30 fps", FrameRateGroup::ProjectRates },
    { FrameRate::Fps47_952, { 48000, 1001 }, L"47.952 fps", FrameRateGroup::HighFrameRates },
    { FrameRate::Fps48, { 48, 1 }, L"48 fps", FrameRateGroup::HighFrameRates },
    { FrameRate::Fps50, { 50, 1 }, L"50 fps", FrameRateGroup::ProjectRates },
    { FrameRate::Fps59_94, { 60000, 1001 }, L"59.94 fps", FrameRateGroup::ProjectRates },
    { FrameRate::Fps60, { 60, 1 }, L"60 fps", FrameRateGroup::ProjectRates },
    { FrameRate::Fps96, { 96, 1 }, L"96 fps", FrameRateGroup::HighFrameRates },
    { FrameRate::Fps100, { 100, 1 }, L"100 fps", FrameRateGroup::HighFrameRates },
    { FrameRate::Fps119_88, { 120000, 1001 }, L"119.88 fps", FrameRateGroup::HighFrameRates },
    { FrameRate::Fps120, { 120, 1 }, L"120 fps", FrameRateGroup::HighFrameRates },
} };

const RateEntry* findEntry(FrameRate rate)
{
    auto found = std::find_if(rateTable.begin(), rateTable.end(), [rate](const RateEntry& e) { return e.rate == rate; });
    return found == rateTable.end() ? nullptr : &*found;
}

} // namespace

std::vector<FrameRate> getFrameRates(FrameRateGroup group)
{
    std::vector<FrameRate> rates;
    for (const RateEntry& entry : rateTable)
        if (group == FrameRateGroup::All || entry.group == group)
            rates.push_back(entry.rate);
    return rates;
}

LightweightString<wchar_t> getDisplayString(FrameRate rate)
{
    const RateEntry* entry = findEntry(rate);
    return entry ? LightweightString<wchar_t>(entry->display) : LightweightString<wchar_t>();
}

FrameRate getFrameRateFromDisplayString(const LightweightString<wchar_t>& text)
{
    for (const RateEntry& entry : rateTable)
        if (text == entry.display)
            return entry.rate;
    return FrameRate::Unknown;
}

FrameRateRational getRational(FrameRate rate)
{
    const RateEntry* entry = findEntry(rate);
    return entry ? entry->value : FrameRateRational { 0, 1 };
}

FrameRate getFrameRateFromRational(FrameRateRational value)
{
    if (value.denominator == 0 || value.numerator == 0)
        return FrameRate::Unknown;
    const uint32_t divisor = std::gcd(value.numerator, value.denominator);
    const FrameRateRational reduced { value.numerator / divisor, value.denominator / divisor };
    for (const RateEntry& entry : rateTable)
        if (entry.value == reduced)
            return entry.rate;
    return FrameRate::Unknown;
}

double getFramesPerSecond(FrameRate rate)
{
    const FrameRateRational value = getRational(rate);
    return static_cast<double>(value.numerator) / value.denominator;
}

FrameRate getDoubledRate(FrameRate rate)
{
    const FrameRateRational value = getRational(rate);
    if (value.numerator == 0)
        return FrameRate::Unknown;
    return getFrameRateFromRational({ value.numerator * 2, value.denominator });
}

bool isNtscFamily(FrameRate rate) { return getRational(rate).denominator == 1001; }

} // namespace Cv
