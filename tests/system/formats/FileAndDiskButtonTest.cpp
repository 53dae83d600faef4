// FileFormatButton (file types, the remembered choice) and DiskButton (drives, sizes, the automatic choice,
// rebuilding when drives come and go).
#include "FormatsTestSupport.h"

#include "formats/DiskButton.h"
#include "formats/FileFormatButton.h"
#include "toolkit/support/Preferences.h"
#include "toolkit/support/Resources.h"

#include <map>

using namespace formatstest;

namespace {

const char* const prefKey = "Test : export file type";

} // namespace

class FileFormatButtonTest : public ::testing::Test {
protected:
    void SetUp() override { prefs().removePreference(prefKey); }
    void TearDown() override { prefs().removePreference(prefKey); }
    FileFormatButton* make(Compression::eUsage usage, const char* key = prefKey)
    {
        return ui.make<FileFormatButton>(FileFormatButton::InitArgs(usage, key, 120), Glob::BottomLeft(20, 600));
    }
    UiHarness ui;
};

TEST_F(FileFormatButtonTest, ListsTheUsagesExtensionsWithAviChosenByDefault)
{
    auto* button = make(Compression::VideoExport);
    EXPECT_EQ(labels(button), (std::vector<std::wstring> { L"AVI", L"MOV", L"MXF", L"MP4", L"MKV", L"MPG" }));
    EXPECT_EQ(button->getFileType(), "avi");
}

TEST_F(FileFormatButtonTest, TheRememberedTypeIsChosenWhenOffered)
{
    prefs().setPreference(prefKey, "MXF");
    EXPECT_EQ(make(Compression::VideoExport)->getFileType(), "mxf_op1a");
    auto* stills = make(Compression::StillExport);
    EXPECT_EQ(stills->getSelectedItem(), 0) << "neither MXF nor AVI is a still type";
}

TEST_F(FileFormatButtonTest, PickingATypeRemembersItAndTellsTheParent)
{
    auto* button = make(Compression::VideoExport);
    pick(ui, button, L"MOV");
    EXPECT_EQ(prefs().getPreference(prefKey, ""), "MOV");
    EXPECT_EQ(ui.owner().count(FileFormatButton::FileTypeChangedMsg), 1u);
    EXPECT_EQ(ui.owner().lastSender(), button) << "the drop-down's own message came first";
}

TEST_F(FileFormatButtonTest, WithoutAKeyNothingIsRememberedButTheParentIsStillTold)
{
    auto* button = make(Compression::VideoExport, "");
    const size_t before = prefs().snapshot().size();
    button->informOwner();
    EXPECT_EQ(prefs().snapshot().size(), before);
    EXPECT_EQ(ui.owner().count(FileFormatButton::FileTypeChangedMsg), 1u);
}

TEST_F(FileFormatButtonTest, TheTitledButtonPassesTheNewsOn)
{
    auto* titled = ui.make<TitledFileFormatButton>(TitledFileFormatButton::TitledFileFormatButtonInitArgs(UIString(L"File type"),
        FileFormatButton::InitArgs(Compression::AudioExport, prefKey, 100)));
    titled->getBtn()->informOwner();
    EXPECT_EQ(ui.owner().count(FileFormatButton::FileTypeChangedMsg), 1u);
    EXPECT_EQ(ui.owner().lastSender(), titled);
}

namespace {

struct Drives {
    std::string table;
    uint64_t freeBytes = 3ull << 30;
    DiskManager::MountSystem system()
    {
        return { [this] { return table; },
            [this](const std::string&) -> std::optional<DiskManager::Space> { return DiskManager::Space { 8ull << 30, freeBytes }; },
            [](const std::string&) { return std::string(); }, {} };
    }
};

} // namespace

