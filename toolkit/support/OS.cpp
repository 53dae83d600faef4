#include "toolkit/support/OS.h"

#include "toolkit/support/FileUtils.h"

std::vector<LightweightString<wchar_t>> FileManager::listFiles(const LightweightString<wchar_t>& patternPath) const
{
    const LightweightString<wchar_t> pattern = stripPath(patternPath);
    const LightweightString<wchar_t> folder = getDirectory(patternPath);
    unsigned flags = eDirFiles;
    if (pattern.startsWith(L"."))
        flags |= eDirHidden;
    std::vector<LightweightString<wchar_t>> names;
    getDirectoryContents(folder, pattern, names, flags);
    return names;
}

bool FileManager::deleteFile(const LightweightString<wchar_t>& path) const
{
    return removeFile(path);
}

LightweightString<wchar_t> FileManager::getBaseDataDirectory() const
{
    {
        std::lock_guard lock(m_mutex);
        if (!m_baseOverride.empty())
            return m_baseOverride;
    }
    return joinPaths(getDataHomeDirectory(), L"tessel");
}

void FileManager::setBaseDataDirectory(const LightweightString<wchar_t>& folder)
{
    std::lock_guard lock(m_mutex);
    m_baseOverride = folder;
}

LightweightString<wchar_t> FileManager::getUserDirectory() const
{
    return ::getUserDirectory();
}

OperatingSystem* OS()
{
    static OperatingSystem os;
    return &os;
}
