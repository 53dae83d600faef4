#include "formats/DiskButton.h"

#include "toolkit/media/ByteSizes.h"
#include "toolkit/support/Resources.h"
#include "toolkit/ui/UifStd.h"

#include <algorithm>
#include <cwctype>

namespace {

bool equalsIgnoringCase(std::string_view a, std::string_view b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
        [](char x, char y) { return std::tolower(static_cast<unsigned char>(x)) == std::tolower(static_cast<unsigned char>(y)); });
}

} // namespace

DiskButton::DiskButton(const InitArgs& args)
    : DropDownMenuButton(DropDownMenuButton::InitArgs(std::vector<MenuItem>(), MenuItemIndex(0),
        args.width ? args.width : calcWidth(), args.height, args.palette, args.canvas))
    , m_listing { .showSize = args.showSize, .allowAuto = args.allowAuto }
{
    setName(args.name);
    init(DriveId());
    listen();
}

DiskButton::DiskButton(uint16_t w, uint16_t h, const Palette& palette, Canvas* canvas)
    : DiskButton([&] {
        InitArgs args(true, false, w, h, palette);
        args.canvas = canvas;
        return args;
    }())
{
}

DiskButton::DiskButton(const DiskButton& other)
    : EventHandler(other)
    , Cv::InternalRefCount(other)
    , iVirtual(other)
    , iObject(other)
    , DropDownMenuButton(other)
    , m_listing(other.m_listing)
{
    listen();
}

DiskButton& DiskButton::operator=(const DiskButton& other)
{
    if (this != &other) {
        DropDownMenuButton::operator=(other);
        m_listing = other.m_listing;
    }
    return *this;
}

DiskButton::~DiskButton()
{
    if (m_driveWatch)
        m_driveWatch->release();
}

LightweightString<char> DiskButton::idstring() const { return "DiskButton"; }

void DiskButton::listen()
{
    m_driveWatch = DiskManager::instance().addListener(Cv::makeListener<NotifyMsg>(
        [this](const NotifyMsg& msg) { return handleDiskManChange(msg); }));
}

void DiskButton::getMenuItems(std::vector<UIString>& items, bool showSize, bool allowAuto)
{
    const unsigned count = DiskManager::get_num_user_drives();
    for (unsigned i = 0; i < count; ++i) {
        const MediaDrive drive = DiskManager::getUserDrive(i);
        LightweightString<wchar_t> text = drive.getUserName(false);
        if (showSize) {
            text += L"||(";
            text += bytesAsString(drive.getFreeMB() * 1048576u, true);
            text += L")";
        }
        items.emplace_back(text);
    }
    if (allowAuto)
        items.emplace_back(ResId(automaticResource));
}

void DiskButton::init(const DriveId& current)
{
    std::vector<UIString> items;
    getMenuItems(items, m_listing.showSize, m_listing.allowAuto);
    m_listing.driveIds.clear();
    for (const MediaDrive& drive : DiskManager::instance().getUserDrives())
        m_listing.driveIds.push_back(drive.getId());
    // The list read above and the drive count may differ if a mount changed in between; the ids follow
    // the labels.
    m_listing.driveIds.resize(std::min(m_listing.driveIds.size(), items.size() - (m_listing.allowAuto ? 1 : 0)));
    size_t position = 0;
    if (current.isAutomatic() && m_listing.allowAuto)
        position = m_listing.driveIds.size();
    else if (const auto found = std::find(m_listing.driveIds.begin(), m_listing.driveIds.end(), current);
             found != m_listing.driveIds.end())
        position = static_cast<size_t>(found - m_listing.driveIds.begin());
    setStrings(items, MenuItemIndex(position));
}

DriveId DiskButton::getCurrentDrive() const
{
    const int selected = getSelectedItem();
    if (selected >= 0 && static_cast<size_t>(selected) < m_listing.driveIds.size())
        return m_listing.driveIds[static_cast<size_t>(selected)];
    return DriveId::automatic();
}

bool DiskButton::setCurrentDrive(const DriveId& drive)
{
    if (drive.isAutomatic()) {
        if (!m_listing.allowAuto)
            return false;
        return setSelectedItem(MenuItemIndex(m_listing.driveIds.size()));
    }
    const auto found = std::find(m_listing.driveIds.begin(), m_listing.driveIds.end(), drive);
    if (found == m_listing.driveIds.end())
        return false;
    return setSelectedItem(MenuItemIndex(found - m_listing.driveIds.begin()));
}

void DiskButton::setAllowAuto(bool allow)
{
    if (allow == m_listing.allowAuto)
        return;
    const DriveId current = getCurrentDrive();
    m_listing.allowAuto = allow;
    init(current);
}

uint16_t DiskButton::calcWidth()
{
    std::vector<UIString> items;
    getMenuItems(items, true, true);
    // The right-hand column needs room of its own beside the widest name.
    const Pictor::Font& font = UifStd::defaultFont();
    int widest = 0;
    for (const UIString& item : items) {
        const auto [name, size] = MenuItem::splitColumns(item.getString().view());
        widest = std::max(widest, font.pixelWidth(name) + font.pixelWidth(size));
    }
    return static_cast<uint16_t>(std::min(65535, widest + DropDownMenuButton::calcWidth(std::vector<UIString>(), UifStd::getDefaultFont()) + 4 * UifStd::getWidgetGap()));
}

int DiskButton::handleDiskManChange(const NotifyMsg& msg)
{
    if (!equalsIgnoringCase(msg.getMessage().view(), DiskManager::mediaLocationsChangeMsg))
        return 0;
    init(getCurrentDrive());
    redraw();
    return 0;
}

TitledDiskButton::TitledDiskButton(const InitArgs& args)
    : TitledGlob<DiskButton>(args)
{
}

TitledDiskButton::TitledDiskButton(const UIString& title, bool showSize, bool allowAuto, uint16_t width, const Palette& palette)
    : TitledGlob<DiskButton>(InitArgs(title, DiskButton::InitArgs(showSize, allowAuto, 0, 0, palette)))
{
    if (width > getWidth())
        resize(width, getHeight());
}
