#pragma once
// A mounted file system the user can keep media on, and the identity by which a choice of drive is kept.

#include "toolkit/support/LightweightString.h"

#include <cstdint>

// Names a drive by its mount point. The value "0" stands for the automatic choice (the editor picks the
// drive); no mount point can be "0", since every mount point starts with '/'.
class DriveId {
public:
    DriveId() = default;
    explicit DriveId(LightweightString<char> mountPoint)
        : m_value(std::move(mountPoint))
    {
    }
    static DriveId automatic() { return DriveId("0"); }

    bool isAutomatic() const { return m_value == "0"; }
    const LightweightString<char>& value() const { return m_value; }
    friend bool operator==(const DriveId&, const DriveId&) = default;

private:
    LightweightString<char> m_value;
};

class MediaDrive {
public:
    MediaDrive() = default;
    MediaDrive(LightweightString<char> device, LightweightString<char> mountPoint, LightweightString<char> fileSystem,
        LightweightString<char> label, uint64_t totalBytes, uint64_t freeBytes);

    // The label when the file system has one, else "System" for the root, else the mount point's last part.
    // With `withMountPoint` the mount point follows in brackets: "Media (/mnt/media)".
    LightweightString<wchar_t> getUserName(bool withMountPoint) const;
    DriveId getId() const { return DriveId(m_mountPoint); }
    const LightweightString<char>& getDevice() const { return m_device; }
    const LightweightString<char>& getMountPoint() const { return m_mountPoint; }
    const LightweightString<char>& getFileSystem() const { return m_fileSystem; }
    const LightweightString<char>& getLabel() const { return m_label; }
    // Sizes as last read, in whole megabytes (1048576 bytes), rounded down.
    uint64_t getTotalMB() const { return m_totalBytes >> 20; }
    uint64_t getFreeMB() const { return m_freeBytes >> 20; }

    // Same drive, mounted the same way; sizes are not compared, they change with every file written.
    bool sameMount(const MediaDrive& other) const
    {
        return m_device == other.m_device && m_mountPoint == other.m_mountPoint && m_fileSystem == other.m_fileSystem
            && m_label == other.m_label;
    }

private:
    LightweightString<char> m_device;
    LightweightString<char> m_mountPoint;
    LightweightString<char> m_fileSystem;
    LightweightString<char> m_label;
    uint64_t m_totalBytes = 0;
    uint64_t m_freeBytes = 0;
};
