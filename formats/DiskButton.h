#pragma once
// DiskButton: a drop-down of the user's media drives, optionally with their free space in a right-hand
// column and an "Automatic" entry last. It rebuilds itself, keeping the choice, when the drive manager
// announces that drives came or went.

#include "toolkit/media/DiskManager.h"
#include "toolkit/widgets/DropDownMenuButton.h"
#include "toolkit/widgets/TitledGlob.h"

#include <vector>

class DiskButton : public DropDownMenuButton {
public:
    struct InitArgs : GlobCreationInfo {
        InitArgs() = default;
        // A width of 0 is calcWidth().
        InitArgs(bool withSize, bool withAuto, uint16_t w = 0, uint16_t h = 0, const Palette& pal = Palette())
            : GlobCreationInfo(w, h, pal)
            , showSize(withSize)
            , allowAuto(withAuto)
        {
        }
        bool showSize = true;
        bool allowAuto = false;
    };

    explicit DiskButton(const InitArgs& args);
    DiskButton(uint16_t w, uint16_t h, const Palette& palette = Palette(), Canvas* canvas = nullptr);
    // A copy follows the drive list too.
    DiskButton(const DiskButton& other);
    DiskButton(DiskButton&& other)
        : DiskButton(static_cast<const DiskButton&>(other))
    {
    }
    // Each button keeps its own registration with the drive manager.
    DiskButton& operator=(const DiskButton& other);
    DiskButton& operator=(DiskButton&& other) { return *this = static_cast<const DiskButton&>(other); }
    ~DiskButton() override;

    // One label per user drive ("name||(free space)" with sizes), then the automatic entry when allowed.
    static void getMenuItems(std::vector<UIString>& items, bool showSize, bool allowAuto);
    // The automatic choice when the selection lies past the drives (or nothing is listed).
    DriveId getCurrentDrive() const;
    // False, changing nothing, for a drive not listed (or the automatic choice when it is not offered).
    bool setCurrentDrive(const DriveId& drive);
    // Adds or removes the automatic entry, keeping the choice where possible.
    void setAllowAuto(bool allow);
    // Wide enough for every drive's label and size.
    static uint16_t calcWidth();
    int handleDiskManChange(const NotifyMsg& msg);

    static constexpr int automaticResource = 12519;

    // Called by the toolkit
    LightweightString<char> idstring() const override;

private:
    void init(const DriveId& current);
    void listen();

    // What a copy takes over; its registration with the drive manager is its own, made for it.
    struct Listing {
        std::vector<DriveId> driveIds;
        bool showSize = true;
        bool allowAuto = false;
    };

    Listing m_listing;
    Cv::Ptr<Cv::Guard> m_driveWatch;
};

// A DiskButton with a title at its left.
class TitledDiskButton : public TitledGlob<DiskButton> {
public:
    explicit TitledDiskButton(const InitArgs& args);
    TitledDiskButton(const UIString& title, bool showSize, bool allowAuto, uint16_t width, const Palette& palette = Palette());
    TitledDiskButton(const TitledDiskButton&) = default;
    TitledDiskButton(TitledDiskButton&&) = default;
    TitledDiskButton& operator=(const TitledDiskButton&) = default;
    TitledDiskButton& operator=(TitledDiskButton&&) = default;

    DiskButton* getBtn() const { return widget(); }
    DriveId getCurrentDrive() const { return widget()->getCurrentDrive(); }
    bool setCurrentDrive(const DriveId& drive) { return widget()->setCurrentDrive(drive); }
    void setAllowAuto(bool allow) { widget()->setAllowAuto(allow); }
};
