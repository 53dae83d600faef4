#include "toolkit/support/FileUtils.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <dirent.h>
#include <fcntl.h>
#include <pwd.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

using WString = LightweightString<wchar_t>;

namespace {

std::string narrow(const WString& path)
{
    return toUTF8(path.view()).str();
}

bool isSeparator(wchar_t c)
{
    return c == L'/';
}

// The path without separators at its end; the root keeps its one separator.
std::wstring_view trimTrailingSeparators(std::wstring_view path)
{
    while (path.size() > 1 && isSeparator(path.back()))
        path.remove_suffix(1);
    return path;
}

bool statPath(const WString& path, struct stat& info)
{
    return !path.empty() && ::stat(narrow(path).c_str(), &info) == 0;
}

bool makeDirectories(const WString& path, mode_t mode)
{
    if (path.empty())
        return false;
    const std::string target = narrow(path);
    for (size_t end = 1; end <= target.size(); ++end) {
        if (end < target.size() && target[end] != '/')
            continue;
        if (target[end - 1] == '/')
            continue; // doubled separators
        const std::string prefix = target.substr(0, end);
        if (::mkdir(prefix.c_str(), mode) != 0 && errno != EEXIST)
            return false;
    }
    return directoryExists(path);
}

wchar_t foldAscii(wchar_t c)
{
    return c >= L'A' && c <= L'Z' ? static_cast<wchar_t>(c - L'A' + L'a') : c;
}

bool isValidUtf8Name(const char* name)
{
    const std::string_view bytes(name);
    return toUTF8(fromUTF8(bytes).view()).view() == bytes;
}

WString xdgDirectory(const char* variable, const wchar_t* fallbackBelowHome)
{
    const char* value = std::getenv(variable);
    if (value && value[0] == '/')
        return fromUTF8(value);
    WString home = getUserDirectory();
    if (home.empty())
        home = L"/tmp";
    return joinPaths(home, fallbackBelowHome);
}

WString withTrailingSeparator(WString path)
{
    if (path.empty() || !isSeparator(path.back()))
        path += L'/';
    return path;
}

} // namespace

bool fileExists(const WString& path)
{
    struct stat info {};
    return statPath(path, info) && !S_ISDIR(info.st_mode);
}

bool directoryExists(const WString& path)
{
    struct stat info {};
    return statPath(path, info) && S_ISDIR(info.st_mode);
}

WString joinPaths(const WString& a, const WString& b)
{
    if (a.empty())
        return b;
    if (b.empty())
        return a;
    std::wstring_view head = a.view();
    while (!head.empty() && isSeparator(head.back()))
        head.remove_suffix(1);
    std::wstring_view tail = b.view();
    while (!tail.empty() && isSeparator(tail.front()))
        tail.remove_prefix(1);
    std::wstring joined;
    joined.reserve(head.size() + 1 + tail.size());
    joined.append(head);
    joined += L'/';
    joined.append(tail);
    return WString(std::move(joined));
}

WString stripPath(const WString& path)
{
    const std::wstring_view trimmed = trimTrailingSeparators(path.view());
    if (trimmed.size() == 1 && isSeparator(trimmed[0]))
        return {};
    const size_t slash = trimmed.rfind(L'/');
    const std::wstring_view name = slash == std::wstring_view::npos ? trimmed : trimmed.substr(slash + 1);
    return name.size() == path.size() ? path : WString(name);
}

WString getDirectory(const WString& path)
{
    const std::wstring_view trimmed = trimTrailingSeparators(path.view());
    const size_t slash = trimmed.rfind(L'/');
    if (slash == std::wstring_view::npos)
        return {};
    if (trimmed.size() == 1)
        return {}; // the root has no folder above it
    return WString(trimTrailingSeparators(trimmed.substr(0, slash == 0 ? 1 : slash)));
}

namespace {

// Where the extension's dot is in path, or npos.
size_t extensionDot(std::wstring_view path)
{
    const size_t slash = path.rfind(L'/');
    const size_t nameStart = slash == std::wstring_view::npos ? 0 : slash + 1;
    const size_t dot = path.rfind(L'.');
    if (dot == std::wstring_view::npos || dot <= nameStart)
        return std::wstring_view::npos;
    return dot;
}

} // namespace

WString stripExtension(const WString& path)
{
    const size_t dot = extensionDot(path.view());
    return dot == std::wstring_view::npos ? path : path.substr(0, dot);
}

