#pragma once
// The lines of a hand-editable table file (the string table, key bindings): LF or CR LF endings, a last line
// with or without its ending, blank lines and lines starting with '#' passed over.

#include <cstddef>
#include <string_view>

// Calls visit(line, lineNumber) for each content line, numbering from 1 over every line of the file. A visit
// that answers false stops the walk; answers whether every content line was visited.
template <typename Visit>
bool forEachContentLine(std::string_view bytes, Visit&& visit)
{
    for (size_t lineNumber = 1; !bytes.empty(); ++lineNumber) {
        const size_t end = bytes.find('\n');
        std::string_view line = bytes.substr(0, end);
        bytes.remove_prefix(end == std::string_view::npos ? bytes.size() : end + 1);
        if (!line.empty() && line.back() == '\r')
            line.remove_suffix(1);
        if (line.empty() || line.front() == '#')
            continue;
        if (!visit(line, lineNumber))
            return false;
    }
    return true;
}
