#include "toolkit/support/TextFile.h"

#include "toolkit/support/AtomicFile.h"
#include "toolkit/support/FileUtils.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

// Reads a regular file whole; false when it is missing, unreadable or larger than the limit.
bool readWholeFile(const std::string& utf8Path, std::string& bytes)
{
    const int fd = ::open(utf8Path.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0)
        return false;
    struct stat info {};
    bool ok = ::fstat(fd, &info) == 0 && S_ISREG(info.st_mode)
        && static_cast<uint64_t>(info.st_size) <= TextFile::kMaxLoadBytes;
    if (ok) {
        bytes.resize(static_cast<size_t>(info.st_size));
        size_t done = 0;
        while (done < bytes.size()) {
            const ssize_t n = ::read(fd, bytes.data() + done, bytes.size() - done);
            if (n < 0 && errno == EINTR)
                continue;
            if (n < 0)
                ok = false;
            if (n <= 0)
                break;
            done += static_cast<size_t>(n);
        }
        bytes.resize(done);
    }
    ::close(fd);
    return ok;
}

} // namespace

TextFile::TextFile(const LightweightString<wchar_t>& path, bool loadExisting) : m_path(path)
{
    if (!loadExisting || path.empty())
        return;
    std::string bytes;
    if (!readWholeFile(toUTF8(path.view()).str(), bytes))
        return;
    std::string_view text(bytes);
    if (text.starts_with("\xEF\xBB\xBF"))
        text.remove_prefix(3);
    m_lines = splitLines(text);
    m_loaded = true;
}

const std::string& TextFile::getLine(size_t index) const
{
    static const std::string empty;
    return index < m_lines.size() ? m_lines[index] : empty;
}

LightweightString<wchar_t> TextFile::getWLine(size_t index) const
{
    return fromUTF8(getLine(index));
}

std::vector<std::string> TextFile::splitLines(std::string_view text)
{
    std::vector<std::string> lines;
    size_t start = 0;
    for (size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (c != '\n' && c != '\r')
            continue;
        lines.emplace_back(text.substr(start, i - start));
        if (c == '\r' && i + 1 < text.size() && text[i + 1] == '\n')
            ++i;
        start = i + 1;
    }
    if (start < text.size())
        lines.emplace_back(text.substr(start));
    return lines;
}

void TextFile::appendLine(std::string_view utf8)
{
    if (utf8.find_first_of("\r\n") == std::string_view::npos) {
        m_lines.emplace_back(utf8);
        return;
    }
    // A final line break ends the last line, as it does in a file.
    for (std::string& part : splitLines(utf8))
        m_lines.push_back(std::move(part));
}

void TextFile::appendLine(const LightweightString<wchar_t>& text)
{
    appendLine(toUTF8(text.view()).view());
}

std::string TextFile::getText(eEOLStyle style) const
{
    const std::string_view eol = style == eEOLCRLF ? "\r\n" : "\n";
    size_t size = 0;
    for (const std::string& line : m_lines)
        size += line.size() + eol.size();
    std::string text;
    text.reserve(size);
    for (const std::string& line : m_lines) {
        text += line;
        text += eol;
    }
    return text;
}

bool TextFile::save(const LightweightString<wchar_t>& path, eEOLStyle style) const
{
    if (path.empty())
        return false;
    const LightweightString<wchar_t> folder = getDirectory(path);
    if (!folder.empty() && !createDirectories(folder))
        return false;
    return Cv::writeFileAtomically(toUTF8(path.view()).str(), getText(style));
}

bool TextFile::save(const LightweightString<wchar_t>& path, int style) const
{
    const bool known = style == eEOLNative || style == eEOLLF || style == eEOLCRLF;
    return save(path, known ? static_cast<eEOLStyle>(style) : eEOLNative);
}
