#pragma once
// TextFile: a file of UTF-8 text held as lines, read whole and written whole.
//
// Reading splits at LF, CR LF and a lone CR; the line breaks are not kept, a final line break does not start
// another line ("a\nb\n" and "a\nb" are both two lines), and a UTF-8 byte order mark at the start is dropped.
// Saving writes every line followed by the chosen line break, atomically: a crash leaves the old file or the
// new one, never a mixture. Folders missing on the way to the file are created.

#include "toolkit/support/LightweightString.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

class TextFile {
public:
    // The values are stored by callers: keep them.
    enum eEOLStyle : int {
        eEOLNative = 0, // LF on this system
        eEOLLF = 1,
        eEOLCRLF = 2,
    };
    // A larger file is not read (the text file stays empty and loaded() answers false).
    static constexpr uint64_t kMaxLoadBytes = 256ull << 20;

    TextFile() = default;
    // With loadExisting, reads the file at path if there is one; otherwise starts empty. The path is kept
    // for save(style).
    TextFile(const LightweightString<wchar_t>& path, bool loadExisting);

    const LightweightString<wchar_t>& path() const { return m_path; }
    // Whether the constructor found and read the file.
    bool loaded() const { return m_loaded; }

    size_t getNumLines() const { return m_lines.size(); }
    // Empty for an index past the end.
    const std::string& getLine(size_t index) const;
    LightweightString<wchar_t> getWLine(size_t index) const;
    const std::vector<std::string>& lines() const { return m_lines; }

    // A text holding line breaks is split there into several lines (a final break only ends the last one),
    // so that what is saved reads back the same way.
    void appendLine(std::string_view utf8);
    void appendLine(const LightweightString<wchar_t>& text);
    void clear() { m_lines.clear(); }

    // The bytes save() writes.
    std::string getText(eEOLStyle style) const;
    // Answers whether the whole file was written. An unknown style number counts as native.
    bool save(const LightweightString<wchar_t>& path, eEOLStyle style) const;
    bool save(const LightweightString<wchar_t>& path, int style) const;
    bool save(eEOLStyle style = eEOLNative) const { return save(m_path, style); }

    // Splits text into lines by the rules above.
    static std::vector<std::string> splitLines(std::string_view text);

private:
    LightweightString<wchar_t> m_path;
    std::vector<std::string> m_lines;
    bool m_loaded = false;
};
