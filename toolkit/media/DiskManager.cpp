#include "toolkit/media/DiskManager.h"

#include "toolkit/support/BackgroundTasks.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

namespace {

constexpr const char* mountTablePath = "/proc/self/mounts";

// "\040" and friends: the kernel escapes space, tab, newline and backslash in mount table fields.
std::string unescapeField(std::string_view field)
{
    std::string out;
    out.reserve(field.size());
    for (size_t i = 0; i < field.size(); ++i) {
        if (field[i] == '\\' && i + 3 < field.size()) {
            const std::string_view digits = field.substr(i + 1, 3);
            if (digits.size() == 3 && std::all_of(digits.begin(), digits.end(), [](char c) { return c >= '0' && c <= '7'; })) {
                out += static_cast<char>((digits[0] - '0') * 64 + (digits[1] - '0') * 8 + (digits[2] - '0'));
                i += 3;
                continue;
            }
        }
        out += field[i];
    }
    return out;
}

// Names in /dev/disk/by-label escape unsafe bytes as "\x20".
std::string unescapeLabel(std::string_view name)
{
    std::string out;
    for (size_t i = 0; i < name.size(); ++i) {
        if (name[i] == '\\' && i + 3 < name.size() && name[i + 1] == 'x' && std::isxdigit(static_cast<unsigned char>(name[i + 2]))
            && std::isxdigit(static_cast<unsigned char>(name[i + 3]))) {
            out += static_cast<char>(std::stoi(std::string(name.substr(i + 2, 2)), nullptr, 16));
            i += 3;
            continue;
        }
        out += name[i];
    }
    return out;
}

std::string readWholeFile(const char* path)
{
    std::ifstream in(path);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

std::optional<DiskManager::Space> statFileSystem(const std::string& path)
{
    struct stat info {};
    if (::stat(path.c_str(), &info) != 0 || !S_ISDIR(info.st_mode))
        return std::nullopt;
    struct statvfs fs {};
    if (::statvfs(path.c_str(), &fs) != 0)
        return std::nullopt;
    return DiskManager::Space { static_cast<uint64_t>(fs.f_blocks) * fs.f_frsize, static_cast<uint64_t>(fs.f_bavail) * fs.f_frsize };
}

std::string labelFromDiskLinks(const std::string& device)
{
    std::error_code error;
    const auto target = std::filesystem::canonical(device, error);
    if (error)
        return {};
    for (const auto& link : std::filesystem::directory_iterator("/dev/disk/by-label", error)) {
        std::error_code linkError;
        if (std::filesystem::canonical(link.path(), linkError) == target && !linkError)
            return unescapeLabel(link.path().filename().string());
    }
    return {};
}

// The kernel marks an open mount table with POLLPRI once the mounts change, and clears the mark on the poll
// that reports it.
class MountTableWatch {
public:
    MountTableWatch()
        : m_fd(::open(mountTablePath, O_RDONLY | O_CLOEXEC))
    {
    }
    ~MountTableWatch()
    {
        if (m_fd >= 0)
            ::close(m_fd);
    }
    MountTableWatch(const MountTableWatch&) = delete;
    MountTableWatch& operator=(const MountTableWatch&) = delete;

    bool changed()
    {
        if (m_fd < 0)
            return true;
        pollfd watch { m_fd, POLLPRI, 0 };
        return ::poll(&watch, 1, 0) > 0 && (watch.revents & (POLLPRI | POLLERR));
    }

private:
    int m_fd = -1;
};

} // namespace

DiskManager& DiskManager::instance()
{
    static DiskManager* manager = [] {
        auto* made = new DiskManager();
        made->watchBetweenTurns();
        return made;
    }();
    return *manager;
}

DiskManager::DiskManager()
    : m_system(machineMountSystem())
{
    m_drives = readDrives();
}

DiskManager::~DiskManager()
{
    if (m_pollerId)
        Cv::removeBackgroundPoller(m_pollerId);
}

DiskManager::MountSystem DiskManager::machineMountSystem()
{
    auto watch = std::make_shared<MountTableWatch>();
    return MountSystem {
        [] { return readWholeFile(mountTablePath); },
        statFileSystem,
        labelFromDiskLinks,
        [watch] { return watch->changed(); },
    };
}

void DiskManager::watchBetweenTurns()
{
    m_pollerId = Cv::addBackgroundPoller([this] {
        std::function<bool()> mayHaveChanged;
        {
            CriticalSection::Lock hold(m_lock);
            mayHaveChanged = m_system.mayHaveChanged;
        }
        if (!mayHaveChanged || mayHaveChanged())
            refresh();
    });
}

unsigned DiskManager::get_num_user_drives()
{
    DiskManager& manager = instance();
    CriticalSection::Lock hold(manager.m_lock);
    return static_cast<unsigned>(manager.m_drives.size());
}

MediaDrive DiskManager::getUserDrive(unsigned index)
{
    DiskManager& manager = instance();
    CriticalSection::Lock hold(manager.m_lock);
    return index < manager.m_drives.size() ? manager.m_drives[index] : MediaDrive();
}

std::vector<MediaDrive> DiskManager::getUserDrives() const
{
    CriticalSection::Lock hold(m_lock);
    return m_drives;
}

int DiskManager::findDrive(const DriveId& id) const
{
    CriticalSection::Lock hold(m_lock);
    for (size_t i = 0; i < m_drives.size(); ++i)
        if (m_drives[i].getId() == id)
            return static_cast<int>(i);
    return -1;
}

bool DiskManager::refresh()
{
    const std::vector<MediaDrive> drives = readDrives();
    {
        CriticalSection::Lock hold(m_lock);
        const bool same = std::equal(drives.begin(), drives.end(), m_drives.begin(), m_drives.end(),
            [](const MediaDrive& a, const MediaDrive& b) { return a.sameMount(b); });
        m_drives = drives;
        if (same)
            return false;
    }
    issueNotification(NotifyMsg(mediaLocationsChangeMsg), 0);
    return true;
}

void DiskManager::setMountSystem(MountSystem system)
{
    {
        CriticalSection::Lock hold(m_lock);
        m_system = std::move(system);
    }
    refresh();
}

std::vector<MediaDrive> DiskManager::readDrives() const
{
    MountSystem system;
    {
        CriticalSection::Lock hold(m_lock);
        system = m_system;
    }
    std::vector<MediaDrive> drives;
    if (!system.readMountTable)
        return drives;
    std::vector<std::string> devicesSeen;
    for (const MountEntry& mount : parseMountTable(system.readMountTable())) {
        if (isPseudoFileSystem(mount.fileSystem))
            continue;
        if (std::find(devicesSeen.begin(), devicesSeen.end(), mount.device) != devicesSeen.end())
            continue;
        const std::optional<Space> space = system.querySpace ? system.querySpace(mount.mountPoint) : std::nullopt;
        if (!space || space->totalBytes == 0)
            continue;
        devicesSeen.push_back(mount.device);
        const std::string label = system.labelFor ? system.labelFor(mount.device) : std::string();
        drives.emplace_back(mount.device, mount.mountPoint, mount.fileSystem, label, space->totalBytes, space->freeBytes);
    }
    return drives;
}

std::vector<DiskManager::MountEntry> DiskManager::parseMountTable(std::string_view table)
{
    std::vector<MountEntry> entries;
    while (!table.empty()) {
        const size_t end = table.find('\n');
        std::string_view line = table.substr(0, end);
        table = end == std::string_view::npos ? std::string_view() : table.substr(end + 1);
        std::array<std::string_view, 3> fields;
        size_t found = 0;
        while (found < fields.size()) {
            const size_t start = line.find_first_not_of(" \t");
            if (start == std::string_view::npos)
                break;
            line.remove_prefix(start);
            const size_t stop = line.find_first_of(" \t");
            fields[found++] = line.substr(0, stop);
            line = stop == std::string_view::npos ? std::string_view() : line.substr(stop);
        }
        if (found == fields.size())
            entries.push_back({ unescapeField(fields[0]), unescapeField(fields[1]), unescapeField(fields[2]) });
    }
    return entries;
}

bool DiskManager::isPseudoFileSystem(std::string_view type)
{
    // Kernel interfaces, memory-backed scratch space and read-only package images: nowhere to keep media.
    static constexpr std::array<std::string_view, 30> pseudo { "proc", "sysfs", "devtmpfs", "devpts", "tmpfs", "ramfs",
        "cgroup", "cgroup2", "securityfs", "debugfs", "tracefs", "configfs", "fusectl", "pstore", "bpf", "mqueue",
        "hugetlbfs", "autofs", "binfmt_misc", "efivarfs", "rpc_pipefs", "nsfs", "selinuxfs", "squashfs", "nfsd",
        "fuse.gvfsd-fuse", "fuse.portal", "fuse.snapfuse", "cpuset", "pipefs" };
    return std::find(pseudo.begin(), pseudo.end(), type) != pseudo.end();
}
