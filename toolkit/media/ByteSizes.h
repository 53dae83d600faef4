#pragma once
// Writing sizes of files and drives for a person. Units step by 1024, as file systems count them.

#include "toolkit/support/LightweightString.h"

#include <cstdint>

// Below 1024: "1 byte", "512 bytes". Above, three significant figures at most and the largest unit that
// leaves a whole part: "1.5 KB", "234 GB", "12.3 MB" (abbreviated) or "1.5 kilobytes" (not).
LightweightString<wchar_t> bytesAsString(uint64_t bytes, bool abbreviated);
