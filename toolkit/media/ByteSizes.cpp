#include "toolkit/media/ByteSizes.h"

#include <cstdio>
#include <iterator>
#include <string>

LightweightString<wchar_t> bytesAsString(uint64_t bytes, bool abbreviated)
{
    if (bytes < 1024)
        return LightweightString<wchar_t>(std::to_wstring(bytes) + (bytes == 1 ? L" byte" : L" bytes"));
    static const wchar_t* const shortUnits[] = { L"KB", L"MB", L"GB", L"TB", L"PB", L"EB" };
    static const wchar_t* const longUnits[] = { L"kilobytes", L"megabytes", L"gigabytes", L"terabytes",
        L"petabytes", L"exabytes" };
    double value = static_cast<double>(bytes) / 1024.0;
    size_t unit = 0;
    while (value >= 1024.0 && unit + 1 < std::size(shortUnits)) {
        value /= 1024.0;
        ++unit;
    }
    // Rounding 1023.96 to three figures would print "1.02e+03"; keep whole numbers from 100 upward.
    wchar_t number[32];
    if (value >= 100.0)
        std::swprintf(number, std::size(number), L"%.0f", value);
    else if (value >= 10.0)
        std::swprintf(number, std::size(number), L"%.1f", value);
    else
        std::swprintf(number, std::size(number), L"%.2f", value);
    std::wstring text(number);
    // "1.50" reads better as "1.5", "2.00" as "2".
    if (text.find(L'.') != std::wstring::npos) {
        while (text.back() == L'0')
            text.pop_back();
        if (text.back() == L'.')
            text.pop_back();
    }
    text += L" ";
    text += abbreviated ? shortUnits[unit] : longUnits[unit];
    return LightweightString<wchar_t>(text);
}
