#pragma once
// The table of project output formats: every delivery a project can be finished to, each a Details (see
// OutputFormatDetails.h), addressed by its index in the table. Which formats a project may use follows from
// its frame rate: a format is allowed when its frame rate (frames, not fields) equals the project's.

#include "toolkit/media/FrameRate.h"
#include "toolkit/media/OutputFormatDetails.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace OutputFormat {

uint32_t getNumFormats();
// The format at a table index; a default (empty) Details for an index past the end.
const Details& getFormat(uint32_t index);
// The heading text of a type ("HD 1080i"); empty for a number above 15.
LightweightString<wchar_t> getDisplayString(uint32_t type);
inline LightweightString<wchar_t> getDisplayString(Type type) { return getDisplayString(static_cast<uint32_t>(type)); }

// Table indices of the formats whose frame rate is `rate`, in table order.
std::vector<uint32_t> getAllowedOutputFormatsForProjectFrameRate(Cv::FrameRate rate);

// Keeps the current project consistent: when its output format is not allowed for its frame rate, the
// first allowed format of the same type (else the first allowed format) replaces it. A rate for which no
// format exists leaves the project as it is. Answers whether the output format was changed.
bool validateProjectSettings();

// Replaces the table while it lives (tests that need a particular table).
class ScopedTable {
public:
    explicit ScopedTable(std::vector<Details> formats);
    ~ScopedTable();
    ScopedTable(const ScopedTable&) = delete;
    ScopedTable& operator=(const ScopedTable&) = delete;

private:
    std::vector<Details> m_saved;
};

} // namespace OutputFormat