class DiskButtonTest : public ::testing::Test {
protected:
    void SetUp() override { DiskManager::instance().setMountSystem(drives.system()); }
    void TearDown() override { DiskManager::instance().setMountSystem(DiskManager::machineMountSystem()); }
    void mount(const std::string& device, const std::string& point)
    {
        drives.table += device + " " + point + " ext4 rw 0 0\n";
        DiskManager::instance().refresh();
    }
    DiskButton* make(bool showSize, bool allowAuto)
    {
        return ui.make<DiskButton>(DiskButton::InitArgs(showSize, allowAuto, 200), Glob::BottomLeft(20, 600));
    }
    Drives drives;
    UiHarness ui;
};

TEST_F(DiskButtonTest, WithNoDrivesTheMenuIsEmptyOrHoldsOnlyTheAutomaticChoice)
{
    EXPECT_TRUE(make(true, false)->getItems().empty());
    auto* withAuto = make(true, true);
    EXPECT_EQ(labels(withAuto), (std::vector<std::wstring> { resourceStrW(DiskButton::automaticResource).str() }));
    EXPECT_TRUE(withAuto->getCurrentDrive().isAutomatic());
}

TEST_F(DiskButtonTest, SizesGoInTheRightHandColumn)
{
    mount("/dev/sdb1", "/media/clips");
    EXPECT_EQ(labels(make(true, false)), (std::vector<std::wstring> { L"clips||(3 GB)" }));
    EXPECT_EQ(labels(make(false, false)), (std::vector<std::wstring> { L"clips" }));
}

TEST_F(DiskButtonTest, ADriveThatAppearsIsListedAndTheChoiceKept)
{
    mount("/dev/sdb1", "/media/clips");
    auto* button = make(false, true);
    pick(ui, button, L"clips");
    mount("/dev/sda1", "/media/archive");
    EXPECT_EQ(labels(button), (std::vector<std::wstring> { L"clips", L"archive", resourceStrW(DiskButton::automaticResource).str() }));
    EXPECT_EQ(button->getCurrentDrive(), DriveId("/media/clips"));
}

TEST_F(DiskButtonTest, AChangeWhileTheAutomaticChoiceIsSelectedKeepsIt)
{
    mount("/dev/sdb1", "/media/clips");
    auto* button = make(false, true);
    EXPECT_TRUE(button->setCurrentDrive(DriveId::automatic()));
    mount("/dev/sda1", "/media/archive");
    EXPECT_TRUE(button->getCurrentDrive().isAutomatic());
    EXPECT_EQ(button->getSelectedItem(), 2);
}

TEST_F(DiskButtonTest, OtherNotificationsAreIgnoredAndTheNameIsComparedWithoutCase)
{
    mount("/dev/sdb1", "/media/clips");
    auto* button = make(true, false);
    // A change of free space is reread but not announced, so the button still shows the old figure.
    drives.freeBytes = 5ull << 30;
    EXPECT_FALSE(DiskManager::instance().refresh());
    button->handleDiskManChange(NotifyMsg("SomethingElse"));
    EXPECT_EQ(labels(button), (std::vector<std::wstring> { L"clips||(3 GB)" }));
    button->handleDiskManChange(NotifyMsg("medialocationschangemsg"));
    EXPECT_EQ(labels(button), (std::vector<std::wstring> { L"clips||(5 GB)" }));
}

TEST_F(DiskButtonTest, ACopyFollowsTheDrivesToo)
{
    auto* original = make(false, false);
    auto* copy = new DiskButton(*original);
    ui.owner().addChild(copy, Glob::BottomLeft(20, 400));
    mount("/dev/sdb1", "/media/clips");
    EXPECT_EQ(labels(copy), (std::vector<std::wstring> { L"clips" }));
    Glob::destroy(original);
    ui.step();
    mount("/dev/sda1", "/media/archive");
    EXPECT_EQ(copy->getItems().size(), 2u);
}

TEST_F(DiskButtonTest, ChoosingAnUnlistedDriveFails)
{
    mount("/dev/sdb1", "/media/clips");
    auto* button = make(false, false);
    EXPECT_FALSE(button->setCurrentDrive(DriveId("/nowhere")));
    EXPECT_FALSE(button->setCurrentDrive(DriveId::automatic()));
    button->setAllowAuto(true);
    EXPECT_TRUE(button->setCurrentDrive(DriveId::automatic()));
}
