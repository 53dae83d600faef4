#include "formats/FileFormatButton.h"

#include "toolkit/media/CvExport.h"
#include "toolkit/media/FileWriterInfo.h"
#include "toolkit/support/Preferences.h"
#include "toolkit/ui/MenuGlob.h"
#include "toolkit/ui/UifStd.h"

#include <algorithm>

FileFormatButton::FileFormatButton(const InitArgs& args)
    : DropDownMenuButton(DropDownMenuButton::InitArgs(std::vector<MenuItem>(), MenuItemIndex(0), args.width, args.height, args.palette, args.canvas))
    , m_prefKey(args.prefKey)
{
    setName(args.name);
    init(args.usage);
}

FileFormatButton::FileFormatButton(Compression::eUsage usage, const LightweightString<char>& prefKey, const Palette& palette,
    double w, double h, Canvas* canvas)
    : DropDownMenuButton(DropDownMenuButton::InitArgs(std::vector<MenuItem>(), MenuItemIndex(0),
        static_cast<uint16_t>(std::clamp(w, 0.0, 65535.0)), static_cast<uint16_t>(std::clamp(h, 0.0, 65535.0)), palette, canvas))
    , m_prefKey(prefKey)
{
    init(usage);
}

LightweightString<char> FileFormatButton::idstring() const { return "FileFormatButton"; }

void FileFormatButton::init(Compression::eUsage usage)
{
    std::vector<UIString> labels;
    for (const LightweightString<char>& type : Cv::FileWriterInfo::getSupportedFormatTypes(usage))
        labels.emplace_back(CvExport::getExtensionForFormatID(type));
    setStrings(labels, MenuItemIndex(0));
    const LightweightString<wchar_t> remembered = prefs().getPreference(m_prefKey.view(), defaultFileType);
    if (std::any_of(labels.begin(), labels.end(), [&](const UIString& l) { return l.getString() == remembered; }))
        setSelectedItem(MenuItemIndex(remembered));
}

LightweightString<char> FileFormatButton::getFileType() const
{
    return CvExport::getFormatIDForExtension(getSelectedItemNameW());
}

void FileFormatButton::informOwner()
{
    if (!m_prefKey.empty())
        prefs().setPreference(m_prefKey.view(), getSelectedItemNameW());
    if (parent())
        sendMsg(parent(), FileTypeChangedMsg);
}

bool FileFormatButton::handleMessageEvent(LightweightString<char> name, Glob* sender)
{
    if (name == MenuGlob::chosenMsg && sender && sender == getOpenMenu()) {
        GlobWatch self(this);
        const bool handled = DropDownMenuButton::handleMessageEvent(name, sender);
        if (self)
            informOwner();
        return handled;
    }
    return DropDownMenuButton::handleMessageEvent(name, sender);
}

TitledFileFormatButton::TitledFileFormatButton(const TitledFileFormatButtonInitArgs& args)
    : TitledGlob<FileFormatButton>(args)
{
}

TitledFileFormatButton::TitledFileFormatButton(Compression::eUsage usage, const LightweightString<char>& prefKey,
    uint16_t titleWidth, uint16_t width, const Palette& palette, const UIString& title)
    : TitledGlob<FileFormatButton>(TitledFileFormatButtonInitArgs(title,
        FileFormatButton::InitArgs(usage, prefKey, static_cast<uint16_t>(std::max(0, width - titleWidth)), 0, palette), titleWidth))
{
}