WString getExtension(const WString& path)
{
    const size_t dot = extensionDot(path.view());
    return dot == std::wstring_view::npos ? WString() : path.substr(dot);
}

bool matchesWildcard(std::wstring_view pattern, std::wstring_view name, bool ignoreCase)
{
    const auto same = [ignoreCase](wchar_t a, wchar_t b) { return ignoreCase ? foldAscii(a) == foldAscii(b) : a == b; };
    // Greedy matching that, on a mismatch, lets the last '*' swallow one more character. Earlier stars never
    // need revisiting, so the cost is at most pattern length times name length.
    size_t p = 0;
    size_t n = 0;
    size_t star = std::wstring_view::npos;
    size_t starName = 0;
    while (n < name.size()) {
        if (p < pattern.size() && pattern[p] == L'*') {
            star = p++;
            starName = n;
        } else if (p < pattern.size() && (pattern[p] == L'?' || same(pattern[p], name[n]))) {
            ++p;
            ++n;
        } else if (star != std::wstring_view::npos) {
            p = star + 1;
            n = ++starName;
        } else
            return false;
    }
    while (p < pattern.size() && pattern[p] == L'*')
        ++p;
    return p == pattern.size();
}

bool getDirectoryContents(const WString& folder, const WString& pattern, std::vector<WString>& out, unsigned flags)
{
    out.clear();
    const std::string where = folder.empty() ? std::string(".") : narrow(folder);
    DIR* dir = ::opendir(where.c_str());
    if (!dir)
        return false;
    const bool wantFiles = (flags & (eDirFiles | eDirFolders)) == 0 || (flags & eDirFiles);
    const bool wantFolders = (flags & (eDirFiles | eDirFolders)) == 0 || (flags & eDirFolders);
    const std::wstring_view wildcard = pattern.empty() ? std::wstring_view(L"*") : pattern.view();
    std::vector<WString> names;
    while (const dirent* entry = ::readdir(dir)) {
        const char* name = entry->d_name;
        if (std::string_view(name) == "." || std::string_view(name) == "..")
            continue;
        if (name[0] == '.' && !(flags & eDirHidden))
            continue;
        if (!isValidUtf8Name(name))
            continue;
        WString wide = fromUTF8(name);
        if (!matchesWildcard(wildcard, wide.view(), flags & eDirCaseInsensitive))
            continue;
        bool isFolder = entry->d_type == DT_DIR;
        if (entry->d_type == DT_UNKNOWN || entry->d_type == DT_LNK) {
            // Links count as what they point to; a dangling one is left out.
            struct stat info {};
            if (::fstatat(::dirfd(dir), name, &info, 0) != 0)
                continue;
            isFolder = S_ISDIR(info.st_mode);
        }
        if (isFolder ? wantFolders : wantFiles)
            names.push_back(std::move(wide));
    }
    ::closedir(dir);
    std::sort(names.begin(), names.end());
    if (flags & eDirFullPaths)
        for (WString& name : names)
            name = joinPaths(folder, name);
    out = std::move(names);
    return true;
}

bool createDirectories(const WString& path)
{
    return makeDirectories(path, 0777);
}

bool removeFile(const WString& path)
{
    return !path.empty() && !directoryExists(path) && ::unlink(narrow(path).c_str()) == 0;
}

WString getUserDirectory()
{
    const char* home = std::getenv("HOME");
    if (home && home[0])
        return fromUTF8(home);
    passwd entry {};
    passwd* found = nullptr;
    char buffer[4096];
    if (::getpwuid_r(::getuid(), &entry, buffer, sizeof buffer, &found) == 0 && found && found->pw_dir)
        return fromUTF8(found->pw_dir);
    return {};
}

WString getDataHomeDirectory()
{
    return xdgDirectory("XDG_DATA_HOME", L".local/share");
}

WString getStateHomeDirectory()
{
    return xdgDirectory("XDG_STATE_HOME", L".local/state");
}

WString getSystemLogDirectory()
{
    const WString folder = joinPaths(getStateHomeDirectory(), L"tessel/logs");
    makeDirectories(folder, 0700);
    return withTrailingSeparator(folder);
}

WString getDeviceDataDirectory(int device)
{
    const WString folder = joinPaths(getDataHomeDirectory(), WString(L"tessel/devices/" + std::to_wstring(device)));
    makeDirectories(folder, 0700);
    return withTrailingSeparator(folder);
}

