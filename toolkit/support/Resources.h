#pragma once
// The string table: numbered texts shown to the user, kept out of the code in the data file strings.en.txt so
// they can be reworded (or translated) without rebuilding.
//
// Lookup answers, by id:
//  - 999999 (ResId::none): the empty text.
//  - an id in the table: its text, adapted by the ResStrFmt. Placeholders such as "$TIME$", "$FILE$", "$KEY$"
//    and "$LOCATION$" are left in place for the caller to replace.
//  - any other id: "[#<id>]" (for example "[#12345]"), unformatted, so a missing text shows on screen
//    instead of leaving a blank button.
//
// The file is found, on first lookup, as strings.en.txt in the first of these folders that holds one: the
// environment's TESSEL_DATA_DIR, the source tree's toolkit/data (for runs from the build), the installed
// data folder. File format: one "id<TAB>text" a line; in the text, "\n" is a new line, "\t" a tab and "\\" a
// backslash; lines that are empty or start with '#' are comments.

#include "toolkit/support/LightweightString.h"
#include "toolkit/support/UIString.h"

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

class StringTable {
public:
    StringTable() = default;

    // Replaces the contents with the file's; answers false (and holds nothing) when it cannot be read.
    bool load(const std::string& utf8Path);
    // Never fails: a line that is not "id<TAB>text" with a valid id and escapes is counted and skipped. When
    // an id comes twice the later text wins, and the id is counted.
    void parse(std::string_view bytes);

    // Null when the id has no text.
    const LightweightString<wchar_t>* find(int id) const;
    size_t size() const { return m_texts.size(); }
    // Line numbers (from 1) of the lines skipped by the last parse, and the ids that came more than once.
    const std::vector<size_t>& malformedLines() const { return m_malformed; }
    const std::vector<int>& duplicateIds() const { return m_duplicates; }

    // What lookup answers for an id that has no text.
    static LightweightString<wchar_t> missingText(int id);
    // The path of the shipped table by the search order above, or empty when none is found.
    static std::string findDataFile();

    // The process's table, loaded on first use. Tests may point it at another file; an empty path goes back
    // to searching on the next lookup.
    static std::shared_ptr<const StringTable> global();
    static void setGlobalFile(std::string utf8Path);

private:
    std::unordered_map<int, LightweightString<wchar_t>> m_texts;
    std::vector<size_t> m_malformed;
    std::vector<int> m_duplicates;
};

// Adapts a text for its place: upper, lower or title case (first letter of each word), or an ellipsis
// appended for items that open a further panel (not doubled when the text already ends in one).
LightweightString<wchar_t> applyResStrFmt(const LightweightString<wchar_t>& text, ResStrFmt format);

LightweightString<wchar_t> resourceStrW(ResId id, ResStrFmt format = resFmtAsIs);
LightweightString<wchar_t> resourceStrW(int id, ResStrFmt format = resFmtAsIs);
// The same text as UTF-8, for keys and messages.
LightweightString<char> resourceStr(ResId id, ResStrFmt format = resFmtAsIs);
LightweightString<char> resourceStr(int id, ResStrFmt format = resFmtAsIs);
