#pragma once
// Writing user data so that a crash never leaves a half-written file: the bytes go to a temporary file
// in the same folder, are flushed to disk, and only then renamed over the destination.

#include <string>
#include <string_view>

namespace Cv {

// Answers false (and leaves any previous file untouched) when the data could not be written in full.
bool writeFileAtomically(const std::string& utf8Path, std::string_view bytes);

} // namespace Cv