WString getLUTDirectory(int set)
{
    WString folder = joinPaths(getDataHomeDirectory(), L"tessel/luts");
    if (set != 0)
        folder = joinPaths(folder, WString(std::to_wstring(set)));
    makeDirectories(folder, 0700);
    return withTrailingSeparator(folder);
}

namespace Cv::FilespecUtils {

namespace {

constexpr size_t kMaxNameBytes = 255;

bool isAlwaysBad(wchar_t c)
{
    return c == L'/' || c == L'\\' || c < 0x20 || (c >= 0x7F && c <= 0x9F) || (c >= 0xD800 && c <= 0xDFFF)
        || static_cast<uint32_t>(c) > 0x10FFFF;
}

bool isBadElsewhere(wchar_t c)
{
    return std::wstring_view(L"<>:\"|?*").find(c) != std::wstring_view::npos;
}

size_t utf8Length(wchar_t c)
{
    const auto v = static_cast<uint32_t>(c);
    return v < 0x80 ? 1 : v < 0x800 ? 2 : v < 0x10000 ? 3 : 4;
}

bool isDeviceName(std::wstring_view name)
{
    const std::wstring_view base = name.substr(0, name.find(L'.'));
    std::wstring upper;
    for (wchar_t c : base)
        upper += c >= L'a' && c <= L'z' ? static_cast<wchar_t>(c - L'a' + L'A') : c;
    if (upper == L"CON" || upper == L"PRN" || upper == L"AUX" || upper == L"NUL")
        return true;
    return upper.size() == 4 && (upper.starts_with(L"COM") || upper.starts_with(L"LPT")) && upper[3] >= L'1'
        && upper[3] <= L'9';
}

std::wstring replaceBad(std::wstring_view text, wchar_t replacement, bool portable)
{
    std::wstring out(text);
    for (wchar_t& c : out)
        if (isAlwaysBad(c) || (portable && isBadElsewhere(c)))
            c = replacement;
    return out;
}

wchar_t usableReplacement(wchar_t replacement, bool portable)
{
    const bool bad = isAlwaysBad(replacement) || replacement == L' ' || replacement == L'.'
        || (portable && isBadElsewhere(replacement));
    return bad ? L'_' : replacement;
}

// The name part made valid, cut so that it and the (already valid) extension fit the length limit.
WString makeValid(std::wstring_view name, std::wstring_view extension, wchar_t replacement, bool portable)
{
    replacement = usableReplacement(replacement, portable);
    std::wstring base = replaceBad(name, replacement, portable);
    const std::wstring tail = replaceBad(extension, replacement, portable);

    size_t tailBytes = 0;
    for (wchar_t c : tail)
        tailBytes += utf8Length(c);
    const size_t budget = tailBytes < kMaxNameBytes ? kMaxNameBytes - tailBytes : 1;
    size_t bytes = 0;
    size_t keep = 0;
    while (keep < base.size() && bytes + utf8Length(base[keep]) <= budget)
        bytes += utf8Length(base[keep++]);
    base.resize(keep);

    std::wstring whole = base + tail;
    const size_t first = whole.find_first_not_of(L' ');
    whole = first == std::wstring::npos ? std::wstring() : whole.substr(first);
    while (!whole.empty() && (whole.back() == L' ' || (portable && whole.back() == L'.')))
        whole.pop_back();
    if (whole.empty() || whole == L"." || whole == L"..")
        return WString(1, replacement);
    if (portable && isDeviceName(whole)) {
        whole.insert(whole.begin(), replacement);
        size_t total = 0;
        for (wchar_t c : whole)
            total += utf8Length(c);
        if (total > kMaxNameBytes)
            whole.pop_back(); // the prefix must not break the length limit
    }
    return WString(std::move(whole));
}

} // namespace

WString makeValidFilespec(const WString& name, wchar_t replacement)
{
    return makeValid(name.view(), {}, replacement, false);
}

WString makeValidFilespecNTFS(const WString& name, wchar_t replacement)
{
    return makeValid(name.view(), {}, replacement, true);
}

WString makeValidFilespec(const WString& folder, const WString& name, const WString& extension, wchar_t replacement)
{
    return joinPaths(folder, makeValid(name.view(), extension.view(), replacement, false));
}

WString makeValidFilespecNTFS(const WString& folder, const WString& name, const WString& extension,
    wchar_t replacement)
{
    return joinPaths(folder, makeValid(name.view(), extension.view(), replacement, true));
}

} // namespace Cv::FilespecUtils
