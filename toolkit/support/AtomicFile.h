#pragma once
// Whole-file reading and writing. Writing user data so that a crash never leaves a half-written file: the bytes go to a temporary file
// in the same folder, are flushed to disk, and only then renamed over the destination.

#include <cstddef>
#include <string>
#include <string_view>

namespace Cv {

// Answers false (and leaves any previous file untouched) when the data could not be written in full.
bool writeFileAtomically(const std::string& utf8Path, std::string_view bytes);

// Reads at most maxBytes of a file: a settings file grown huge by accident must not exhaust memory.
// A file that cannot be opened reads as empty.
std::string readFilePrefix(const std::string& utf8Path, size_t maxBytes);

} // namespace Cv
