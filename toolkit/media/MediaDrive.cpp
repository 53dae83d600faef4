#include "toolkit/media/MediaDrive.h"

MediaDrive::MediaDrive(LightweightString<char> device, LightweightString<char> mountPoint,
    LightweightString<char> fileSystem, LightweightString<char> label, uint64_t totalBytes, uint64_t freeBytes)
    : m_device(std::move(device))
    , m_mountPoint(std::move(mountPoint))
    , m_fileSystem(std::move(fileSystem))
    , m_label(std::move(label))
    , m_totalBytes(totalBytes)
    , m_freeBytes(freeBytes)
{
}

LightweightString<wchar_t> MediaDrive::getUserName(bool withMountPoint) const
{
    LightweightString<char> name = m_label;
    if (name.empty()) {
        std::string_view path = m_mountPoint.view();
        while (path.size() > 1 && path.back() == '/')
            path.remove_suffix(1);
        const size_t slash = path.rfind('/');
        name = path == "/" || path.empty() ? std::string_view("System") : path.substr(slash + 1);
    }
    LightweightString<wchar_t> text = fromUTF8(name.view());
    if (withMountPoint)
        text += L" (" + fromUTF8(m_mountPoint.view()) + L")";
    return text;
}
