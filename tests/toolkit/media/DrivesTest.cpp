// The drive list made from a recorded mount table, and the message that tells of a change.
#include "toolkit/media/ByteSizes.h"
#include "toolkit/media/DiskManager.h"

#include <gtest/gtest.h>

#include <map>
#include <string>

namespace {

// A recorded mount table of a desktop machine: root, a home partition, a labelled USB drive, a snap image,
// kernel interfaces and memory file systems, a file bound into a container and a second mount of /home.
const char* const recordedTable = "sysfs /sys sysfs rw,nosuid,nodev,noexec,relatime 0 0\n"
                                  "proc /proc proc rw,nosuid,nodev,noexec,relatime 0 0\n"
                                  "udev /dev devtmpfs rw,nosuid,relatime,size=8000000k 0 0\n"
                                  "/dev/nvme0n1p2 / ext4 rw,relatime 0 0\n"
                                  "tmpfs /run tmpfs rw,nosuid,nodev,size=1600000k 0 0\n"
                                  "cgroup2 /sys/fs/cgroup cgroup2 rw,nosuid,nodev,noexec 0 0\n"
                                  "/dev/loop3 /snap/core/123 squashfs ro,nodev,relatime 0 0\n"
                                  "/dev/nvme0n1p3 /home ext4 rw,relatime 0 0\n"
                                  "/dev/nvme0n1p2 /etc/hostname ext4 rw,relatime 0 0\n"
                                  "/dev/nvme0n1p3 /srv/home-again ext4 rw,relatime 0 0\n"
                                  "/dev/sda1 /media/ed/Card\\040A exfat rw,nosuid,nodev 0 0\n"
                                  "broken line\n";

struct FakeMachine {
    std::string table = recordedTable;
    std::map<std::string, DiskManager::Space> directories {
        { "/", { 500ull << 30, 200ull << 30 } },
        { "/home", { 1ull << 40, 300ull << 30 } },
        { "/srv/home-again", { 1ull << 40, 300ull << 30 } },
        { "/media/ed/Card A", { 64ull << 30, 10ull << 30 } },
        { "/media/ed/New", { 2ull << 40, 2ull << 40 } },
        { "/sys", { 1, 1 } },
        { "/run", { 1 << 20, 1 << 20 } },
        { "/snap/core/123", { 1 << 26, 0 } },
    };

    DiskManager::MountSystem system()
    {
        return { [this] { return table; },
            [this](const std::string& path) -> std::optional<DiskManager::Space> {
                auto found = directories.find(path);
                return found == directories.end() ? std::nullopt : std::optional(found->second);
            },
            [](const std::string& device) { return device == "/dev/sda1" ? std::string("CARD_A") : std::string(); }, {} };
    }
};

class DrivesTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        DiskManager::instance().setMountSystem(machine.system());
        guard = DiskManager::instance().addListener(
            Cv::makeListener<NotifyMsg>([this](const NotifyMsg& msg) { heard.push_back(msg.getMessage().str()); }));
    }
    void TearDown() override
    {
        guard = nullptr;
        DiskManager::instance().setMountSystem(DiskManager::machineMountSystem());
    }
    std::vector<std::string> mountPoints() const
    {
        std::vector<std::string> points;
        for (const MediaDrive& drive : DiskManager::instance().getUserDrives())
            points.push_back(drive.getMountPoint().str());
        return points;
    }

    FakeMachine machine;
    std::vector<std::string> heard;
    Cv::Ptr<Cv::Guard> guard;
};

} // namespace

TEST_F(DrivesTest, PseudoFileSystemsBoundFilesAndSecondMountsAreLeftOut)
{
    EXPECT_EQ(mountPoints(), (std::vector<std::string> { "/", "/home", "/media/ed/Card A" }));
    EXPECT_EQ(DiskManager::get_num_user_drives(), 3u);
    EXPECT_EQ(DiskManager::getUserDrive(0).getUserName(false), L"System");
    EXPECT_EQ(DiskManager::getUserDrive(1).getUserName(true), L"home (/home)");
    EXPECT_EQ(DiskManager::getUserDrive(2).getUserName(false), L"CARD_A") << "the label wins over the mount point";
    EXPECT_EQ(DiskManager::getUserDrive(2).getFreeMB(), 10u * 1024u);
    EXPECT_TRUE(DiskManager::getUserDrive(9).getMountPoint().empty());
}

TEST_F(DrivesTest, AMountThatAppearsIsAnnouncedOnceAndSizeChangesAreNot)
{
    machine.table += "/dev/sdb1 /media/ed/New ext4 rw 0 0\n";
    EXPECT_TRUE(DiskManager::instance().refresh());
    EXPECT_EQ(mountPoints().back(), "/media/ed/New");
    EXPECT_EQ(DiskManager::instance().findDrive(DriveId("/media/ed/New")), 3);
    machine.directories["/home"].freeBytes = 1;
    EXPECT_FALSE(DiskManager::instance().refresh());
    EXPECT_EQ(DiskManager::getUserDrive(1).getFreeMB(), 0u) << "sizes are reread even when nothing is announced";
    EXPECT_EQ(heard, (std::vector<std::string> { DiskManager::mediaLocationsChangeMsg }));
}

TEST_F(DrivesTest, AMountThatGoesIsAnnounced)
{
    machine.table = "/dev/nvme0n1p2 / ext4 rw 0 0\n";
    EXPECT_TRUE(DiskManager::instance().refresh());
    EXPECT_EQ(mountPoints(), (std::vector<std::string> { "/" }));
    EXPECT_EQ(heard.size(), 1u);
}

TEST(MountTable, EscapedNamesAreDecodedAndShortLinesSkipped)
{
    const auto entries = DiskManager::parseMountTable("a\\134b /x\\011y\\040z t 0 0\n\n  /d  /m  ext4\nonly two\n/e /f \\0");
    ASSERT_EQ(entries.size(), 3u);
    EXPECT_EQ(entries[0].device, "a\\b");
    EXPECT_EQ(entries[0].mountPoint, "/x\ty z");
    EXPECT_EQ(entries[1].mountPoint, "/m");
    EXPECT_EQ(entries[2].fileSystem, "\\0") << "an escape cut short stays as written";
}

TEST(ByteSizes, UnitsStepBy1024WithThreeFiguresAtMost)
{
    EXPECT_EQ(bytesAsString(1, true), L"1 byte");
    EXPECT_EQ(bytesAsString(1023, true), L"1023 bytes");
    EXPECT_EQ(bytesAsString(1024, true), L"1 KB");
    EXPECT_EQ(bytesAsString(1536, false), L"1.5 kilobytes");
    EXPECT_EQ(bytesAsString(123456789, true), L"118 MB");
    EXPECT_EQ(bytesAsString(10ull << 30, true), L"10 GB");
    EXPECT_EQ(bytesAsString(~0ull, true), L"16 EB");
}
