#pragma once
// The operating system as the components see it. OS()->fileManager() lists folders by wildcard, deletes
// files and says where the toolkit keeps its data. No shell is involved anywhere.

#include "toolkit/support/LightweightString.h"

#include <mutex>
#include <vector>

class FileManager {
public:
    // The names (without folder) of the regular files in the folder of patternPath whose names match its
    // last part, a wildcard pattern of '*' and '?': listFiles(joinPaths(dir, L"*.CvTutorial")). Sorted by
    // name; names starting with '.' only when the pattern does too. Empty when the folder cannot be read.
    std::vector<LightweightString<wchar_t>> listFiles(const LightweightString<wchar_t>& patternPath) const;
    // Answers whether the file was removed. Folders are never removed.
    bool deleteFile(const LightweightString<wchar_t>& path) const;

    // "$XDG_DATA_HOME/tessel" (by default ~/.local/share/tessel), or the folder set below. Not created here:
    // TextFile::save creates the folders it writes into.
    LightweightString<wchar_t> getBaseDataDirectory() const;
    // Points the base data folder elsewhere (tests, portable installs); an empty path restores the default.
    void setBaseDataDirectory(const LightweightString<wchar_t>& folder);
    // The user's home folder.
    LightweightString<wchar_t> getUserDirectory() const;

private:
    mutable std::mutex m_mutex;
    LightweightString<wchar_t> m_baseOverride;
};

class OperatingSystem {
public:
    FileManager& fileManager() { return m_fileManager; }

private:
    FileManager m_fileManager;
};

// The one operating-system object of the process, made on first use.
OperatingSystem* OS();
