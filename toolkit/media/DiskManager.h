#pragma once
// The drives the user can keep media on: the machine's mounted file systems without the pseudo file systems
// (proc, sysfs, cgroup, tmpfs, snap images and the like), without mounts that are not directories (files
// bound into a container) and without second mounts of a device already listed. Listeners hear
// mediaLocationsChangeMsg when a drive appears, goes, or is mounted differently; sizes are reread then too.
//
// On the main thread the manager watches the mount table between loop turns (the kernel marks it changed, so
// watching costs one poll a turn). Tests replace the machine with a MountSystem of their own and call
// refresh().

#include "toolkit/media/MediaDrive.h"
#include "toolkit/support/Notifier.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

class DiskManager : public Notifier {
public:
    struct Space {
        uint64_t totalBytes = 0;
        uint64_t freeBytes = 0;
    };
    // How the manager sees the machine.
    struct MountSystem {
        // The mount table in the kernel's format: "device mountpoint type options dump pass" per line, with
        // spaces, tabs, newlines and backslashes in names written as octal escapes (\040).
        std::function<std::string()> readMountTable;
        // Sizes of the file system holding a directory; none when the path is not a directory or not readable.
        std::function<std::optional<Space>(const std::string& path)> querySpace;
        // The file system label of a device, or empty.
        std::function<std::string(const std::string& device)> labelFor;
        // Whether the table may have changed since the last read; null means always reread.
        std::function<bool()> mayHaveChanged;
    };
    struct MountEntry {
        std::string device;
        std::string mountPoint;
        std::string fileSystem;
    };

    static DiskManager& instance();

    static unsigned get_num_user_drives();
    // An empty drive for an index past the end.
    static MediaDrive getUserDrive(unsigned index);
    std::vector<MediaDrive> getUserDrives() const;
    // The drive's index, or -1 when it is not listed (or is the automatic choice).
    int findDrive(const DriveId& id) const;

    // Rereads the mount table and sizes; tells listeners when the set of drives changed. Answers whether it did.
    bool refresh();
    // Replaces the machine (tests); the drives are reread at once, with the usual message on a change.
    void setMountSystem(MountSystem system);
    static MountSystem machineMountSystem();

    // The lines of a mount table, escapes decoded; malformed lines (fewer than three fields) are skipped.
    static std::vector<MountEntry> parseMountTable(std::string_view table);
    static bool isPseudoFileSystem(std::string_view type);

    static constexpr const char* mediaLocationsChangeMsg = "MediaLocationsChangeMsg";

    DiskManager();
    ~DiskManager() override;
    DiskManager(const DiskManager&) = delete;
    DiskManager& operator=(const DiskManager&) = delete;

private:
    std::vector<MediaDrive> readDrives() const;
    void watchBetweenTurns();

    mutable CriticalSection m_lock;
    MountSystem m_system;
    std::vector<MediaDrive> m_drives;
    uint64_t m_pollerId = 0;
};
