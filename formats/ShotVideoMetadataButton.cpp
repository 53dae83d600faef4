#include "formats/ShotVideoMetadataButton.h"

#include "frame/StartupSettings.h"
#include "toolkit/media/CurrentProject.h"
#include "toolkit/media/DigitalVideoFormats.h"
#include "toolkit/ui/MenuGlob.h"

#include <string>
#include <tuple>

using namespace Cv::DigitalVideoFormats;

namespace {

// HD rasters narrower than the full picture: their heading names the size, since "1080i" alone would
// read like the full raster.
bool headingShowsSize(uint32_t uid)
{
    return uid == UIDs::HDV1080 || uid == UIDs::DVCProHD1080_60 || uid == UIDs::DVCProHD1080_50;
}

LightweightString<wchar_t> groupLabel(uint32_t uid, bool progressive, Cv::Image::PictureRatio aspect)
{
    const DigitalVideoFormatInfo info = findByUID(uid);
    const std::wstring h = std::to_wstring(info.getDisplayHeight());
    const std::wstring w = std::to_wstring(info.getDisplayWidth());
    const std::wstring scan = progressive ? L"p" : L"i";
    const std::wstring shape = Cv::Image::aspectRatioAsDisplayString(aspect).str();
    switch (info.getGroup()) {
    case FormatGroups::SD625: return h + scan + L" (PAL " + shape + L")";
    case FormatGroups::SD525: return h + scan + L" (NTSC " + shape + (info.getDisplayHeight() == 480 ? L", DV)" : L", D1)");
    case FormatGroups::HD: return h + scan + (headingShowsSize(uid) ? L" (" + w + L"x" + h + L")" : std::wstring());
    default: return fromUTF8(info.getName().view());
    }
}

} // namespace

ShotVideoMetadataButton::UIFormatGroup::UIFormatGroup(const ShotVideoMetadata& format)
    : uid(format.getDigitalVideoFormatUID())
    , group(findByUID(uid).getGroup())
    , progressive(Cv::Image::Video::Interface::isProgressive(format))
    , aspect(format.getAspectRatio())
    , label(groupLabel(uid, progressive, aspect))
{
}

bool ShotVideoMetadataButton::UIFormatGroup::operator<(const UIFormatGroup& other) const
{
    return std::tie(group, uid, progressive, aspect) < std::tie(other.group, other.uid, other.progressive, other.aspect);
}

ShotVideoMetadataButton::ShotVideoMetadataButton(const InitArgs& args)
    : DropDownMenuButton(DropDownMenuButton::InitArgs(std::vector<MenuItem>(), MenuItemIndex(0), args.width, args.height, args.palette, args.canvas))
{
    setName(args.name);
    useSelectedForButtonDisplay(false);
}

ShotVideoMetadataButton::ShotVideoMetadataButton(uint16_t w, uint16_t h, const Palette& palette, Canvas* canvas)
    : DropDownMenuButton(DropDownMenuButton::InitArgs(std::vector<MenuItem>(), MenuItemIndex(0), w, h, palette, canvas))
{
    useSelectedForButtonDisplay(false);
}

LightweightString<char> ShotVideoMetadataButton::idstring() const { return "ShotVideoMetadataButton"; }

MenuItemType ShotVideoMetadataButton::getDefaultMenuGroupState(const UIFormatGroup& key)
{
    const uint32_t projectGroup = findByUID(Cv::CurrentProject::getOutputImageFormat(0).getUID()).getGroup();
    return projectGroup == key.group ? MenuItemGroupOpen : MenuItemGroupFolded;
}

void ShotVideoMetadataButton::setFormats(const std::set<ShotVideoMetadata>& formats)
{
    m_entries.clear();
    std::set<UIFormatGroup> keys;
    for (const ShotVideoMetadata& format : formats)
        keys.insert(UIFormatGroup(format));

    std::vector<MenuItem> items;
    for (const UIFormatGroup& key : keys) {
        items.emplace_back(UIString(key.label), WidgetCallback(), getDefaultMenuGroupState(key), resFmtAsIs);
        for (const ShotVideoMetadata& format : formats) {
            if (!UIFormatGroup(format).sameGroup(key))
                continue;
            items.emplace_back(UIString(Cv::getDisplayString(format.getFrameRate())), WidgetCallback(), MenuItemInGroup, resFmtAsIs);
            m_entries.push_back(format);
        }
    }
    // Chosen through handleMessageEvent, by its place after the formats, so copies of the button need no
    // callback bound to the original.
    m_offersCustomise = StartupSettings::showExperimental();
    if (m_offersCustomise)
        items.emplace_back(UIString(ResId(customiseResource), resFmtEllipsis), WidgetCallback(), MenuItemNormal, resFmtEllipsis);
    setStrings(std::move(items), MenuItemIndex(0));
}

bool ShotVideoMetadataButton::setSelectedFormat(const ShotVideoMetadata& format)
{
    const auto found = std::find(m_entries.begin(), m_entries.end(), format);
    if (found == m_entries.end())
        return false;
    setSelectedItem(MenuItemIndex(found - m_entries.begin()));
    if (getString().getString().empty())
        handleCurrentItemChange();
    return true;
}

ShotVideoMetadata ShotVideoMetadataButton::getSelectedFormat() const
{
    const int selected = getSelectedItem();
    return selected >= 0 && static_cast<size_t>(selected) < m_entries.size() ? m_entries[static_cast<size_t>(selected)]
                                                                           : ShotVideoMetadata();
}

void ShotVideoMetadataButton::handleCurrentItemChange()
{
    const int selected = getSelectedItem();
    if (selected < 0 || static_cast<size_t>(selected) >= m_entries.size())
        return;
    const ShotVideoMetadata& entry = m_entries[static_cast<size_t>(selected)];
    LightweightString<wchar_t> text = UIFormatGroup(entry).label;
    text += L", ";
    text += Cv::getDisplayString(entry.getFrameRate());
    setString(UIString(text));
}

int ShotVideoMetadataButton::customiseFormat(const NotifyMsg&)
{
    if (is_good_glob_ptr(m_panel, m_panelStamp))
        Glob::destroy(m_panel);
    m_panel = CustomFormatPanel::make(this);
    m_panelStamp = m_panel ? m_panel->getIdStamp() : IdStamp();
    return 0;
}

CustomFormatPanel* ShotVideoMetadataButton::getCustomFormatPanel() const
{
    return is_good_glob_ptr(m_panel, m_panelStamp) ? m_panel : nullptr;
}

bool ShotVideoMetadataButton::handleMessageEvent(LightweightString<char> name, Glob* sender)
{
    if (name == CustomFormatPanel::useCustomFormatMsg)
        return true;
    if (name == MenuGlob::chosenMsg && sender && sender == getOpenMenu()) {
        GlobWatch self(this);
        const bool handled = DropDownMenuButton::handleMessageEvent(name, sender);
        if (!self)
            return handled;
        const int selected = getSelectedItem();
        if (m_offersCustomise && selected == static_cast<int>(m_entries.size()))
            customiseFormat(NotifyMsg());
        else
            handleCurrentItemChange();
        return handled;
    }
    return DropDownMenuButton::handleMessageEvent(name, sender);
}
