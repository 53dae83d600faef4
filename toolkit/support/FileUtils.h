#pragma once
// Paths and folders. Paths are wide text, separated by '/'; they reach the file system as UTF-8.

#include "toolkit/support/LightweightString.h"

#include <string_view>
#include <vector>

// True for an existing entry that is not a folder (a symbolic link counts as what it points to).
bool fileExists(const LightweightString<wchar_t>& path);
bool directoryExists(const LightweightString<wchar_t>& path);

// a and b with exactly one '/' between them, whatever separators they end or start with. An empty part
// answers the other one unchanged; "/" stays the root: joinPaths("/", "x") is "/x".
LightweightString<wchar_t> joinPaths(const LightweightString<wchar_t>& a, const LightweightString<wchar_t>& b);
// The last part of the path, without its folder: "a/b.txt" gives "b.txt". Separators at the end are
// ignored ("a/b/" gives "b"); the root "/" gives "".
LightweightString<wchar_t> stripPath(const LightweightString<wchar_t>& path);
// The folder part, without the separator that follows it: "a/b.txt" gives "a", "/x" gives "/", "x" gives "".
LightweightString<wchar_t> getDirectory(const LightweightString<wchar_t>& path);
// The path without the extension of its last part: "a/b.tar.gz" gives "a/b.tar", "a.d/b" stays, and a name
// that starts with its only dot (".profile") has no extension.
LightweightString<wchar_t> stripExtension(const LightweightString<wchar_t>& path);
// The extension with its dot (".gz"), or empty.
LightweightString<wchar_t> getExtension(const LightweightString<wchar_t>& path);

// Whether name matches a pattern of '*' (any run, also empty) and '?' (any one character); every other
// character stands for itself. ignoreCase folds ASCII letters only. Linear in practice: no backtracking blow-up.
bool matchesWildcard(std::wstring_view pattern, std::wstring_view name, bool ignoreCase = false);

enum eDirectoryContentsFlags : unsigned {
    eDirCaseInsensitive = 0x01, // the pattern ignores the case of ASCII letters
    eDirHidden = 0x02,          // also names that start with '.'
    eDirFiles = 0x04,           // regular files (and other entries that are not folders)
    eDirFolders = 0x08,         // folders
    eDirFullPaths = 0x10,       // answer joinPaths(folder, name) instead of the bare name
};
// Replaces out with the entries of folder whose names match pattern ("*" for all), sorted by name in
// code-point order. With neither eDirFiles nor eDirFolders, both kinds are listed. "." and ".." never are,
// nor names that are not valid UTF-8 (they could not be opened again by the name answered). Answers false
// (and an empty out) when the folder cannot be read.
bool getDirectoryContents(const LightweightString<wchar_t>& folder, const LightweightString<wchar_t>& pattern,
    std::vector<LightweightString<wchar_t>>& out, unsigned flags);

// Creates the folder and any missing parents. True when it exists afterwards.
bool createDirectories(const LightweightString<wchar_t>& path);
// Removes a file (not a folder). Answers whether it was removed.
bool removeFile(const LightweightString<wchar_t>& path);

// The user's home folder ($HOME, else the password database), or empty.
LightweightString<wchar_t> getUserDirectory();
// The XDG base folders: $XDG_DATA_HOME (default ~/.local/share) and $XDG_STATE_HOME (default ~/.local/state).
// A relative value in the variable is ignored, as the XDG rules say. With no home at all, the temporary folder
// stands in for it. Folders these functions create are private to the user.
LightweightString<wchar_t> getDataHomeDirectory();
LightweightString<wchar_t> getStateHomeDirectory();
// Where logs are written: "<state home>/tessel/logs/". Created when missing. Ends with '/'.
LightweightString<wchar_t> getSystemLogDirectory();
// Where a video device keeps its own data: "<data home>/tessel/devices/<device>/". Created when missing.
// Ends with '/', so a file name can be appended directly.
LightweightString<wchar_t> getDeviceDataDirectory(int device = 0);
// Where look-up tables are read from: "<data home>/tessel/luts/" for the user's own set (0), and
// "<data home>/tessel/luts/<set>/" for the others. Created when missing. Ends with '/'.
LightweightString<wchar_t> getLUTDirectory(int set = 0);

namespace Cv::FilespecUtils {

// Turns any text into a name that can be given to a file here: path separators ('/', '\\'), control
// characters and DEL become the replacement; leading and trailing blanks are trimmed; "." and ".." and an
// empty result become the replacement alone; the name is cut to 255 UTF-8 bytes at a character boundary.
// Never empty. A replacement that is itself not allowed is taken as '_'.
LightweightString<wchar_t> makeValidFilespec(const LightweightString<wchar_t>& name, wchar_t replacement = L'_');
// The same, also valid on file systems of other desktops: <>:"|?* become the replacement too, trailing dots
// are dropped, and device names (CON, PRN, AUX, NUL, COM1-9, LPT1-9, with or without an extension) get the
// replacement put in front.
LightweightString<wchar_t> makeValidFilespecNTFS(const LightweightString<wchar_t>& name, wchar_t replacement = L'_');
// A full path: the folder joined with the made-valid name + extension.
LightweightString<wchar_t> makeValidFilespec(const LightweightString<wchar_t>& folder,
    const LightweightString<wchar_t>& name, const LightweightString<wchar_t>& extension, wchar_t replacement = L'_');
LightweightString<wchar_t> makeValidFilespecNTFS(const LightweightString<wchar_t>& folder,
    const LightweightString<wchar_t>& name, const LightweightString<wchar_t>& extension, wchar_t replacement = L'_');

} // namespace Cv::FilespecUtils
